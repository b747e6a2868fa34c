#include "tests/support/ScriptedCIMOM.h"

#include <map>

#include "tests/support/Log.h"
#include "tests/support/Text.h"

using namespace Pegasus;

namespace scripted {

namespace {

GetInstanceAnswer scriptedAnswer;
const OperationContext* lastContext = nullptr;
const CIMOMHandle* lastHandle = nullptr;
std::map<const CIMOMHandle*, const CIMOMHandle*> assigned; // what to which

CIMInstance instanceOf(const CIMObjectPath& path) {
    CIMInstance instance(path.getClassName());
    instance.setPath(path);
    return instance;
}

} // namespace

void answerGetInstance(const GetInstanceAnswer& answer) {
    scriptedAnswer = answer;
}

const OperationContext* lastGetInstanceContext() {
    return lastContext;
}

const CIMOMHandle* lastGetInstanceHandle() {
    return lastHandle;
}

} // namespace scripted

using namespace scripted;

CIMOMHandle& CIMOMHandle::operator=(const CIMOMHandle& handle) {
    assigned[this] = &handle;
    return *this;
}

CIMInstance CIMOMHandle::getInstance(const OperationContext& context,
                                     const CIMNamespaceName& nameSpace,
                                     const CIMObjectPath& instanceName, Boolean localOnly,
                                     Boolean includeQualifiers, Boolean includeClassOrigin,
                                     const CIMPropertyList& propertyList) {
    note(Entry::Call,
         "CIMOMHandle::getInstance(" + text(nameSpace.getString()) + ", " + text(instanceName) +
             ", localOnly " + text(localOnly) + ", includeQualifiers " + text(includeQualifiers) +
             ", includeClassOrigin " + text(includeClassOrigin) + ", " + text(propertyList) + ")");
    lastContext = &context;
    lastHandle = assigned[this];
    return scriptedAnswer ? scriptedAnswer(instanceName) : instanceOf(instanceName);
}
