#include "tests/server/dispatch/DispatchTest.h"

#include "server/operation/Utf8.h"
#include "server/schema/MofReader.h"

using namespace Pegasus;

namespace smisd {

DispatchTest::Lines DispatchTest::run(const Operation& operation) {
    RecordingSink sink;
    return run(operation, sink);
}

DispatchTest::Lines DispatchTest::run(const Operation& operation, RecordingSink& sink) {
    const RequestContext context{String("alice"), String(), String()};
    try {
        dispatcher.dispatch(operation, context, sink);
        return sink.lines;
    } catch (const CIMException& error) {
        return {"error " + std::to_string(error.getCode()) + " " + toUtf8(error.getMessage())};
    }
}

const Repository& DispatchTest::repository() {
    static const Repository filled = [] {
        Repository result;
        const std::filesystem::path mof(MOF_DIRECTORY);
        const std::filesystem::path own(TEST_MOF_DIRECTORY);
        const CIMNamespaceName interop(interopNamespace);
        readMof(own / "schema.mof", testNamespace, result);
        readMof(mof / "interop-schema.mof", interop, result);
        readMof(own / "registration.mof", interop, result);
        return result;
    }();
    return filled;
}

CIMObjectPath path(const char* className, const char* id) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("Id"), String(id), CIMKeyBinding::STRING));
    return CIMObjectPath(String(), CIMNamespaceName(), CIMName(className), keys);
}

CIMObjectPath path(const char* className) {
    return CIMObjectPath(String(), CIMNamespaceName(), CIMName(className));
}

CIMPropertyList list(std::initializer_list<const char*> names) {
    Array<CIMName> result;
    for (const char* name : names) {
        result.append(CIMName(name));
    }
    return CIMPropertyList(result);
}

} // namespace smisd
