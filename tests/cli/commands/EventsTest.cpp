#include <fstream>

#include "tests/cli/Cli.h"

namespace {

class EventsCommand : public Cli {
protected:
    EventsCommand() { importSmallArray(); }

    void write(const char* file, const std::string& text) const {
        std::ofstream(state / file) << text;
    }
};

const char* const event = R"({"time":"2026-01-31T12:00:00.000000Z","process":1,)"
                          R"("type":"method-invoked","text":"A method","keyValues":"a=1, b=2"})";

TEST_F(EventsCommand, ShowsTheTimeTheTypeAndTheText) {
    write("events.jsonl", std::string(event) + "\n");
    EXPECT_EQ(outputOf({"events"}),
              "2026-01-31T12:00:00.000000Z  method-invoked  A method  a=1, b=2\n");
}

TEST_F(EventsCommand, GivesProgramsALineOfJsonForEachEvent) {
    write("events.jsonl", std::string(event) + "\n" + event + "\n");
    EXPECT_EQ(outputOf({"events", "--json"}), std::string(event) + "\n" + event + "\n");
}

TEST_F(EventsCommand, ShowsTheFileThatWasSetAsideFirst) {
    write("events.jsonl.1", "earlier\n");
    write("events.jsonl", "later\n");
    EXPECT_EQ(outputOf({"events"}), "earlier\nlater\n");
}

TEST_F(EventsCommand, ShowsTheWeakSecretThatWasSetWithoutTheSecret) {
    outputOf({"secret", "set", "target", "iqn.2026-01.com.example:t2"}, "weak!");
    const std::string events = outputOf({"events"});
    EXPECT_THAT(events, testing::HasSubstr("weak-secret"));
    EXPECT_THAT(events, testing::Not(testing::HasSubstr("weak!")));
}

} // namespace
