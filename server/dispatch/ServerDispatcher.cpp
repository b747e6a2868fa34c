#include "server/dispatch/ServerDispatcher.h"

#include <utility>

#include "server/dispatch/Operations.h"
#include "server/module/UpCalls.h"
#include "server/schema/MofReader.h"

using namespace Pegasus;

namespace smisd {
namespace {

std::vector<CIMInstance> registeredIn(const Repository& repository) {
    const Schema* interop = repository.find(CIMNamespaceName(interopNamespace));
    return interop ? interop->instances() : std::vector<CIMInstance>();
}

OperationContext contextFor(const RequestContext& request) {
    OperationContext context;
    context.insert(IdentityContainer(request.userName));
    return context;
}

} // namespace

ServerDispatcher::ServerDispatcher(const Repository& repository, std::filesystem::path library,
                                   const String& hostName, unsigned maxEnumerations,
                                   std::shared_ptr<MemoryBudget> memory)
    : _registration(registeredIn(repository)),
      _providers(std::move(library), _registration.moduleName(), makeUpCallHandle(*this)),
      _declared(repository, hostName),
      _enumerations(maxEnumerations, std::move(memory)), _environment{repository, _registration,
                                                                      _providers, _enumerations,
                                                                      _declared,  hostName} {}

void ServerDispatcher::dispatch(const Operation& operation, const RequestContext& context,
                                ResultSink& sink) {
    const Request request{_environment, contextFor(context), context.userName, sink,
                          context.operationBytes};
    std::visit([&](const auto& one) { carryOut(one, request); }, operation);
}

} // namespace smisd
