// The library of a provider module.
#pragma once

#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMProvider.h>

#include <filesystem>
#include <memory>
#include <mutex>

namespace smisd {

// Loaded at the first provider, and never unloaded: objects of its types may outlive every
// provider.
//
// Thread-safe.
class ProviderLibrary {
public:
    // `moduleName` is the registered name, for messages.
    ProviderLibrary(std::filesystem::path file, Pegasus::String moduleName);

    // Makes a provider with the library's PegasusCreateProvider; it is not initialized. Throws
    // Exception with OpenPegasus' text when the file is missing, does not load (every symbol must
    // resolve), has no such entry point or makes no provider of the name; what the entry point
    // throws passes through. The next call tries again.
    std::unique_ptr<Pegasus::CIMProvider> create(const Pegasus::String& providerName);

private:
    using EntryPoint = Pegasus::CIMProvider* (*)(const Pegasus::String&);

    EntryPoint entryPoint(const Pegasus::String& providerName);
    [[noreturn]] void fail(const Pegasus::String& providerName, const char* reason) const;

    const std::filesystem::path _file;
    const Pegasus::String _moduleName;

    std::mutex _mutex;
    EntryPoint _entryPoint = nullptr; // guarded by _mutex
};

} // namespace smisd
