#include "server/module/ResponseHandlers.h"

#include <string>
#include <vector>

#include <Pegasus/Common/Exception.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace smisd {
namespace {

CIMInstance instanceOf(const char* className) {
    return CIMInstance(CIMName(className));
}

CIMObjectPath pathOf(const char* className) {
    return CIMObjectPath(String(), CIMNamespaceName(), CIMName(className));
}

template<class Call>
void expectFailed(Call call, const char* text) {
    try {
        call();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const CIMException& error) {
        EXPECT_EQ(error.getCode(), CIM_ERR_FAILED);
        EXPECT_EQ(error.getMessage(), String(text));
    }
}

class SingleHandlerTest : public testing::Test {
protected:
    std::vector<std::string> taken;
    InstanceHandler handler{[this](const CIMInstance& instance) {
        taken.emplace_back(instance.getClassName().getString().getCString());
    }};
};

TEST_F(SingleHandlerTest, TheInstanceIsTakenWhenTheCallIsComplete) {
    handler.processing();
    handler.deliver(instanceOf("A"));
    EXPECT_THAT(taken, IsEmpty());
    handler.complete();
    EXPECT_THAT(taken, ElementsAre("A"));
}

TEST_F(SingleHandlerTest, ProcessingMayBeLeftOut) {
    handler.deliver(instanceOf("A"));
    handler.complete();
    EXPECT_THAT(taken, ElementsAre("A"));
}

TEST_F(SingleHandlerTest, CompletingTwiceTakesTheInstanceOnce) {
    handler.deliver(instanceOf("A"));
    handler.complete();
    handler.complete();
    EXPECT_THAT(taken, ElementsAre("A"));
}

TEST_F(SingleHandlerTest, CompletingWithoutAnInstanceFails) {
    expectFailed([&] { handler.complete(); }, "Too few objects delivered.");
}

TEST_F(SingleHandlerTest, ASecondInstanceFails) {
    handler.deliver(instanceOf("A"));
    expectFailed([&] { handler.deliver(instanceOf("B")); }, "Too many objects delivered.");
}

TEST_F(SingleHandlerTest, AnArrayOfTwoInstancesFails) {
    Array<CIMInstance> two(2, instanceOf("A"));
    expectFailed([&] { handler.deliver(two); }, "Too many objects delivered.");
}

TEST_F(SingleHandlerTest, AnUninitializedInstanceFails) {
    expectFailed([&] { handler.deliver(CIMInstance()); }, "The object is not initialized.");
}

TEST(PathHandlerTest, APathWithoutClassFails) {
    PathHandler handler([](const CIMObjectPath&) {});
    expectFailed([&] { handler.deliver(CIMObjectPath()); }, "The object is not initialized.");
}

TEST(ListHandlerTest, AnyNumberIsTakenInOrder) {
    std::vector<std::string> taken;
    PathListHandler handler([&](const CIMObjectPath& path) {
        taken.emplace_back(path.getClassName().getString().getCString());
    });
    handler.deliver(pathOf("A"));
    Array<CIMObjectPath> more;
    more.append(pathOf("B"));
    more.append(pathOf("C"));
    handler.deliver(more);
    handler.complete();
    EXPECT_THAT(taken, ElementsAre("A", "B", "C"));
}

TEST(ListHandlerTest, NoneIsAllowed) {
    ObjectListHandler handler([](const CIMObject&) { ADD_FAILURE(); });
    handler.complete();
}

TEST(ListHandlerTest, ObjectsAreTakenByHundreds) {
    size_t taken = 0;
    PathListHandler handler([&](const CIMObjectPath&) { ++taken; });
    for (int i = 0; i < 99; ++i) {
        handler.deliver(pathOf("A"));
    }
    EXPECT_EQ(taken, 0U);
    handler.deliver(pathOf("A"));
    EXPECT_EQ(taken, 100U);
    for (int i = 0; i < 130; ++i) {
        handler.deliver(pathOf("A"));
    }
    EXPECT_EQ(taken, 200U);
    handler.complete();
    EXPECT_EQ(taken, 230U);
}

TEST(ListHandlerTest, UninitializedObjectsFail) {
    ObjectListHandler objects([](const CIMObject&) {});
    expectFailed([&] { objects.deliver(CIMObject()); }, "The object is not initialized.");
    InstanceListHandler instances([](const CIMInstance&) {});
    expectFailed([&] { instances.deliver(Array<CIMInstance>(1, CIMInstance())); },
                 "The object is not initialized.");
}

// "return V" and "out N V" lines.
class MethodSink : public ResultSink {
public:
    void returnValue(const CIMValue& value) override {
        lines.push_back("return " + std::string(value.toString().getCString()));
    }
    void outParameter(const CIMParamValue& parameter) override {
        lines.push_back("out " + std::string(parameter.getParameterName().getCString()) + " " +
                        std::string(parameter.getValue().toString().getCString()));
    }
    std::vector<std::string> lines;
};

class MethodResultHandlerTest : public testing::Test {
protected:
    static CIMParamValue parameter(const char* name) {
        return CIMParamValue(String(name), CIMValue(Uint32(7)));
    }

    MethodSink sink;
    MethodResultHandler handler{sink};
};

TEST_F(MethodResultHandlerTest, TheReturnValueComesFirst) {
    handler.deliverParamValue(parameter("a"));
    handler.deliver(CIMValue(Uint32(1)));
    handler.deliverParamValue(Array<CIMParamValue>(2, parameter("b")));
    EXPECT_THAT(sink.lines, IsEmpty());
    handler.complete();
    EXPECT_THAT(sink.lines, ElementsAre("return 1", "out a 7", "out b 7", "out b 7"));
}

TEST_F(MethodResultHandlerTest, TheLastOfSeveralReturnValuesCounts) {
    handler.deliver(CIMValue(Uint32(1)));
    handler.deliver(CIMValue(Uint32(2)));
    handler.complete();
    handler.complete();
    EXPECT_THAT(sink.lines, ElementsAre("return 2"));
}

TEST_F(MethodResultHandlerTest, AReturnValueMayBeLeftOut) {
    handler.complete();
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(MethodResultHandlerTest, ANullReturnValueFails) {
    expectFailed([&] { handler.deliver(CIMValue(CIMTYPE_UINT32, false)); },
                 "The object is not initialized.");
}

TEST_F(MethodResultHandlerTest, AnUninitializedParameterFails) {
    expectFailed([&] { handler.deliverParamValue(CIMParamValue()); },
                 "The object is not initialized.");
}

} // namespace
} // namespace smisd
