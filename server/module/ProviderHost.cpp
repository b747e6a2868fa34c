#include "server/module/ProviderHost.h"

#include "server/module/ProviderErrors.h"

#include <Pegasus/Common/Exception.h>

#include <exception>
#include <utility>

using namespace Pegasus;

namespace smisd {
namespace {

void terminate(CIMProvider& provider) noexcept {
    try {
        provider.terminate();
    } catch (...) { // nobody is left whom its error could reach
    }
}

} // namespace

ProviderHost::ProviderHost(std::filesystem::path library, String moduleName, CIMOMHandle handle)
    : _library(std::move(library), std::move(moduleName)), _handle(std::move(handle)) {}

ProviderHost::~ProviderHost() {
    for (auto& [name, slot] : _slots)
        if (slot.provider)
            terminate(*slot.provider);
}

CIMProvider& ProviderHost::provider(const String& name) {
    std::unique_lock lock(_mutex);
    Slot& slot = _slots[name];
    if (slot.maker == std::this_thread::get_id()) // a call of its own initialize() came back to it
        throw CIMException(CIM_ERR_FAILED, String("provider initialization failed"));
    _made.wait(lock, [&] { return slot.maker == std::thread::id(); });
    if (slot.provider)
        return *slot.provider;

    slot.maker = std::this_thread::get_id();
    lock.unlock();
    std::unique_ptr<CIMProvider> made;
    std::exception_ptr error;
    try {
        made = make(name);
    } catch (...) {
        error = std::current_exception();
    }
    lock.lock();
    slot.provider = std::move(made);
    slot.maker = std::thread::id();
    _made.notify_all();
    if (error)
        std::rethrow_exception(error);
    return *slot.provider;
}

std::unique_ptr<CIMProvider> ProviderHost::make(const String& name) {
    std::unique_ptr<CIMProvider> provider;
    try {
        provider = _library.create(name);
    } catch (...) {
        throw CIMException(CIM_ERR_FAILED, currentProviderError().getMessage());
    }
    initialize(*provider);
    return provider;
}

void ProviderHost::initialize(CIMProvider& provider) {
    try {
        provider.initialize(_handle);
    } catch (...) {
        terminate(provider);
        throw CIMException(CIM_ERR_FAILED, String("provider initialization failed"));
    }
}

} // namespace smisd
