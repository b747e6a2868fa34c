#include "server/module/ProviderManager.h"

#include <cstddef>
#include <dlfcn.h>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include <Pegasus/Common/Exception.h>

#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

// Nobody owns a terminated provider: it has deleted itself, or stays until the process ends. Those
// that stay are kept here, where a leak checker still finds them.
void leave(const CIMProvider* terminated) {
    static std::mutex mutex;
    static auto* const all = new std::vector<const CIMProvider*>;
    const std::lock_guard lock(mutex);
    all->push_back(terminated);
}

void terminate(std::unique_ptr<CIMProvider> provider) noexcept {
    leave(provider.get());
    try {
        provider.release()->terminate();
    } catch (...) { // nobody is left whom its error could reach
    }
}

} // namespace

ProviderLibrary::ProviderLibrary(std::filesystem::path file, String moduleName)
    : _file(std::move(file)), _moduleName(std::move(moduleName)) {}

std::unique_ptr<CIMProvider> ProviderLibrary::create(const String& providerName) {
    std::unique_ptr<CIMProvider> provider(entryPoint(providerName)(providerName));
    if (!provider) {
        fail(providerName, "provider is not a CIMProvider.");
    }
    return provider;
}

ProviderLibrary::EntryPoint ProviderLibrary::entryPoint(const String& providerName) {
    const std::lock_guard lock(_mutex);
    if (_entryPoint) {
        return _entryPoint;
    }
    if (!std::filesystem::exists(_file)) {
        const std::string text = "File \"" + _file.filename().string() +
                                 "\" was not found for provider module \"" + toUtf8(_moduleName) +
                                 "\".";
        throw Exception(String(text.c_str()));
    }
    void* library = dlopen(_file.c_str(), RTLD_NOW);
    if (!library) {
        fail(providerName, (std::string("Cannot load library, error: ") + dlerror()).c_str());
    }
    _entryPoint = reinterpret_cast<EntryPoint>(dlsym(library, "PegasusCreateProvider"));
    if (!_entryPoint) {
        fail(providerName, "entry point not found.");
    }
    return _entryPoint;
}

void ProviderLibrary::fail(const String& providerName, const char* reason) const {
    const std::string text =
        "ProviderLoadFailure (" + _file.string() + ":" + toUtf8(providerName) + "):" + reason;
    throw Exception(String(text.c_str()));
}

ProviderManager::ProviderManager(std::filesystem::path library, String moduleName,
                                 CIMOMHandle handle)
    : _library(std::move(library), std::move(moduleName)), _handle(std::move(handle)) {}

ProviderManager::~ProviderManager() {
    for (auto& [name, slot] : _slots) {
        if (slot.provider) {
            terminate(std::move(slot.provider));
        }
    }
}

CIMProvider& ProviderManager::provider(const String& name) {
    std::unique_lock lock(_mutex);
    Slot& slot = _slots[name];
    if (slot.maker == std::this_thread::get_id()) { // a call of its initialize() has come back
        throw CIMException(CIM_ERR_FAILED, String("provider initialization failed"));
    }
    _made.wait(lock, [&] { return slot.maker == std::thread::id(); });
    if (slot.provider) {
        return *slot.provider;
    }

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
    if (error) {
        std::rethrow_exception(error);
    }
    return *slot.provider;
}

std::unique_ptr<CIMProvider> ProviderManager::make(const String& name) {
    std::unique_ptr<CIMProvider> provider;
    try {
        provider = _library.create(name);
    } catch (...) {
        throw CIMException(CIM_ERR_FAILED, currentProviderError().getMessage());
    }
    try {
        provider->initialize(_handle);
    } catch (...) {
        terminate(std::move(provider));
        throw CIMException(CIM_ERR_FAILED, String("provider initialization failed"));
    }
    return provider;
}

CIMException currentProviderError() {
    try {
        throw;
    } catch (const CIMException& error) {
        return CIMException(error.getCode(), error.getMessage());
    } catch (const Exception& error) {
        return CIMException(CIM_ERR_FAILED, error.getMessage());
    } catch (const std::exception& error) {
        return CIMException(CIM_ERR_FAILED, String(error.what()));
    } catch (...) {
        return CIMException(CIM_ERR_FAILED, String("Unknown error."));
    }
}

std::string problemOfEngine(const std::filesystem::path& module) {
    void* const library = dlopen(module.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (!library) {
        return {};
    }
    std::string problem;
    using Why = std::size_t (*)(char* text, std::size_t size); // as engine/Health.h declares it
    if (const auto why = reinterpret_cast<Why>(dlsym(library, "DRAVWhyNotHealthy"))) {
        problem.resize(1000);
        problem.resize(why(problem.data(), problem.size()));
    }
    dlclose(library); // others have it open
    return problem;
}

} // namespace smisd
