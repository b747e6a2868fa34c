// Instances of the MOF, in the interop namespace of mof/.
#include "server/dispatch/DeclaredInstances.h"

#include <algorithm>
#include <set>
#include <sstream>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

#include "server/dispatch/ServerDispatcher.h"
#include "server/operation/Utf8.h"
#include "server/schema/MofReader.h"
#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

namespace smisd {
namespace {

const CIMNamespaceName interop("interop");

const Repository& served() {
    static const Repository filled = [] {
        Repository result;
        readMofDirectory(MOF_DIRECTORY, result);
        return result;
    }();
    return filled;
}

class Discovery : public testing::Test {
protected:
    // Results, or the error alone.
    std::vector<std::string> run(const Operation& operation, RecordingSink& sink) {
        try {
            dispatcher.dispatch(operation, RequestContext{}, sink);
            return sink.lines;
        } catch (const CIMException& error) {
            return {"error " + std::to_string(error.getCode())};
        }
    }
    std::vector<std::string> run(const Operation& operation) {
        RecordingSink sink;
        return run(operation, sink);
    }
    std::vector<CIMObjectPath> names(const CIMNamespaceName& nameSpace, const char* className) {
        struct Names : ResultSink {
            std::vector<CIMObjectPath> paths;
            void instanceName(const CIMObjectPath& path) override { paths.push_back(path); }
        } sink;
        dispatcher.dispatch(EnumerateInstanceNames{nameSpace, CIMName(className)}, RequestContext{},
                            sink);
        return sink.paths;
    }
    std::string property(const CIMNamespaceName& nameSpace, const CIMObjectPath& path,
                         const char* name) {
        struct Value : ResultSink {
            CIMValue value;
            void returnValue(const CIMValue& taken) override { value = taken; }
        } sink;
        dispatcher.dispatch(GetProperty{nameSpace, path, CIMName(name)}, RequestContext{}, sink);
        return toUtf8(sink.value.toString());
    }

    ServerDispatcher dispatcher{served(), SCRIPTED_MODULE, String("test.host")};
};

TEST_F(Discovery, FindsTheNamespacesUnderEachNameOfInterop) {
    for (const char* name : {"interop", "root/interop", "root/PG_InterOp"}) {
        std::set<std::string> found;
        for (const CIMObjectPath& path : names(CIMNamespaceName(name), "CIM_Namespace")) {
            found.insert(property(CIMNamespaceName(name), path, "Name"));
        }
        std::set<std::string> expected;
        for (const auto& [nameSpace, schema] : served().schemas()) {
            expected.insert(toUtf8(nameSpace.getString()));
        }
        EXPECT_EQ(found, expected) << name;
    }
}

TEST_F(Discovery, FindsTheObjectManagerOnThisHost) {
    const auto managers = names(interop, "CIM_ObjectManager");
    ASSERT_THAT(managers, SizeIs(1));
    EXPECT_EQ(property(interop, managers[0], "SystemName"), "test.host");
    EXPECT_THAT(names(interop, "CIM_ManagedSystemElement"), SizeIs(1)); // by a superclass
}

TEST_F(Discovery, ProfilesNameRegisteredClassesOnly) {
    const Registration registration(served().find(CIMNamespaceName(interopNamespace))->instances());
    const auto profiles = names(interop, "CIM_RegisteredProfile");
    EXPECT_THAT(profiles, SizeIs(3));
    for (const CIMObjectPath& path : profiles) {
        std::string classes = property(interop, path, "Description");
        std::replace(classes.begin(), classes.end(), ',', ' ');
        std::istringstream in(classes);
        int count = 0;
        for (std::string name; in >> name; ++count) {
            EXPECT_TRUE(registration.find(CIMNamespaceName(elementNamespace), CIMName(name.c_str()),
                                          ProviderType::instance))
                << name;
        }
        EXPECT_GT(count, 0);
    }
}

TEST_F(Discovery, ReadsOneInstance) {
    GetInstance get;
    get.nameSpace = interop;
    get.instanceName = names(interop, "CIM_Namespace").at(0);
    EXPECT_THAT(run(get), SizeIs(1));
    get.instanceName = path("CIM_Namespace", "none");
    EXPECT_THAT(run(get), ElementsAre("error 6"));
    get.instanceName = CIMObjectPath(String(), CIMNamespaceName(), CIMName("CIM_WBEMService"));
    EXPECT_THAT(run(get), ElementsAre("error 7"));
}

TEST_F(Discovery, ChangesNothing) {
    const CIMObjectPath path = names(interop, "CIM_Namespace").at(0);
    EXPECT_THAT(run(DeleteInstance{interop, path}), ElementsAre("error 7"));
    EXPECT_THAT(run(CreateInstance{interop, CIMInstance(CIMName("CIM_Namespace"))}),
                ElementsAre("error 7"));
    EXPECT_THAT(run(SetProperty{interop, path, CIMName("Name"), CIMValue(String("x"))}),
                ElementsAre("error 7"));
    EXPECT_THAT(names(interop, "CIM_Namespace"), SizeIs(4));
}

TEST_F(Discovery, ShowsTheRegisteredProviders) {
    EXPECT_THAT(names(CIMNamespaceName(interopNamespace), "PG_ProviderModule"), SizeIs(1));
    EXPECT_THAT(names(CIMNamespaceName(interopNamespace), "PG_Provider"), SizeIs(9));
    EXPECT_THAT(run(EnumerateInstanceNames{interop, CIMName("PG_Provider")}),
                ElementsAre("error 7"));
}

} // namespace
} // namespace smisd
