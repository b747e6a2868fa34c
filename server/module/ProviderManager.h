// The providers of the module: loading, making, calling and ending them.
#pragma once

#include <condition_variable>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <Pegasus/Provider/CIMProvider.h>

namespace smisd {

// The library of a provider module. Loaded at the first provider, and never unloaded: objects of
// its types may outlive every provider.
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

// The providers of the module. Makes each at the first request for it. At the end, with no
// operation in progress, terminate() is called, and nothing after it: as with OpenPegasus, a
// provider may delete itself there, and one that doesn't is not deleted.
//
// Thread-safe. No lock is held while a provider's code runs; a thread that needs a provider which
// another one is initializing waits for it.
class ProviderManager {
public:
    // `moduleName` is the registered name of the module; `handle` is given to each provider.
    ProviderManager(std::filesystem::path library, Pegasus::String moduleName,
                    Pegasus::CIMOMHandle handle);
    ~ProviderManager();
    ProviderManager(const ProviderManager&) = delete;
    ProviderManager& operator=(const ProviderManager&) = delete;

    // The provider of the registered name, initialized. Throws CIMException with CIM_ERR_FAILED if
    // it cannot be had; the next call tries again.
    Pegasus::CIMProvider& provider(const Pegasus::String& name);

private:
    struct Slot {
        std::unique_ptr<Pegasus::CIMProvider> provider;
        std::thread::id maker; // of the thread that is making the provider, or of none
    };

    std::unique_ptr<Pegasus::CIMProvider> make(const Pegasus::String& name);

    ProviderLibrary _library;
    Pegasus::CIMOMHandle _handle;

    std::mutex _mutex;
    std::condition_variable _made;
    std::map<Pegasus::String, Slot> _slots; // guarded by _mutex; slots stay where they are
};

// What keeps the engine behind a module from its work, as it tells itself (engine/Health.h); "" if
// nothing, if it does not tell or if the module is not loaded yet.
std::string problemOfEngine(const std::filesystem::path& module);

// Calling a provider

// Inside a catch block: the exception in flight, as OpenPegasus reports it. A CIMException keeps
// code and text; another Exception or std::exception becomes CIM_ERR_FAILED with its text; anything
// else CIM_ERR_FAILED "Unknown error.".
Pegasus::CIMException currentProviderError();

// Runs a provider's operation, which delivers to the handler, and throws what leaves it as a
// CIMException. One with code CIM_ERR_SUCCESS ends the operation without a result or an error. What
// the receiver of the results threw is passed on as it is.
template<class Handler, class Call>
void callProvider(const Handler& handler, Call call) {
    try {
        call();
    } catch (...) {
        handler.passOn();
        const Pegasus::CIMException error = currentProviderError();
        if (error.getCode() != Pegasus::CIM_ERR_SUCCESS) {
            throw error;
        }
        return;
    }
    handler.passOn();
}

} // namespace smisd
