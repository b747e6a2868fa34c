// The whole dispatcher: calls of providers back into it, and many threads at once.

#include <future>
#include <vector>

#include "server/operation/Utf8.h"
#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::Each;
using testing::ElementsAre;

namespace smisd {
namespace {

class ServerDispatcherTest : public DispatchTest {
protected:
    Lines get(const char* className, const std::string& id) {
        return run(
            GetInstance{.nameSpace = testNamespace, .instanceName = path(className, id.c_str())});
    }
};

TEST_F(ServerDispatcherTest, ACallBackArrivesAsARequestOfItsOwn) {
    EXPECT_THAT(run(GetInstance{testNamespace, path("Test_Everything", "up:inner"), false, true,
                                false, list({"Id"})}),
                ElementsAre("instance Test_Everything.Id=\"inner\" | "
                            "//test.host/root/test:Test_Everything.Id=\"inner\" "
                            "+qualifiers -origin list=[Id]"));
}

TEST_F(ServerDispatcherTest, ACallBackIsMadeForTheUserOfTheRequest) {
    EXPECT_THAT(get("Test_Everything", "up:user"),
                ElementsAre("instance Test_Everything.Id=\"user\" | alice"));
}

TEST_F(ServerDispatcherTest, ErrorsOfACallBackArriveWithCodeAndBareText) {
    EXPECT_THAT(get("Test_Everything", "up:cim:6:X"), ElementsAre("error 6 X"));
    EXPECT_THAT(get("Test_Everything", "up:exception:plain"), ElementsAre("error 1 plain"));
}

TEST_F(ServerDispatcherTest, CallBacksNestOnTheSameThread) {
    std::string id = "inner";
    for (int i = 0; i < 50; ++i) {
        id = "up:" + id;
    }
    EXPECT_THAT(get("Test_Everything", id),
                ElementsAre("instance Test_Everything.Id=\"inner\" | "
                            "//test.host/root/test:Test_Everything.Id=\"inner\" "
                            "-qualifiers -origin list=null"));
}

TEST_F(ServerDispatcherTest, ManyCallBacksAtOnceAllReturn) {
    std::vector<std::future<Lines>> calls;
    for (int i = 0; i < 64; ++i) {
        calls.push_back(std::async(std::launch::async, [&] {
            Lines lines;
            for (int j = 0; j < 20; ++j) {
                lines = get("Test_Everything", "up:up:inner");
            }
            return lines;
        }));
    }
    for (auto& call : calls) {
        EXPECT_THAT(call.get(), ElementsAre("instance Test_Everything.Id=\"inner\" | "
                                            "//test.host/root/test:Test_Everything.Id=\"inner\" "
                                            "-qualifiers -origin list=null"));
    }
}

TEST_F(ServerDispatcherTest, AProviderThatCallsItselfWhileItIsInitializedFails) {
    EXPECT_THAT(get("Test_CallsItself", "a"),
                ElementsAre("error 1 provider initialization failed"));
}

TEST_F(ServerDispatcherTest, WhatTheSinkThrowsEndsTheOperationAndIsPassedOn) {
    struct ClientIsGone {};
    class Gone : public ResultSink {
        void namedInstance(const CIMInstance&) override { throw ClientIsGone(); }
    };
    Gone sink;
    EXPECT_THROW(dispatcher.dispatch(EnumerateInstances{.nameSpace = testNamespace,
                                                        .className = CIMName("Test_Many")},
                                     RequestContext(), sink),
                 ClientIsGone);
}

TEST(ServerDispatcherStart, ARepositoryWithoutRegistrationIsRefused) {
    EXPECT_THROW(ServerDispatcher(Repository(), SCRIPTED_MODULE, String("h")), RegistrationError);
}

TEST(ServerDispatcherStart, AModuleThatIsMissingIsReportedAtTheFirstRequest) {
    class Fixture : public DispatchTest {
    public:
        using DispatchTest::repository;
        void TestBody() override {}
    };
    ServerDispatcher dispatcher(Fixture::repository(), "/nonexistent/libNothing.so", String("h"));
    RecordingSink sink;
    try {
        dispatcher.dispatch(
            GetInstance{.nameSpace = testNamespace, .instanceName = path("Test_Everything", "a")},
            RequestContext(), sink);
        FAIL() << "nothing was thrown";
    } catch (const CIMException& error) {
        EXPECT_EQ(error.getCode(), CIM_ERR_FAILED);
        EXPECT_EQ(toUtf8(error.getMessage()),
                  "File \"libNothing.so\" was not found for provider module \"ScriptedModule\".");
    }
}

} // namespace
} // namespace smisd
