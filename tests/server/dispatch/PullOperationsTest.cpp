#include <algorithm>

#include "tests/server/dispatch/DispatchTest.h"

using namespace Pegasus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

namespace smisd {
namespace {

const std::string outContext = "out EnumerationContext";

class PullOperationsTest : public DispatchTest {
protected:
    OpenEnumeration instancesOf(const char* className, Uint32 count) {
        return opening(
            EnumerateInstances{.nameSpace = testNamespace, .className = CIMName(className)}, count);
    }
    OpenEnumeration pathsOf(const char* className, Uint32 count) {
        return opening(EnumerateInstanceNames{testNamespace, CIMName(className)}, count);
    }
    OpenEnumeration opening(const Enumeration& enumeration, Uint32 count) {
        OpenEnumeration operation;
        operation.nameSpace = testNamespace;
        operation.enumeration = enumeration;
        operation.maxObjectCount = count;
        return operation;
    }

    // Runs it and remembers the context.
    Lines take(const Operation& operation) {
        ContextSink sink;
        const Lines lines = run(operation, sink);
        context = sink.context;
        return lines;
    }
    Lines pull(Uint32 count, Pulled pulled = Pulled::instancesWithPath) {
        return run(pulling(count, pulled));
    }
    PullEnumeration pulling(Uint32 count, Pulled pulled = Pulled::instancesWithPath) {
        return {testNamespace, pulled, context, count};
    }

    static std::string endOf(const Lines& lines) {
        const auto found = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
            return line.find("EndOfSequence") != std::string::npos;
        });
        return found == lines.end() ? "none" : found->substr(found->rfind(' ') + 1);
    }
    static long count(const Lines& lines, const char* start) {
        return std::count_if(lines.begin(), lines.end(),
                             [&](const std::string& line) { return line.starts_with(start); });
    }

    String context;

private:
    struct ContextSink : RecordingSink {
        void outParameter(const CIMParamValue& parameter) override {
            RecordingSink::outParameter(parameter);
            if (parameter.getParameterName() == String("EnumerationContext")) {
                parameter.getValue().get(context);
            }
        }
        String context;
    };
};

TEST_F(PullOperationsTest, AllThatFitEndTheSequenceAtOnce) {
    const Lines lines = take(instancesOf("Test_Special", 10));
    EXPECT_THAT(lines[1],
                StartsWith("instance of //test.host/root/test:Test_Special.Id=\"1\" is "));
    EXPECT_EQ(endOf(lines), "TRUE");
    EXPECT_TRUE(context == String());
}

TEST_F(PullOperationsTest, ResultsComeInPiecesToTheEnd) {
    const Lines first = take(instancesOf("Test_Many", 100));
    EXPECT_EQ(count(first, "instance of"), 100);
    EXPECT_EQ(endOf(first), "FALSE");
    EXPECT_EQ(count(pull(149), "instance of"), 149);
    const Lines last = pull(10);
    EXPECT_EQ(count(last, "instance of"), 1);
    EXPECT_EQ(endOf(last), "TRUE");
    EXPECT_THAT(pull(1), ElementsAre("error 21 Context undefined."));
}

TEST_F(PullOperationsTest, TheLastPieceSaysThatItIsTheLast) {
    EXPECT_EQ(endOf(take(instancesOf("Test_Many", 249))), "FALSE");
    EXPECT_EQ(endOf(pull(1)), "TRUE");
}

TEST_F(PullOperationsTest, NothingIsPulledWhenNothingIsAskedFor) {
    const Lines opened = take(instancesOf("Test_Many", 0));
    EXPECT_THAT(opened, SizeIs(2));
    EXPECT_EQ(endOf(opened), "FALSE");
    EXPECT_EQ(endOf(pull(0)), "FALSE");
    EXPECT_EQ(count(pull(1000), "instance of"), 250);
}

