// What users of each role may do, and what the audit log says of it.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Http.h"
#include "tests/wire/support/Masking.h"
#include "tests/wire/support/Pair.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace wire {
namespace {

const std::string hostClass = "CIM_StorageHardwareID";
const std::string secretClass = "CIM_SharedSecret";

class Roles : public testing::Test {
protected:
    Array array;
    const std::string audit = array.file("audit");
    Smisd smisd{array.state(),
                {"--users",
                 makeUsersFile(array.file("users"), {{"alice", "administrator", "open-sesame"},
                                                     {"bob", "reader", "just-looking"}}),
                 "--audit", audit}};
    Client administrator{smisd, "alice:open-sesame"};
    Client reader{smisd, "bob:just-looking"};

    const Xml host = instanceName(hostClass, {{"InstanceID", "Ovrin:0D000001"}});
    const Xml secret = instanceName(secretClass, {{"RemoteID", "Ovrin:0E000001"}});
    const Xml newSecret = property("Secret", "string", "a-new-secret");

    // Of the audit log, without the time.
    std::string lastAudit() const {
        std::string text = readFile(audit);
        text.pop_back();
        return text.substr(text.find("\"audit\"", text.rfind('\n') + 1));
    }
    long auditCount() const {
        const std::string text = readFile(audit);
        return std::count(text.begin(), text.end(), '\n');
    }
};

const std::string denied = "2 CIM_ERR_ACCESS_DENIED: The role reader does not permit this on ";

TEST_F(Roles, ReaderSeesWhatAnAdministratorSees) {
    EXPECT_EQ(reader.enumerate(hostClass).size(), 3U);
    for (const char* name : {"CIM_StorageHardwareID", "CIM_ManagedElement",
                             "CIM_SCSIProtocolController", "CIM_Credential"}) {
        const Answer seen = reader.enumerate(name);
        const Answer all = administrator.enumerate(name);
        EXPECT_EQ(seen.error(), all.error()) << name;
        EXPECT_EQ(seen.paths(), all.paths()) << name;
    }
    EXPECT_EQ(reader.associatorNames(host, {}).paths(),
              administrator.associatorNames(host, {}).paths());
    EXPECT_EQ(auditCount(), 0);
}

TEST_F(Roles, ReaderChangesNothing) {
    const std::string before = array.arrayctl({"export", "--with-secrets"});
    EXPECT_EQ(reader.modify(secret, secretClass, newSecret).error(), denied + secretClass);
    EXPECT_EQ(reader.call("DeleteInstance", {{"InstanceName", host}}).error(), denied + hostClass);
    EXPECT_EQ(reader
                  .call("CreateInstance",
                        {{"NewInstance", "<INSTANCE CLASSNAME=\"" + hostClass + "\"/>"}})
                  .error(),
              denied + hostClass);
    EXPECT_EQ(reader
                  .call("SetProperty", {{"InstanceName", host},
                                        {"PropertyName", value("ElementName")},
                                        {"NewValue", value("x")}})
                  .error(),
              denied + hostClass);
    EXPECT_EQ(reader
                  .invoke(identityService, "CreateStorageHardwareID",
                          {{"StorageID", value("iqn.2026-01.com.example:host9"), "string"},
                           {"IDType", value("5"), "uint16"}})
                  .error(),
              denied + identityService);
    EXPECT_EQ(array.arrayctl({"export", "--with-secrets"}), before);
    EXPECT_EQ(auditCount(), 5);
}

TEST_F(Roles, ReaderSeesNoSecret) {
    EXPECT_EQ(administrator.get(secret).each("Secret"), std::vector<std::string>{"target1-secret"});
    EXPECT_EQ(reader.get(secret).error(), denied + secretClass);
    EXPECT_EQ(reader.enumerate(secretClass).error(), denied + secretClass);
    EXPECT_EQ(reader.enumerateNames(secretClass).error(), denied + secretClass);
    EXPECT_EQ(reader.associators(secret, {}).error(), denied + secretClass);
    EXPECT_EQ(reader.references(secret, {}).error(), denied + secretClass);
    EXPECT_EQ(
        reader.call("GetProperty", {{"InstanceName", secret}, {"PropertyName", value("Secret")}})
            .error(),
        denied + secretClass);
    EXPECT_THAT(reader.call("GetInstance", {{"InstanceName", secret}}, true).error(),
                StartsWith("2 CIM_ERR_ACCESS_DENIED")); // in chunks
    EXPECT_EQ(reader.call("GetClass", {{"ClassName", classNamed(secretClass)}}).error(), "");
}

TEST_F(Roles, ReaderPullsNoSecretAndNotWhatAnAdministratorOpened) {
    const auto open = [](const Client& client, const std::string& className) {
        return client.call("OpenEnumerateInstances",
                           {{"ClassName", classNamed(className)}, {"MaxObjectCount", value("1")}});
    };
    EXPECT_EQ(open(reader, secretClass).error(), denied + secretClass);
    EXPECT_EQ(
        reader.call("OpenEnumerateInstancePaths", {{"ClassName", classNamed(secretClass)}}).error(),
        denied + secretClass);
    const auto pull = [](const Client& client, const Answer& opened) {
        return client.call("PullInstancesWithPath",
                           {{"EnumerationContext", value(opened.outValue("EnumerationContext"))},
                            {"MaxObjectCount", value("5")}});
    };
    EXPECT_EQ(pull(reader, open(reader, hostClass)).size(), 2U);
    EXPECT_NE(pull(reader, open(administrator, hostClass)).error(), "");
}

TEST_F(Roles, ChangesAndRefusalsAreWrittenDownWithoutSecrets) {
    EXPECT_EQ(administrator.modify(secret, secretClass, newSecret).error(), "");
    EXPECT_EQ(lastAudit(), R"("audit":"change","change":1,"user":"alice",)"
                           R"("address":"127.0.0.1",)"
                           R"("operation":"ModifyInstance",)"
                           R"("object":"root/snia:CIM_SharedSecret.RemoteID=\"Ovrin:0E000001\"",)"
                           R"("outcome":"success"})");
    reader.modify(secret, secretClass, newSecret);
    EXPECT_EQ(lastAudit(), R"("audit":"refusal","user":"bob","address":"127.0.0.1",)"
                           R"("operation":"ModifyInstance",)"
                           R"("object":"root/snia:CIM_SharedSecret.RemoteID=\"Ovrin:0E000001\"",)"
                           R"("outcome":"CIM_ERR_ACCESS_DENIED"})");
    administrator.invoke(identityService, "CreateStorageHardwareID",
                         {{"StorageID", value("iqn.2026-01.com.example:host9"), "string"},
                          {"IDType", value("5"), "uint16"}});
    EXPECT_THAT(lastAudit(), AllOf(HasSubstr(R"("operation":"InvokeMethod",)"
                                             R"("method":"CreateStorageHardwareID",)"),
                                   HasSubstr(R"("outcome":"success","returned":"0"})")));
    Client(smisd, "alice:a-wrong-word").enumerate(hostClass);
    EXPECT_EQ(lastAudit(), R"("audit":"login","user":"alice","address":"127.0.0.1",)"
                           R"("outcome":"unknown user or wrong password"})");
    Client(smisd, "a-password:alice").enumerate(hostClass);
    EXPECT_EQ(lastAudit(), R"("audit":"login","address":"127.0.0.1",)"
                           R"("outcome":"unknown user or wrong password"})");

    const Result log = smisd.stop();
    for (const std::string& text : {readFile(audit), log.err, log.out}) {
        for (const char* word : {"a-new-secret", "target1-secret", "sesame", "a-wrong-word",
                                 "a-password", "host9", "just-looking"}) {
            EXPECT_THAT(text, Not(HasSubstr(word)));
        }
    }
}

