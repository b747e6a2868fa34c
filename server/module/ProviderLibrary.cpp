#include "server/module/ProviderLibrary.h"

#include <Pegasus/Common/Exception.h>

#include <string>
#include <utility>

#include <dlfcn.h>

using namespace Pegasus;

namespace smisd {

ProviderLibrary::ProviderLibrary(std::filesystem::path file, String moduleName)
    : _file(std::move(file)), _moduleName(std::move(moduleName)) {}

std::unique_ptr<CIMProvider> ProviderLibrary::create(const String& providerName) {
    std::unique_ptr<CIMProvider> provider(entryPoint(providerName)(providerName));
    if (!provider)
        fail(providerName, "provider is not a CIMProvider.");
    return provider;
}

ProviderLibrary::EntryPoint ProviderLibrary::entryPoint(const String& providerName) {
    const std::lock_guard lock(_mutex);
    if (_entryPoint)
        return _entryPoint;
    if (!std::filesystem::exists(_file)) {
        const std::string text = "File \"" + _file.filename().string() +
                                 "\" was not found for provider module \"" +
                                 std::string(_moduleName.getCString()) + "\".";
        throw Exception(String(text.c_str()));
    }
    void* library = dlopen(_file.c_str(), RTLD_NOW);
    if (!library)
        fail(providerName, (std::string("Cannot load library, error: ") + dlerror()).c_str());
    _entryPoint = reinterpret_cast<EntryPoint>(dlsym(library, "PegasusCreateProvider"));
    if (!_entryPoint)
        fail(providerName, "entry point not found.");
    return _entryPoint;
}

void ProviderLibrary::fail(const String& providerName, const char* reason) const {
    const std::string text = "ProviderLoadFailure (" + _file.string() + ":" +
                             std::string(providerName.getCString()) + "):" + reason;
    throw Exception(String(text.c_str()));
}

} // namespace smisd