TEST_F(PullOperationsTest, PathsArePulledAsPaths) {
    EXPECT_THAT(take(pathsOf("Test_Special", 0)), SizeIs(2));
    const Lines lines = pull(10, Pulled::instancePaths);
    EXPECT_THAT(lines[0], StartsWith("instance path //test.host/root/test:Test_Special.Id="));
    EXPECT_EQ(endOf(lines), "TRUE");
}

TEST_F(PullOperationsTest, AssociationsArePulledLikeEnumerations) {
    const Lines instances = take(opening(Associators{.nameSpace = testNamespace,
                                                     .objectName = path("Test_Element", "1"),
                                                     .assocClass = CIMName("Test_SubLink")},
                                         100));
    EXPECT_GT(count(instances, "instance of //"), 0);
    EXPECT_EQ(endOf(instances), "TRUE");
    const Lines paths = take(opening(ReferenceNames{.nameSpace = testNamespace,
                                                    .objectName = path("Test_Element", "1"),
                                                    .resultClass = CIMName("Test_SubLink")},
                                     100));
    EXPECT_GT(count(paths, "instance path //"), 0);
}

TEST_F(PullOperationsTest, ClassOriginIsShownInEachPieceWhenItWasAskedFor) {
    OpenEnumeration operation = instancesOf("Test_Many", 1);
    std::get<EnumerateInstances>(operation.enumeration).includeClassOrigin = true;
    EXPECT_EQ(take(operation)[0], "origin");
    EXPECT_EQ(pull(1)[0], "origin");
}

TEST_F(PullOperationsTest, PropertiesAreLimitedInEachPiece) {
    OpenEnumeration operation = instancesOf("Test_Many", 1);
    std::get<EnumerateInstances>(operation.enumeration).propertyList = list({"Id"});
    EXPECT_EQ(take(operation)[0], "limit Id");
    EXPECT_EQ(pull(1)[0], "limit Id");
}

TEST_F(PullOperationsTest, WithoutDeepInheritanceTheClassLimitsTheProperties) {
    OpenEnumeration operation = instancesOf("Test_Many", 1);
    std::get<EnumerateInstances>(operation.enumeration).deepInheritance = false;
    EXPECT_EQ(take(operation)[0], "limit Id Seen");
}

// Errors

TEST_F(PullOperationsTest, AnErrorBeforeTheFirstResultAnswersTheOpen) {
    EXPECT_THAT(take(instancesOf("Test_Nosuch", 10)), ElementsAre("error 5 Test_Nosuch"));
    EXPECT_THAT(take(instancesOf("Test_Nosuch", 0)), ElementsAre("error 5 Test_Nosuch"));
    EXPECT_THAT(take(instancesOf("Test_Refusing", 10)),
                ElementsAre("error 7 Scripted::enumerateInstances"));
}

TEST_F(PullOperationsTest, OpensThatFailLeaveNothingOpen) {
    const Lines refused{"error 7 Scripted::enumerateInstances"};
    for (int i = 0; i < 100; ++i) { // more than may be open at once
        ASSERT_EQ(run(instancesOf("Test_Refusing", 0)), refused) << i;
    }
}

TEST_F(PullOperationsTest, AnErrorInTheMiddleAnswersThePullThatMeetsIt) {
    EXPECT_THAT(take(instancesOf("Test_Risky", 10)), ElementsAre("error 1 failed after one"));
}

TEST_F(PullOperationsTest, UnknownNamespace) {
    OpenEnumeration operation = instancesOf("Test_Many", 1);
    operation.nameSpace = unknownNamespace;
    EXPECT_THAT(run(operation), ElementsAre("error 3 root/unknown"));
}

TEST_F(PullOperationsTest, TimeOutsHaveALimit) {
    OpenEnumeration operation = instancesOf("Test_Many", 1);
    operation.operationTimeout = 0;
    EXPECT_THAT(run(operation), ElementsAre("error 22 Operation timeout value of 0 not allowed."));
    operation.operationTimeout = 90;
    EXPECT_EQ(endOf(run(operation)), "FALSE");
    operation.operationTimeout = 91;
    EXPECT_THAT(run(operation),
                ElementsAre("error 22 Operation timeout too large. Maximum allowed: 90."));
}

