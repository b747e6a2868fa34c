#include "tests/support/ScriptedCIMOM.h"

#include <Pegasus/Provider/CIMOMHandle.h>

#include "tests/support/Log.h"
#include "tests/support/Text.h"

using namespace Pegasus;

namespace scripted {

namespace {

GetInstanceAnswer scriptedAnswer;
const OperationContext* lastContext = nullptr;

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

} // namespace scripted

using namespace scripted;

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
    return scriptedAnswer ? scriptedAnswer(instanceName) : instanceOf(instanceName);
}
