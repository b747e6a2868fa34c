#include "server/auth/AccessControl.h"

#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <Pegasus/Common/Exception.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "server/schema/MofReader.h"
#include "tests/server/TemporaryDirectory.h"
#include "tests/server/operation/OperationOf.h"

using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace smisd::test {
namespace {

CIMObjectPath path(const char* className, const char* key = "Ovrin:0D000001") {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("RemoteID"), String(key), CIMKeyBinding::STRING));
    return CIMObjectPath(String(), CIMNamespaceName(), CIMName(className), keys);
}

CIMInstance instance(const char* className) {
    CIMInstance result{CIMName(className)};
    result.addProperty(CIMProperty(CIMName("Secret"), String("sesame")));
    result.setPath(path(className));
    return result;
}

Operation opening(const Enumeration& enumeration) {
    OpenEnumeration open;
    open.nameSpace = nameSpace;
    open.enumeration = enumeration;
    return open;
}

// Takes all that is read.
struct Sink : ResultSink {
    int count = 0;
    void instance(const CIMInstance&) override { ++count; }
    void namedInstance(const CIMInstance&) override { ++count; }
    void instanceName(const CIMObjectPath&) override { ++count; }
    void objectWithPath(const CIMObject&) override { ++count; }
    void objectPath(const CIMObjectPath&) override { ++count; }
    void instanceWithPath(const CIMObjectPath&, const CIMInstance&) override { ++count; }
    void instancePath(const CIMObjectPath&) override { ++count; }
    void includeClassOrigin() override { origins = true; }
    bool origins = false;
    void returnValue(const CIMValue&) override { ++count; }
    void classDeclaration(const CIMClass&) override { ++count; }
};

struct Inner : Dispatcher {
    std::function<void(ResultSink&)> answer = [](ResultSink&) {};
    int calls = 0;

    void dispatch(const Operation&, const RequestContext&, ResultSink& sink) override {
        ++calls;
        answer(sink);
    }
};

// The whole schema, to which a subclass of CIM_SharedSecret is added.
const Repository& repository() {
    static const Repository filled = [] {
        Repository result;
        readMof(std::filesystem::path(MOF_DIRECTORY) / "access-schema.mof", nameSpace, result);
        CIMClass derived(CIMName("Test_Secret"), CIMName("CIM_SharedSecret"));
        result.open(nameSpace).declare(derived);
        return result;
    }();
    return filled;
}

class Guard : public testing::Test {
protected:
    static RequestContext administrator() {
        RequestContext context;
        context.userName = "alice";
        context.address = "192.0.2.7";
        context.role = Role::administrator;
        return context;
    }
    static RequestContext reader() {
        RequestContext context = administrator();
        context.userName = "bob";
        context.role = Role::reader;
        return context;
    }

    // Code of the error, or 0.
    int run(Role role, const Operation& operation) {
        try {
            guard.dispatch(operation, role == Role::reader ? reader() : administrator(), sink);
            return CIM_ERR_SUCCESS;
        } catch (const CIMException& error) {
            return error.getCode();
        }
    }