TEST_F(Roles, UsersAreReadAgainOnReload) {
    const std::string users = array.file("users");
    EXPECT_EQ(reader.enumerate(hostClass).size(), 3U);
    const auto reload = [&] {
        std::filesystem::rename(audit, audit + ".old");
        smisd.process().signal(SIGHUP);
        for (int i = 0; i < 3000 && !std::filesystem::exists(audit); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        // By the same thread as a reload that is under way.
        roundTrip(smisd.port(), "GET /nothing HTTP/1.1\r\nHost: x\r\n\r\n");
    };
    makeUsersFile(users,
                  {{"alice", "reader", "open-sesame"}, {"carol", "administrator", "i-am-new"}});
    reload();
    const Client carol(smisd, "carol:i-am-new");
    EXPECT_EQ(carol.modify(secret, secretClass, newSecret).error(), "");
    EXPECT_EQ(administrator.modify(secret, secretClass, newSecret).error(), denied + secretClass);
    EXPECT_THAT(reader.enumerate(hostClass).error(), StartsWith("401"));

    std::ofstream(users) << "dave\n";
    reload();
    EXPECT_EQ(carol.enumerate(hostClass).size(), 3U);
    EXPECT_THAT(smisd.stop().err,
                AllOf(HasSubstr("info: users: 2, of " + users + "\n"),
                      HasSubstr("error: the users in use stay: users file " + users +
                                ": line 1 is not of the form name:role:hash")));
}

TEST_F(Roles, WrongPasswordsAreSlowedDownButNobodyElse) {
    EXPECT_EQ(reader.enumerate(hostClass).size(), 3U); // is remembered now
    const auto start = std::chrono::steady_clock::now();
    const auto elapsed = [&] { return std::chrono::steady_clock::now() - start; };
    EXPECT_THAT(Client(smisd, "alice:1").enumerate(hostClass).error(), StartsWith("401"));
    EXPECT_THAT(Client(smisd, "alice:2").enumerate(hostClass).error(), StartsWith("401"));
    EXPECT_GE(elapsed(), std::chrono::seconds(1));
    EXPECT_THAT(Client(smisd, "alice:3").enumerate(hostClass).error(), StartsWith("401"));
    EXPECT_GE(elapsed(), std::chrono::seconds(3));

    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(reader.enumerate(hostClass).size(), 3U);
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(1));
    EXPECT_EQ(administrator.enumerate(hostClass).size(), 3U); // in its turn
}

TEST(AuditLog, IsOnStandardErrorByDefault) {
    const Array array;
    Smisd smisd(array.state(), {"--no-auth", "--log-level", "error"});
    Client(smisd).call("DeleteInstance",
                       {{"InstanceName", instanceName(hostClass, {{"InstanceID", "x"}})}});
    EXPECT_THAT(
        smisd.stop().err,
        HasSubstr(
            R"("audit":"change","change":1,"address":"127.0.0.1","operation":"DeleteInstance")"));
}

} // namespace
} // namespace wire
