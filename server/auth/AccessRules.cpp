#include "server/auth/AccessRules.h"

using namespace Pegasus;

namespace smisd {

bool AccessRules::mayCarryOut(Role role, const Operation& operation) const {
    if (role == Role::administrator || kindOf(operation) == OperationKind::schema) {
        return true;
    }
    const CIMObjectPath object = objectOf(operation);
    return kindOf(operation) == OperationKind::read &&
           mayRead(role, object.getNameSpace(), object.getClassName());
}

bool AccessRules::mayRead(Role role, const CIMNamespaceName& nameSpace,
                          const CIMName& className) const {
    static const CIMName secret("CIM_SharedSecret");
    if (role == Role::administrator) {
        return true;
    }
    const Schema* schema = _repository.find(nameSpace);
    return !(className == secret || (schema != nullptr && schema->isA(className, secret)));
}

} // namespace smisd