TEST_F(PullOperationsTest, ATimedOutContextIsUndefined) {
    OpenEnumeration operation = instancesOf("Test_Many", 1);
    operation.operationTimeout = 1;
    take(operation);
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    EXPECT_THAT(pull(1), ElementsAre("error 21 Context undefined."));
}

TEST_F(PullOperationsTest, AnOpenTakesTenThousandObjectsAtMost) {
    EXPECT_EQ(endOf(run(instancesOf("Test_Many", 10000))), "TRUE");
    EXPECT_THAT(run(instancesOf("Test_Many", 10001)),
                ElementsAre("error 4 Operation maximum object count argument 10001 too large. "
                            "Maximum allowed: 10000."));
}

TEST_F(PullOperationsTest, ContinuationOnErrorIsNotSupported) {
    OpenEnumeration operation = instancesOf("Test_Many", 1);
    operation.continueOnError = true;
    EXPECT_THAT(run(operation),
                ElementsAre("error 7 ContinueOnError = true argument not supported."));
}

TEST_F(PullOperationsTest, QueriesAreNotSupported) {
    OpenEnumeration operation = instancesOf("Test_Many", 1);
    operation.filterQuery = "n = 5";
    EXPECT_THAT(run(operation),
                ElementsAre("error 1 filterQuery parameter without filterQueryLanguage parameter"));
    operation.filterQueryLanguage = "FOO";
    EXPECT_THAT(run(operation), ElementsAre("error 14 FOO"));
    operation.filterQuery = "";
    EXPECT_THAT(run(operation),
                ElementsAre("error 1 filterQueryLanguage parameter without filterQuery parameter"));
}

TEST_F(PullOperationsTest, AnotherKindOfPullClosesTheEnumeration) {
    take(instancesOf("Test_Many", 1));
    EXPECT_THAT(pull(1, Pulled::instancePaths),
                ElementsAre("error 1 Open and Pull Message types do not match."));
    EXPECT_THAT(pull(1), ElementsAre("error 21 Context undefined."));
}

TEST_F(PullOperationsTest, AnotherNamespaceLeavesTheEnumerationOpen) {
    take(instancesOf("Test_Many", 1));
    PullEnumeration operation = pulling(1);
    operation.nameSpace = unknownNamespace;
    EXPECT_THAT(run(operation), ElementsAre("error 1 Incorrect namespace (%s) in pull operation. "
                                            "Expected: %s."));
    EXPECT_EQ(count(pull(1), "instance of"), 1);
}

TEST_F(PullOperationsTest, AClosedContextIsUndefined) {
    take(instancesOf("Test_Many", 1));
    EXPECT_THAT(run(CloseEnumeration{testNamespace, context}), SizeIs(0));
    EXPECT_THAT(run(CloseEnumeration{testNamespace, context}),
                ElementsAre("error 21 Context undefined."));
    EXPECT_THAT(pull(1), ElementsAre("error 21 Context undefined."));
}

TEST_F(PullOperationsTest, NobodyCounts) {
    take(instancesOf("Test_Many", 1));
    EXPECT_THAT(run(CountEnumeration{testNamespace, context}), ElementsAre("error 7 "));
    EXPECT_THAT(run(CountEnumeration{testNamespace, String("nosuch")}),
                ElementsAre("error 21 Context undefined."));
}

TEST_F(PullOperationsTest, AnotherUserDoesNotSeeTheContext) {
    take(instancesOf("Test_Many", 1));
    RecordingSink sink;
    try {
        dispatcher.dispatch(pulling(1), {String("bob"), String(), String()}, sink);
        ADD_FAILURE() << "pulled another user's results";
    } catch (const CIMException& error) {
        EXPECT_EQ(error.getCode(), CIM_ERR_INVALID_ENUMERATION_CONTEXT);
    }
    EXPECT_EQ(count(pull(1), "instance of"), 1);
}

} // namespace
} // namespace smisd
