// Enumerations that a client pulls in pieces.
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"

using testing::SizeIs;
using testing::StartsWith;

namespace wire {
namespace {

const std::string undefined = "21 CIM_ERR_INVALID_ENUMERATION_CONTEXT: Context undefined.";

class Pull : public testing::Test {
protected:
    explicit Pull(const std::vector<std::string>& options = {"--no-auth"})
        : smisd(array.state(), options) {}

    // The three hosts.
    Answer open(int count, bool chunked = false) {
        return client.call("OpenEnumerateInstances",
                           {{"ClassName", classNamed("CIM_StorageHardwareID")},
                            {"MaxObjectCount", value(std::to_string(count))}},
                           chunked);
    }
    Answer pull(const std::string& context, int count, bool chunked = false) {
        return client.call("PullInstancesWithPath",
                           {{"EnumerationContext", value(context)},
                            {"MaxObjectCount", value(std::to_string(count))}},
                           chunked);
    }
    Answer close(const std::string& context) {
        return client.call("CloseEnumeration", {{"EnumerationContext", value(context)}});
    }
    static std::string contextOf(const Answer& answer) {
        return answer.outValue("EnumerationContext");
    }

    Array array;
    Smisd smisd;
    Client client{smisd};
};

TEST_F(Pull, GivesWhatTheEnumerationGives) {
    const std::vector<std::string> names =
        client.enumerate("CIM_StorageHardwareID").each("StorageID");
    ASSERT_THAT(names, SizeIs(3));
    const Answer first = open(2);
    ASSERT_THAT(first.each("StorageID"), SizeIs(2));
    EXPECT_EQ(first.outValue("EndOfSequence"), "FALSE");
    const Answer second = pull(contextOf(first), 2);
    EXPECT_EQ(second.outValue("EndOfSequence"), "TRUE");
    EXPECT_EQ(contextOf(second), "");
    std::vector<std::string> pulled = first.each("StorageID");
    for (const std::string& name : second.each("StorageID")) {
        pulled.push_back(name);
    }
    EXPECT_EQ(pulled, names);
    EXPECT_EQ(pull(contextOf(first), 2).error(), undefined);
}

TEST_F(Pull, PathsHaveHostAndNamespace) {
    EXPECT_THAT(open(1).paths().at(0), testing::MatchesRegex("//.*/root/snia:CIM_Stor.*"));
}

TEST_F(Pull, AssociatorsArePulledToo) {
    const Xml host = client.enumerateNames("CIM_StorageHardwareID").names().at(0);
    const std::string subject = "CIM_AuthorizedSubject";
    const std::string privilege = "CIM_AuthorizedPrivilege";
    const Answer pulled =
        client.call("OpenAssociatorInstancePaths", {{"InstanceName", host},
                                                    {"AssocClass", classNamed(subject)},
                                                    {"ResultClass", classNamed(privilege)},
                                                    {"MaxObjectCount", value("10")}});
    EXPECT_EQ(pulled.error(), "");
    EXPECT_THAT(pulled.paths(), SizeIs(1));
    EXPECT_EQ(
        pulled.paths(),
        client.associatorNames(host, {.assocClass = subject, .resultClass = privilege}).paths());
    EXPECT_EQ(pulled.outValue("EndOfSequence"), "TRUE");
}

TEST_F(Pull, InChunksIsTheSame) {
    const Answer first = open(1, true);
    EXPECT_THAT(first.paths(), SizeIs(1));
    EXPECT_THAT(pull(contextOf(first), 10, true).paths(), SizeIs(2));
    EXPECT_THAT(pull("nosuch", 10, true).error(), StartsWith("21 "));
}

TEST_F(Pull, ClosedIsClosed) {
    const std::string context = contextOf(open(1));
    EXPECT_EQ(close(context).error(), "");
    EXPECT_EQ(close(context).error(), undefined);
    EXPECT_EQ(pull(context, 1).error(), undefined);
}

TEST_F(Pull, TakesTooLong) {
    const Answer opened = client.call(
        "OpenEnumerateInstancePaths",
        {{"ClassName", classNamed("CIM_StorageHardwareID")}, {"OperationTimeout", value("1")}});
    std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    EXPECT_EQ(client
                  .call("PullInstancePaths", {{"EnumerationContext", value(contextOf(opened))},
                                              {"MaxObjectCount", value("1")}})
                  .error(),
              undefined);
}

TEST_F(Pull, OpenEnumerationsDoNotKeepTheServerFromStopping) {
    open(1);
    open(0);
    EXPECT_EQ(smisd.stop().status, 0);
}

// More than wait at once for the client, who lets the array change meanwhile.
TEST(SlowPull, GivesTheArrayAsItWasWhenTheEnumerationBegan) {
    const std::string name = "iqn.2026-01.com.example:host";
    constexpr int count = 250;
    std::string initiators;
    for (int i = 1; i <= count; ++i) {
        initiators += (i == 1 ? "" : ",") +
                      ("{\"name\": \"" + name + std::to_string(i) + "\", \"secret\": \"\"}");
    }
    const Array array(R"({"host": "array1", "system": "array1", "initiators": [)" + initiators +
                      "]}");
    const Smisd smisd(array.state());
    const Client client(smisd);
    const std::string hosts = "CIM_StorageHardwareID";
    const Answer opened = client.call("OpenEnumerateInstances", {{"ClassName", classNamed(hosts)},
                                                                 {"MaxObjectCount", value("1")}});
    array.arrayctl({"initiator", "delete", name + std::to_string(count)});
    const Answer rest =
        client.call("PullInstancesWithPath",
                    {{"EnumerationContext", value(opened.outValue("EnumerationContext"))},
                     {"MaxObjectCount", value("1000")}});
    EXPECT_EQ(rest.error(), "");
    EXPECT_THAT(rest.each("StorageID"), SizeIs(count - 1));
    EXPECT_EQ(rest.outValue("EndOfSequence"), "TRUE");
    EXPECT_THAT(client.enumerate(hosts).each("StorageID"), SizeIs(count - 1));
}

class LimitedPull : public Pull {
protected:
    LimitedPull() : Pull({"--no-auth", "--max-enumerations", "2"}) {}
};

TEST_F(LimitedPull, RefusesMoreThanAreAllowed) {
    const std::string context = contextOf(open(1));
    open(1);
    EXPECT_THAT(open(1).error(), StartsWith("27 CIM_ERR_SERVER_LIMITS_EXCEEDED: "));
    EXPECT_THAT(client.enumerate("CIM_StorageHardwareID").paths(), SizeIs(3));
    close(context);
    std::string error = open(1).error();
    for (int i = 0; i < 100 && !error.empty(); ++i) { // its thread ends
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        error = open(1).error();
    }
    EXPECT_EQ(error, "");
}

} // namespace
} // namespace wire
