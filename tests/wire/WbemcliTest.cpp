// A real client: wbemcli.
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Smisd.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace wire {
namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

class Wbemcli : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state()};

    // wbemcli says what is wrong on standard output or error, as it likes.
    Result wbemcli(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "wbemcli");
        Result result = run(arguments);
        result.out += result.err;
        return result;
    }
    std::string pathOf(const std::string& host) const {
        for (const std::string& line :
             linesOf(wbemcli({"ein", smisd.url("CIM_StorageHardwareID")}).out)) {
            if (instance(line).find("StorageID=\"" + host + "\"") != std::string::npos) {
                return line.substr(line.find("root/snia:"));
            }
        }
        return "none";
    }
    // The properties of the instance that a line of ein names.
    std::string instance(const std::string& line) const {
        return wbemcli({"gi", "http://" + line}).out;
    }
    std::string address() const { return "http://127.0.0.1:" + std::to_string(smisd.port()) + "/"; }
};

TEST_F(Wbemcli, EnumeratesTheHosts) {
    const Result result = wbemcli({"ei", smisd.url("CIM_StorageHardwareID")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(linesOf(result.out),
                ElementsAre(HasSubstr("StorageID=\"iqn.2026-01.com.example:host1\""),
                            HasSubstr("StorageID=\"iqn.2026-01.com.example:host2\""),
                            HasSubstr("StorageID=\"eui.02004567a425678d\"")));
}

TEST_F(Wbemcli, EnumeratesTheNamesOfTheHosts) {
    const Result result = wbemcli({"ein", smisd.url("CIM_StorageHardwareID")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(linesOf(result.out),
                testing::AllOf(testing::SizeIs(3),
                               testing::Each(HasSubstr("/root/snia:CIM_StorageHardwareID."
                                                       "InstanceID=\"Ovrin:"))));
}

TEST_F(Wbemcli, GetsAHost) {
    const Result result = wbemcli({"gi", address() + pathOf("iqn.2026-01.com.example:host2")});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("StorageID=\"iqn.2026-01.com.example:host2\""));
}

TEST_F(Wbemcli, GetsTheAskedForProperties) {
    const Result result =
        wbemcli({"gi", "-nl", address() + pathOf("iqn.2026-01.com.example:host2"), "StorageID"});
    EXPECT_THAT(linesOf(result.out),
                AllOf(testing::Contains(HasSubstr("StorageID=")),
                      testing::Not(testing::Contains(testing::StartsWith("-IDType")))));
}

TEST_F(Wbemcli, IsToldThatHostsAreNotDeletedSo) {
    const Result result = wbemcli({"di", address() + pathOf("iqn.2026-01.com.example:host2")});
    EXPECT_NE(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("CIM_ERR_NOT_SUPPORTED: StorageHardwareID::deleteInstance"));
}

TEST_F(Wbemcli, IsToldOfAnUnknownClass) {
    EXPECT_THAT(wbemcli({"ei", smisd.url("CIM_Nosuch")}).out,
                HasSubstr("CIM_ERR_INVALID_CLASS: CIM_Nosuch"));
}

TEST_F(Wbemcli, IsToldOfAnUnknownNamespace) {
    EXPECT_THAT(wbemcli({"ei", address() + "root/nosuch:CIM_StorageHardwareID"}).out,
                HasSubstr("CIM_ERR_INVALID_NAMESPACE: root/nosuch"));
}

TEST_F(Wbemcli, IsToldOfAnUnknownKey) {
    const std::string path = address() + "root/snia:CIM_StorageHardwareID.InstanceID=";
    for (const char* key : {"Ovrin:FFFFFFFF", "nonsense", ""}) {
        const Result result = wbemcli({"gi", path + "\"" + key + "\""});
        EXPECT_NE(result.status, 0) << key;
        EXPECT_THAT(result.out, HasSubstr("CIM_ERR_")) << key;
    }
    EXPECT_THAT(wbemcli({"ei", smisd.url("CIM_StorageHardwareID")}).status, 0);
}

// All that the client knows is the interop namespace.
TEST_F(Wbemcli, IsLedFromTheInteropNamespaceToTheHosts) {
    EXPECT_THAT(wbemcli({"ein", address() + "interop:CIM_ObjectManager"}).out,
                HasSubstr("Name=\"smisd\""));
    const std::string names = wbemcli({"ein", address() + "interop:CIM_Namespace"}).out;
    const std::size_t at = names.find(",Name=\"root/snia");
    ASSERT_NE(at, std::string::npos) << names;
    const std::size_t start = names.find('"', at) + 1;
    const std::string found = names.substr(start, names.find('"', start) - start);
    EXPECT_THAT(wbemcli({"ein", address() + found + ":CIM_StorageHardwareID"}).out,
                HasSubstr("Ovrin:0D000003"));
    EXPECT_THAT(wbemcli({"ei", address() + "interop:CIM_RegisteredProfile"}).out,
                HasSubstr("RegisteredName=\"Masking and Mapping\""));
}

// With authentication

class AuthenticatedWbemcli : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state(), {"--users", usersFile()}};

    std::string usersFile() const {
        const Result line = run({SMISD, "hash-password", "alice"}, "open-sesame\n");
        EXPECT_EQ(line.status, 0) << line.err;
        const std::string file = array.file("users");
        run({"sh", "-c", "umask 077; cat >" + file}, line.out);
        return file;
    }
    Result enumerate(const std::string& credentials) const {
        Result result = run({"wbemcli", "ein", smisd.url("CIM_StorageHardwareID", credentials)});
        result.out += result.err;
        return result;
    }
};

TEST_F(AuthenticatedWbemcli, LogsIn) {
    const Result result = enumerate("alice:open-sesame");
    EXPECT_EQ(result.status, 0) << result.out;
    EXPECT_THAT(linesOf(result.out), testing::SizeIs(3));
}

TEST_F(AuthenticatedWbemcli, IsRefusedWithAWrongPassword) {
    for (const char* credentials : {"alice:open", "bob:open-sesame", ""}) {
        const Result result = enumerate(credentials);
        EXPECT_NE(result.status, 0) << credentials;
        EXPECT_THAT(result.out, HasSubstr("sername/password")) << credentials;
        EXPECT_THAT(result.out, testing::Not(HasSubstr("Ovrin:"))) << credentials;
    }
}

TEST_F(AuthenticatedWbemcli, LeavesNoPasswordInTheLog) {
    enumerate("alice:open-sesame");
    enumerate("alice:wr0ng-word");
    const Result log = smisd.stop();
    EXPECT_THAT(log.err, HasSubstr("unknown user or wrong password"));
    for (const std::string& text : {log.err, log.out}) {
        EXPECT_THAT(text, testing::Not(HasSubstr("sesame")));
        EXPECT_THAT(text, testing::Not(HasSubstr("wr0ng-word")));
        EXPECT_THAT(text, testing::Not(HasSubstr("YWxpY2U6"))); // "alice:" in base 64
    }
}

} // namespace
} // namespace wire
