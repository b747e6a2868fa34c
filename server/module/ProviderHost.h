// The providers of the module.
#pragma once

#include "server/module/ProviderLibrary.h"

#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <Pegasus/Provider/CIMProvider.h>

#include <condition_variable>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace smisd {

// Makes each provider at the first request for it. At the end, with no operation in progress,
// terminate() is called, and nothing after it: as with OpenPegasus, a provider may delete itself
// there, and one that doesn't is not deleted.
//
// Thread-safe. No lock is held while a provider's code runs; a thread that needs a provider which
// another one is initializing waits for it.
class ProviderHost {
public:
    // `moduleName` is the registered name of the module; `handle` is given to each provider.
    ProviderHost(std::filesystem::path library, Pegasus::String moduleName,
                 Pegasus::CIMOMHandle handle);
    ~ProviderHost();
    ProviderHost(const ProviderHost&) = delete;
    ProviderHost& operator=(const ProviderHost&) = delete;

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

} // namespace smisd