    std::string auditText() const {
        std::ifstream in(file);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    // Each line without its time.
    std::vector<std::string> audited() const {
        std::vector<std::string> lines;
        std::ifstream in(file);
        for (std::string line; std::getline(in, line);) {
            lines.push_back(line.substr(line.find(",\"audit\"") + 1));
        }
        return lines;
    }

    TemporaryDirectory directory;
    const std::filesystem::path file = directory.path / "audit";
    AuditLog audit{file};
    Inner inner;
    Sink sink;
    GuardedDispatcher guard{inner, repository(), audit};
};

std::vector<Operation> changes() {
    return {
        ModifyInstance{nameSpace, instance("CIM_iSCSISessionSettings"), true, CIMPropertyList()},
        CreateInstance{nameSpace, instance("CIM_AuthorizedSubject")},
        DeleteInstance{nameSpace, path("CIM_AuthorizedSubject")},
        SetProperty{nameSpace, path("CIM_SharedSecret"), CIMName("Secret"),
                    CIMValue(String("sesame"))},
        InvokeMethod{nameSpace, path("CIM_ControllerConfigurationService"), CIMName("ExposePaths"),
                     Array<CIMParamValue>()}};
}

TEST_F(Guard, LetsAReaderChangeNothing) {
    for (const Operation& operation : changes()) {
        EXPECT_EQ(run(Role::reader, operation), CIM_ERR_ACCESS_DENIED) << nameOf(operation);
    }
    EXPECT_EQ(inner.calls, 0);
    EXPECT_EQ(audited().size(), changes().size());
}

TEST_F(Guard, LetsAnAdministratorChangeAll) {
    for (const Operation& operation : changes()) {
        EXPECT_EQ(run(Role::administrator, operation), CIM_ERR_SUCCESS) << nameOf(operation);
    }
    EXPECT_EQ(inner.calls, 5);
}

TEST_F(Guard, LetsAReaderAskForNoSecret) {
    for (const char* name : {"CIM_SharedSecret", "cim_sharedsecret", "Test_Secret"}) {
        const std::vector<Operation> reads = {
            of<GetInstance>(path(name)),
            of<EnumerateInstances>(CIMName(name)),
            of<EnumerateInstanceNames>(CIMName(name)),
            GetProperty{nameSpace, path(name), CIMName("Secret")},
            of<Associators>(path(name)),
            of<AssociatorNames>(path(name)),
            of<References>(path(name)),
            of<ReferenceNames>(path(name)),
            opening(EnumerateInstanceNames{nameSpace, CIMName(name)}),
            opening(ReferenceNames{nameSpace, path(name), false, CIMName(), String()}),
        };
        for (const Operation& operation : reads) {
            EXPECT_EQ(run(Role::reader, operation), CIM_ERR_ACCESS_DENIED)
                << name << " " << nameOf(operation);
            EXPECT_EQ(run(Role::administrator, operation), CIM_ERR_SUCCESS);
        }
    }
    EXPECT_EQ(inner.calls, 30);
    EXPECT_EQ(run(Role::reader, GetInstance{CIMNamespaceName("root/none"), path("CIM_SharedSecret"),
                                            true, false, false, CIMPropertyList()}),
              CIM_ERR_ACCESS_DENIED);
}

TEST_F(Guard, ShowsAReaderNoSecretAmongOtherThings) {
    const Operation superclass = of<EnumerateInstances>(CIMName("CIM_ManagedElement"));
    const std::vector<std::function<void(ResultSink&)>> answers = {
        [](ResultSink& results) { results.instance(instance("Test_Secret")); },
        [](ResultSink& results) { results.namedInstance(instance("CIM_SharedSecret")); },
        [](ResultSink& results) { results.instanceName(path("CIM_SharedSecret")); },
        [](ResultSink& results) { results.objectWithPath(CIMObject(instance("Test_Secret"))); },
        [](ResultSink& results) { results.objectPath(path("CIM_SharedSecret")); },
        [](ResultSink& results) {
            results.instanceWithPath(path("CIM_SharedSecret"), instance("CIM_SharedSecret"));
        },
        [](ResultSink& results) { results.instancePath(path("Test_Secret")); },
    };
    for (const auto& answer : answers) {
        inner.answer = answer;
        EXPECT_EQ(run(Role::reader, superclass), CIM_ERR_ACCESS_DENIED);
        EXPECT_EQ(sink.count, 0);
    }
    EXPECT_EQ(audited().size(), 1U); // they are of one kind
    for (const auto& answer : answers) {
        inner.answer = answer;
        EXPECT_EQ(run(Role::administrator, superclass), CIM_ERR_SUCCESS);
    }
    EXPECT_EQ(sink.count, 7);
}

TEST_F(Guard, ShowsAReaderTheRest) {
    inner.answer = [](ResultSink& results) {
        results.includeClassOrigin();
        results.namedInstance(instance("CIM_StorageHardwareID"));
        results.objectPath(CIMObjectPath(String(), nameSpace, CIMName("CIM_SharedSecret")));
    };
    EXPECT_EQ(run(Role::reader, of<EnumerateInstances>(CIMName("CIM_StorageHardwareID"))),
              CIM_ERR_SUCCESS);
    EXPECT_EQ(sink.count, 2);
    EXPECT_TRUE(sink.origins);
    inner.answer = [](ResultSink&) {};
    EXPECT_EQ(run(Role::reader, of<GetClass>(CIMName("CIM_SharedSecret"))), CIM_ERR_SUCCESS);
    EXPECT_EQ(run(Role::reader, EnumerateQualifiers{nameSpace}), CIM_ERR_SUCCESS);
    EXPECT_THAT(audited(), IsEmpty());
}

TEST_F(Guard, WritesDownEachChangeWithItsOutcome) {
    run(Role::administrator, changes()[2]);
    inner.answer = [](ResultSink&) { throw CIMException(CIM_ERR_NOT_FOUND, "sesame"); };
    run(Role::administrator, changes()[0]);
    inner.answer = [](ResultSink& results) { results.returnValue(CIMValue(Uint32(4))); };
    run(Role::administrator, changes()[4]);
    const auto change = [](int number) {
        return R"("audit":"change","change":)" + std::to_string(number) +
               R"(,"user":"alice","address":"192.0.2.7","operation":)";
    };
    const std::string deletion =
        change(1) + R"("DeleteInstance",)"
                    R"("object":"root/snia:CIM_AuthorizedSubject.RemoteID=\"Ovrin:0D000001\"",)";
    const std::string modification =
        change(2) + R"("ModifyInstance",)"
                    R"("object":"root/snia:CIM_iSCSISessionSettings.RemoteID=\"Ovrin:0D000001\"",)";
    const std::string invocation =
        change(3) + R"("InvokeMethod","method":"ExposePaths",)"
                    R"("object":"root/snia:CIM_ControllerConfigurationService.RemoteID=)"
                    R"(\"Ovrin:0D000001\"",)";
    EXPECT_THAT(audited(), ElementsAre(deletion + R"("outcome":"begun"})",
                                       deletion + R"("outcome":"success"})",
                                       modification + R"("outcome":"begun"})",
                                       modification + R"("outcome":"CIM_ERR_NOT_FOUND"})",
                                       invocation + R"("outcome":"begun"})",
                                       invocation + R"("outcome":"success","returned":"4"})"));
}

