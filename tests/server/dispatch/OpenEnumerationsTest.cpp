#include "server/dispatch/OpenEnumerations.h"

#include <atomic>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

using namespace Pegasus;
using namespace std::chrono_literals;

namespace smisd {
namespace {

EnumerationTraits traitsOf(const char* user, std::chrono::milliseconds time = 1h) {
    EnumerationTraits traits;
    traits.user = String(user);
    traits.timeBetweenPulls = time;
    return traits;
}

void produceOne(ObjectQueue& queue) {
    queue.push({CIMObjectPath(String(), CIMNamespaceName(), CIMName("A")), CIMInstance()});
}

void produceForEver(ObjectQueue& queue) {
    for (;;) {
        produceOne(queue);
    }
}

template<class Call>
CIMStatusCode codeOf(Call call) {
    try {
        call();
    } catch (const CIMException& error) {
        return error.getCode();
    }
    return CIM_ERR_SUCCESS;
}

class OpenEnumerationsTest : public testing::Test {
protected:
    CIMStatusCode find(const std::string& id, const char* user = "alice") {
        return codeOf([&] { enumerations.find(String(id.c_str()), String(user)); });
    }
    CIMStatusCode open(const char* user = "") {
        return codeOf([&] { enumerations.open(traitsOf(user), produceForEver); });
    }

    OpenEnumerations enumerations{3};
};

TEST_F(OpenEnumerationsTest, AreFoundByTheirUser) {
    const auto opened = enumerations.open(traitsOf("alice"), produceOne);
    EXPECT_EQ(enumerations.find(String(opened->id.c_str()), "alice"), opened);
    EXPECT_EQ(find(opened->id, "bob"), CIM_ERR_INVALID_ENUMERATION_CONTEXT);
    EXPECT_EQ(find(opened->id, ""), CIM_ERR_INVALID_ENUMERATION_CONTEXT);
    EXPECT_EQ(find("nosuch"), CIM_ERR_INVALID_ENUMERATION_CONTEXT);
    EXPECT_EQ(find(""), CIM_ERR_INVALID_ENUMERATION_CONTEXT);
}

TEST_F(OpenEnumerationsTest, HaveIdsOfTheirOwn) {
    EXPECT_NE(enumerations.open(traitsOf("alice"), produceOne)->id,
              enumerations.open(traitsOf("alice"), produceOne)->id);
}

TEST_F(OpenEnumerationsTest, AreGoneWhenClosed) {
    const auto opened = enumerations.open(traitsOf("alice"), produceForEver);
    opened->queue.close();
    EXPECT_EQ(find(opened->id), CIM_ERR_INVALID_ENUMERATION_CONTEXT);
}

TEST_F(OpenEnumerationsTest, AreGoneWhenTheClientTakesTooLong) {
    const auto opened = enumerations.open(traitsOf("alice", 50ms), produceOne);
    EXPECT_EQ(find(opened->id), CIM_ERR_SUCCESS);
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(find(opened->id), CIM_ERR_INVALID_ENUMERATION_CONTEXT);
}

TEST_F(OpenEnumerationsTest, AreLimited) {
    const auto first = enumerations.open(traitsOf(""), produceForEver);
    EXPECT_EQ(open(), CIM_ERR_SUCCESS);
    EXPECT_EQ(open(), CIM_ERR_SUCCESS);
    EXPECT_EQ(open(), CIM_ERR_SERVER_LIMITS_EXCEEDED);
    first->queue.close();
    CIMStatusCode code = open();
    for (int i = 0; i < 100 && code == CIM_ERR_SERVER_LIMITS_EXCEEDED; ++i) {
        std::this_thread::sleep_for(10ms); // until the producer has noticed
        code = open();
    }
    EXPECT_EQ(code, CIM_ERR_SUCCESS);
}

TEST_F(OpenEnumerationsTest, OneUserHasHalfOfThem) {
    EXPECT_EQ(open("alice"), CIM_ERR_SUCCESS);
    EXPECT_EQ(open("alice"), CIM_ERR_SUCCESS);
    EXPECT_EQ(open("alice"), CIM_ERR_SERVER_LIMITS_EXCEEDED);
    EXPECT_EQ(open("bob"), CIM_ERR_SUCCESS);
}

TEST(OpenEnumerations, HoldMemoryAndAreRefusedWithoutIt) {
    const auto budget = std::make_shared<MemoryBudget>(3'000'000);
    OpenEnumerations enumerations(10, budget);
    EnumerationTraits large = traitsOf("alice");
    large.operationBytes = 900'000;
    auto opened = enumerations.open(large, produceForEver);
    EXPECT_GT(budget->used(), 900'000U);
    EXPECT_EQ(codeOf([&] { enumerations.open(large, produceForEver); }),
              CIM_ERR_SERVER_LIMITS_EXCEEDED);
    EXPECT_EQ(codeOf([&] { enumerations.open(traitsOf("bob"), produceForEver)->queue.close(); }),
              CIM_ERR_SUCCESS);
    opened->queue.close();
    opened.reset();
    for (int i = 0; i < 1000 && budget->used() > 0; ++i) {
        std::this_thread::sleep_for(10ms); // until the producers have noticed
    }
    EXPECT_EQ(budget->used(), 0U);
}

TEST_F(OpenEnumerationsTest, KeepTheErrorOfTheProducer) {
    const auto opened = enumerations.open(
        traitsOf("alice"), [](ObjectQueue&) { throw CIMException(CIM_ERR_NOT_FOUND, "x"); });
    EXPECT_EQ(codeOf([&] { opened->queue.pop(); }), CIM_ERR_NOT_FOUND);
}

TEST(OpenEnumerations, EndWithTheirOwner) {
    std::atomic<bool> ended{false};
    {
        OpenEnumerations enumerations(1);
        enumerations.open(traitsOf("alice"), [&](ObjectQueue& queue) {
            try {
                produceForEver(queue);
            } catch (const Abandoned&) {
                std::this_thread::sleep_for(50ms);
                ended = true;
                throw;
            }
        });
    }
    EXPECT_TRUE(ended);
}

} // namespace
} // namespace smisd
