#include "server/operation/Operation.h"

#include <gtest/gtest.h>

#include "tests/server/operation/OperationOf.h"

using namespace Pegasus;

namespace smisd::test {
namespace {

std::string object(const Operation& operation) {
    return std::string(objectOf(operation).toString().getCString());
}

CIMObjectPath instancePath() {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("Id"), String("1"), CIMKeyBinding::STRING));
    return CIMObjectPath(String(), CIMNamespaceName(), CIMName("T"), keys);
}

TEST(OperationFacts, NamesOperations) {
    EXPECT_STREQ(nameOf(GetInstance{}), "GetInstance");
    EXPECT_STREQ(nameOf(EnumerateInstances{}), "EnumerateInstances");
    EXPECT_STREQ(nameOf(EnumerateInstanceNames{}), "EnumerateInstanceNames");
    EXPECT_STREQ(nameOf(ModifyInstance{}), "ModifyInstance");
    EXPECT_STREQ(nameOf(CreateInstance{}), "CreateInstance");
    EXPECT_STREQ(nameOf(DeleteInstance{}), "DeleteInstance");
    EXPECT_STREQ(nameOf(GetProperty{}), "GetProperty");
    EXPECT_STREQ(nameOf(SetProperty{}), "SetProperty");
    EXPECT_STREQ(nameOf(Associators{}), "Associators");
    EXPECT_STREQ(nameOf(AssociatorNames{}), "AssociatorNames");
    EXPECT_STREQ(nameOf(References{}), "References");
    EXPECT_STREQ(nameOf(ReferenceNames{}), "ReferenceNames");
    EXPECT_STREQ(nameOf(InvokeMethod{}), "InvokeMethod");
    EXPECT_STREQ(nameOf(GetClass{}), "GetClass");
    EXPECT_STREQ(nameOf(EnumerateClasses{}), "EnumerateClasses");
    EXPECT_STREQ(nameOf(EnumerateClassNames{}), "EnumerateClassNames");
    EXPECT_STREQ(nameOf(GetQualifier{}), "GetQualifier");
    EXPECT_STREQ(nameOf(EnumerateQualifiers{}), "EnumerateQualifiers");
}

TEST(OperationFacts, NamesPulledOperations) {
    const auto opening = [](const Enumeration& enumeration) {
        OpenEnumeration open;
        open.enumeration = enumeration;
        return open;
    };
    EXPECT_STREQ(nameOf(opening(EnumerateInstances{})), "OpenEnumerateInstances");
    EXPECT_STREQ(nameOf(opening(EnumerateInstanceNames{})), "OpenEnumerateInstancePaths");
    EXPECT_STREQ(nameOf(opening(Associators{})), "OpenAssociatorInstances");
    EXPECT_STREQ(nameOf(opening(AssociatorNames{})), "OpenAssociatorInstancePaths");
    EXPECT_STREQ(nameOf(opening(References{})), "OpenReferenceInstances");
    EXPECT_STREQ(nameOf(opening(ReferenceNames{})), "OpenReferenceInstancePaths");
    const auto pulling = [](Pulled pulled) {
        PullEnumeration pull;
        pull.pulled = pulled;
        return pull;
    };
    EXPECT_STREQ(nameOf(pulling(Pulled::instancesWithPath)), "PullInstancesWithPath");
    EXPECT_STREQ(nameOf(pulling(Pulled::instancePaths)), "PullInstancePaths");
    EXPECT_STREQ(nameOf(pulling(Pulled::instances)), "PullInstances");
    EXPECT_STREQ(nameOf(CloseEnumeration{}), "CloseEnumeration");
    EXPECT_STREQ(nameOf(CountEnumeration{}), "EnumerationCount");
    EXPECT_EQ(kindOf(opening(References{})), OperationKind::read);
    EXPECT_EQ(kindOf(pulling(Pulled::instances)), OperationKind::read);
    EXPECT_STREQ(std::string(objectOf(opening(EnumerateInstanceNames{nameSpace, CIMName("T")}))
                                 .toString()
                                 .getCString())
                     .c_str(),
                 "T");
}

TEST(OperationFacts, KnowsWhatChangesInstances) {
    const std::vector<Operation> changes = {ModifyInstance{}, CreateInstance{}, DeleteInstance{},
                                            SetProperty{}, InvokeMethod{}};
    for (const Operation& operation : changes) {
        EXPECT_EQ(kindOf(operation), OperationKind::change) << nameOf(operation);
    }
    const std::vector<Operation> reads = {
        GetInstance{}, EnumerateInstances{}, GetProperty{}, EnumerateInstanceNames{},
        Associators{}, AssociatorNames{},    References{},  ReferenceNames{}};
    for (const Operation& operation : reads) {
        EXPECT_EQ(kindOf(operation), OperationKind::read) << nameOf(operation);
    }
    const std::vector<Operation> schema = {GetClass{}, EnumerateClasses{}, EnumerateClassNames{},
                                           GetQualifier{}, EnumerateQualifiers{}};
    for (const Operation& operation : schema) {
        EXPECT_EQ(kindOf(operation), OperationKind::schema) << nameOf(operation);
    }
}

TEST(OperationFacts, KnowsTheObject) {
    EXPECT_EQ(object(of<GetInstance>(instancePath())), "root/snia:T.Id=\"1\"");
    EXPECT_EQ(object(of<DeleteInstance>(instancePath())), "root/snia:T.Id=\"1\"");
    EXPECT_EQ(object(GetProperty{nameSpace, instancePath(), {}}), "root/snia:T.Id=\"1\"");
    EXPECT_EQ(object(SetProperty{nameSpace, instancePath(), {}, {}}), "root/snia:T.Id=\"1\"");
    EXPECT_EQ(object(of<Associators>(instancePath())), "root/snia:T.Id=\"1\"");
    EXPECT_EQ(object(InvokeMethod{nameSpace, instancePath(), {}, {}}), "root/snia:T.Id=\"1\"");
    EXPECT_EQ(object(of<EnumerateInstances>(CIMName("T"))), "root/snia:T");
    CIMInstance instance(CIMName("T"));
    EXPECT_EQ(object(CreateInstance{nameSpace, instance}), "root/snia:T");
    instance.setPath(instancePath());
    EXPECT_EQ(object(ModifyInstance{nameSpace, instance, true, CIMPropertyList()}),
              "root/snia:T.Id=\"1\"");
    EXPECT_TRUE(objectOf(EnumerateQualifiers{nameSpace}).getClassName().isNull());
    EXPECT_TRUE(objectOf(of<EnumerateClasses>(CIMName())).getNameSpace().equal(nameSpace));
}

} // namespace
} // namespace smisd::test