TEST_F(Guard, WritesAChangeDownBeforeItBegins) {
    inner.answer = [&](ResultSink&) {
        ASSERT_EQ(audited().size(), 1U);
        EXPECT_THAT(audited()[0], HasSubstr(R"("outcome":"begun")"));
    };
    EXPECT_EQ(run(Role::administrator, changes()[2]), CIM_ERR_SUCCESS);
    EXPECT_EQ(inner.calls, 1);
}

TEST_F(Guard, RefusesAChangeThatCannotBeWrittenDown) {
    AuditLog full("/dev/full");
    GuardedDispatcher strict(inner, repository(), full);
    for (const Operation& operation : changes()) {
        try {
            strict.dispatch(operation, administrator(), sink);
            ADD_FAILURE() << nameOf(operation);
        } catch (const CIMException& error) {
            EXPECT_EQ(error.getCode(), CIM_ERR_FAILED);
            EXPECT_EQ(error.getMessage(), "Nothing was changed: the audit log cannot be written");
        }
    }
    EXPECT_EQ(inner.calls, 0);
    EXPECT_EQ(full.lost(), changes().size());
    strict.dispatch(of<EnumerateInstances>(CIMName("CIM_StorageHardwareID")), administrator(),
                    sink);
    EXPECT_EQ(inner.calls, 1);
}

TEST_F(Guard, MayBeToldToChangeWithoutAudit) {
    AuditLog full("/dev/full");
    GuardedDispatcher lenient(inner, repository(), full, AuditFailures::warn);
    lenient.dispatch(changes()[2], administrator(), sink);
    EXPECT_EQ(inner.calls, 1);
    EXPECT_EQ(full.lost(), 2U);
}

TEST_F(Guard, WritesDownAChangeThatEndsUnexpectedly) {
    inner.answer = [](ResultSink&) { throw std::runtime_error("broken"); };
    EXPECT_THROW(run(Role::administrator, changes()[2]), std::runtime_error);
    ASSERT_EQ(audited().size(), 2U);
    EXPECT_THAT(audited()[1], HasSubstr(R"("outcome":"interrupted")"));
}

TEST_F(Guard, WritesDownRefusals) {
    run(Role::reader, of<GetInstance>(path("CIM_SharedSecret")));
    EXPECT_THAT(audited(),
                ElementsAre(R"("audit":"refusal","user":"bob","address":"192.0.2.7",)"
                            R"("operation":"GetInstance","object":)"
                            R"("root/snia:CIM_SharedSecret.RemoteID=)"
                            R"(\"Ovrin:0D000001\"","outcome":"CIM_ERR_ACCESS_DENIED"})"));
}

TEST_F(Guard, WritesDownNoValues) {
    inner.answer = [](ResultSink& results) { results.returnValue(CIMValue(String("sesame"))); };
    for (const Operation& operation : changes()) {
        run(Role::administrator, operation);
        run(Role::reader, operation);
    }
    EXPECT_EQ(audited().size(), 15U);
    EXPECT_THAT(auditText(), testing::Not(HasSubstr("sesame")));
}

} // namespace
} // namespace smisd::test
