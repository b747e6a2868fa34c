// The dispatcher: schema, registration and providers, put together.
#pragma once

#include <filesystem>
#include <memory>

#include <Pegasus/Common/String.h>

#include "server/dispatch/Registration.h"
#include "server/dispatch/Request.h"
#include "server/module/ProviderManager.h"
#include "server/operation/Dispatcher.h"
#include "server/schema/Schema.h"

namespace smisd {

constexpr unsigned defaultMaxEnumerations = 64;

// Providers call back into it. When it is destroyed, with no operation in progress, they end.
class ServerDispatcher : public Dispatcher {
public:
    // The registration is what the repository has in the interop namespace; `library` is the file
    // of the module, loaded at the first request for one of its providers. `hostName` is the host
    // in the paths that providers receive; `maxEnumerations` may be open for pulling at once, and
    // hold `memory`. The repository must outlive the dispatcher.
    //
    // Throws RegistrationError.
    ServerDispatcher(
        const Repository& repository, std::filesystem::path library,
        const Pegasus::String& hostName, unsigned maxEnumerations = defaultMaxEnumerations,
        std::shared_ptr<MemoryBudget> memory = std::make_shared<MemoryBudget>(defaultMemory));

    void dispatch(const Operation& operation, const RequestContext& context,
                  ResultSink& sink) override;

    // Enumerations that are open for pulling; thread-safe.
    unsigned openEnumerations() const { return _enumerations.count(); }

private:
    const Registration _registration;
    ProviderManager _providers;
    DeclaredInstances _declared;
    OpenEnumerations _enumerations;
    const Environment _environment;
};

} // namespace smisd
