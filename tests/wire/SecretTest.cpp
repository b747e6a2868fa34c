// Secrets are read and changed by a client, and are seen nowhere else.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"
#include "tests/wire/support/Pair.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace wire {
namespace {

const std::string hostKey = "Ovrin:0D000001";
const std::string targetKey = "Ovrin:0E000001";

class Secret : public testing::Test {
protected:
    Array array;
    Smisd smisd{array.state(), {"--no-auth", "--log-level", "debug"}};
    Client client{smisd};

    static Xml secretOf(const std::string& owner) {
        return instanceName(secretClass, {{"RemoteID", owner}});
    }
    std::string read(const std::string& owner) const {
        const Answer answer = client.get(secretOf(owner));
        EXPECT_EQ(answer.error(), "");
        EXPECT_EQ(answer.each("RemoteID").at(0), owner);
        return answer.each("Secret").at(0);
    }
    // The error of a change; "" when it is made.
    std::string change(const std::string& owner, const std::string& secret,
                       const std::string& type = "string") const {
        return client.modify(secretOf(owner), secretClass, property("Secret", type, secret))
            .error();
    }
};

TEST_F(Secret, OfAHostAndATargetAreReadAndChanged) {
    EXPECT_THAT(client.get(secretOf(targetKey)).properties(),
                ElementsAre("Secret: string target1-secret", "RemoteID: string " + targetKey));
    EXPECT_EQ(change(hostKey, "a secret <of> \"the\" host & more"), "");
    EXPECT_EQ(read(hostKey), "a secret <of> \"the\" host & more");
    EXPECT_EQ(change(targetKey, ""), "");
    EXPECT_EQ(read(targetKey), "");
    EXPECT_THAT(array.arrayctl({"target", "list"}), HasSubstr("example:t1  not set"));
    EXPECT_THAT(array.arrayctl({"initiator", "list"}), HasSubstr("example:host1  set"));
}

TEST_F(Secret, SurvivesARestart) {
    change(hostKey, "kept over the restart");
    smisd.stop();
    const Smisd again(array.state());
    EXPECT_EQ(Client(again).get(secretOf(hostKey)).each("Secret").at(0), "kept over the restart");
}

// Where secrets are seen

// Every text that is not made to give secrets away, after secrets were used in every way: set by a
// client and by the administrator, weak ones, refused ones, proved and not proved at a login.
class SecretTraces : public Secret {
protected:
    static constexpr const char* marker = "plugh"; // in each of them

    std::string allTexts() {
        std::string texts;
        texts += change(hostKey, "a plugh of host1");
        texts += change(targetKey, "plugh"); // weak
        texts += change(targetKey, "plugh" + std::string(251, '!'));
        texts += change(targetKey, "plugh\x01");
        texts += change(targetKey, "plugh", "char16");
        texts += change("Ovrin:0D00FFFF", "plugh of nobody");
        texts += change("Ovrin:17000001", "plugh of a volume");
        texts += client
                     .modify(instanceName("CIM_StorageHardwareID", {{"InstanceID", hostKey}}),
                             "CIM_StorageHardwareID", property("Secret", "string", "plugh"))
                     .error();
        array.arrayctl({"secret", "set", "target", target2}, "plugh of t2\n");
        texts += refusalOf({"session", "login", host1, target1}, "a wrong plugh\n");
        texts += array.arrayctl({"session", "login", host1, target1}, "a plugh of host1\n");

        texts += client.enumerate("CIM_StorageHardwareID").properties().at(0);
        for (const std::vector<std::string>& command :
             std::vector<std::vector<std::string>>{{"show"},
                                                   {"--json", "show"},
                                                   {"export"},
                                                   {"initiator", "list"},
                                                   {"--json", "target", "list"},
                                                   {"target", "show", target1},
                                                   {"session", "list"},
                                                   {"events"}}) {
            texts += array.arrayctl(command);
        }
        const Result said = smisd.stop();
        texts += said.out + said.err;
        for (const auto& entry : std::filesystem::directory_iterator(array.state())) {
            if (!entry.path().filename().string().starts_with("array.db")) {
                texts += readFile(entry.path());
            }
        }
        return texts;
    }
    std::string refusalOf(std::vector<std::string> arguments, const std::string& input) const {
        arguments.insert(arguments.begin(), {ARRAYCTL, "--state", array.state().string()});
        const Result result = run(arguments, input);
        EXPECT_EQ(result.status, 1);
        return result.out + result.err;
    }
};

TEST_F(SecretTraces, AreNotInViewsEventsLogsOrErrors) {
    const std::string texts = allTexts();
    EXPECT_THAT(texts, Not(HasSubstr(marker)));
    EXPECT_THAT(texts, Not(HasSubstr("target1-secret")));

    // And all of it was there to be seen.
    EXPECT_THAT(texts, HasSubstr("more than 255 bytes"));
    EXPECT_THAT(texts, HasSubstr("SharedSecretProvider::initialize"));
    EXPECT_THAT(texts, HasSubstr("authentication is off"));
    EXPECT_THAT(readFile(array.state() / "events.jsonl"), HasSubstr("shorter than 12 bytes"));
    EXPECT_THAT(array.arrayctl({"export", "--with-secrets"}), HasSubstr("a plugh of host1"));
}

TEST_F(SecretTraces, TheStateDirectoryIsItsOwnersOnly) {
    namespace fs = std::filesystem;
    allTexts();
    EXPECT_EQ(fs::status(array.state()).permissions(), fs::perms::owner_all);
    for (const auto& entry : fs::directory_iterator(array.state())) {
        EXPECT_EQ(entry.status().permissions(), fs::perms::owner_read | fs::perms::owner_write)
            << entry.path();
    }
}

} // namespace
} // namespace wire
