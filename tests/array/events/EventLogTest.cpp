#include "array/events/EventLog.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <nlohmann/json.hpp>

#include "array/database/StateDirectory.h"
#include "engine/SMIEventServices.h"
#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

std::vector<nlohmann::json> linesOf(const fs::path& file) {
    std::vector<nlohmann::json> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(nlohmann::json::parse(line));
    }
    return lines;
}

// How many lines end behind a place in a file.
std::size_t countLines(const fs::path& file, std::int64_t from) {
    std::ifstream in(file, std::ios::binary);
    in.seekg(from);
    return static_cast<std::size_t>(
        std::count(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>(), '\n'));
}

class EventLogTest : public testing::Test {
protected:
    static Event event(const std::string& text) {
        Event made;
        made.type = "unimplemented";
        made.text = text;
        return made;
    }

    TemporaryDirectory _directory;
    fs::path _file = _directory.path() / "events.jsonl";
    EventLog _log{_file};
};

TEST_F(EventLogTest, WritesALineOfJsonForEachEvent) {
    _log.publish({"method-invoked", "text \"quoted\"\n", "name=v\xC3\xA4lue", 1, 29, "invokeMethod",
                  "File.cpp", 42});
    const auto lines = linesOf(_file);
    ASSERT_EQ(lines.size(), 1u);
    const nlohmann::json& line = lines[0];
    EXPECT_EQ(line["type"], "method-invoked");
    EXPECT_EQ(line["text"], "text \"quoted\"\n");
    EXPECT_EQ(line["keyValues"], "name=v\xC3\xA4lue");
    EXPECT_EQ(line["channel"], 1);
    EXPECT_EQ(line["severity"], 29);
    EXPECT_EQ(line["operation"], "invokeMethod");
    EXPECT_EQ(line["file"], "File.cpp");
    EXPECT_EQ(line["line"], 42);
    EXPECT_EQ(line["process"], getpid());
    EXPECT_TRUE(std::regex_match(line["time"].get<std::string>(),
                                 std::regex(R"(20\d\d-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{6}Z)")));
}

TEST_F(EventLogTest, EscapesControlCharactersAndAllOutsideOfAscii) {
    const Event made{"method-invoked", "a\\b\"c\n", "/~ \x7F", 1, 29, "x\xC3\xA4", "\x1F.cpp", 42};
    EXPECT_EQ(jsonOf(made, 1767225600000042),
              "{\"time\":\"2026-01-01T00:00:00.000042Z\",\"process\":" + std::to_string(getpid()) +
                  R"(,"type":"method-invoked","text":"a\\b\"c\n","keyValues":"/~ \u007f")"
                  R"(,"channel":1,"severity":29,"operation":"x\u00e4")"
                  R"(,"file":"\u001f.cpp","line":42})");
}

TEST_F(EventLogTest, TimesAreUtc) {
    EXPECT_NE(jsonOf(event("x"), 1767225600000042).find("\"2026-01-01T00:00:00.000042Z\""),
              std::string::npos);
}

TEST_F(EventLogTest, ReplacesWhatIsNoUtf8) {
    _log.publish(event("a\xFF"));
    EXPECT_EQ(linesOf(_file).at(0)["text"], "a\xEF\xBF\xBD");
}

TEST_F(EventLogTest, NobodyElseCanReadTheFile) {
    _log.publish(event("x"));
    struct stat status {};
    ASSERT_EQ(stat(_file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
}

TEST_F(EventLogTest, LinesOfSeveralThreadsAndLogsDoNotMix) {
    EventLog second(_file);
    std::vector<std::thread> writers;
    for (EventLog* log : {&_log, &second, &_log, &second}) {
        writers.emplace_back([log] {
            for (int i = 0; i < 200; ++i) {
                log->publish(event(std::string(200, 'x')));
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    EXPECT_EQ(linesOf(_file).size(), 800u);
}

TEST_F(EventLogTest, AFullFileIsPutAside) {
    { std::ofstream(_file) << std::string(eventLogLimit, '\n'); }
    _log.publish(event("the last of the old"));
    EXPECT_FALSE(fs::exists(_file));
    _log.publish(event("the first of the new"));
    EXPECT_GT(fs::file_size(_file.string() + ".1"), static_cast<std::uintmax_t>(eventLogLimit));
    EXPECT_EQ(linesOf(_file).size(), 1u);
}

// Few bytes are missing to the limit, so that the writers come to it at once; the second file has
// room for all that comes then.
TEST_F(EventLogTest, NoneIsLostWhenManyWritersPutAFullFileAside) {
    constexpr int writers = 24;
    constexpr int rounds = 300;
    constexpr int events = 4;
    constexpr std::int64_t filled = eventLogLimit - 2000;
    for (int round = 0; round < rounds; ++round) {
        { const std::ofstream made(_file); }
        fs::resize_file(_file, static_cast<std::uintmax_t>(filled));
        std::vector<std::jthread> threads;
        for (int writer = 0; writer < writers; ++writer) {
            threads.emplace_back([this] {
                EventLog mine(_file);
                for (int i = 0; i < events; ++i) {
                    mine.publish(event(std::string(200, 'x')));
                }
            });
        }
        threads.clear();
        const std::size_t found = countLines(_file.string() + ".1", filled) + countLines(_file, 0);
        ASSERT_EQ(found, static_cast<std::size_t>(writers * events)) << round;
        fs::remove(_file);
    }
}

TEST_F(EventLogTest, DropsWhatCannotBeWritten) {
    EventLog nowhere(_directory.path() / "missing" / "events.jsonl");
    int seen = 0;
    nowhere.observe([&](const Event&) {
        ++seen;
        throw std::runtime_error("observer");
    });
    nowhere.publish(event("x"));
    EXPECT_EQ(seen, 1);
}

class ArrayEventsTest : public ArrayFixture {
protected:
    std::vector<Event> _seen;
    void SetUp() override {
        array().events().observe([this](const Event& event) { _seen.push_back(event); });
    }
};

TEST_F(ArrayEventsTest, AWeakSecretIsNotedWhenItIsSetAndNeverShown) {
    const Id initiator = addInitiator("host1", "hunter2");
    ASSERT_EQ(_seen.size(), 1u);
    EXPECT_EQ(_seen[0].type, "weak-secret");
    EXPECT_EQ(_seen[0].text,
              "The secret of \"iqn.2026-01.com.example:host1\" is shorter than 12 bytes.");
    EXPECT_EQ(_seen[0].keyValues, "object=Ovrin:0D000001, name=iqn.2026-01.com.example:host1");

    const auto set = [&](const std::string& secret) {
        change([&](Change& change) {
            change.modify(initiator, Initiator{"iqn.2026-01.com.example:host1", secret});
        });
    };
    set("hunter2"); // no change of it
    set("long enough to be good");
    EXPECT_EQ(_seen.size(), 1u);
    set("hunter3");
    EXPECT_EQ(_seen.size(), 2u);
    set("");
    EXPECT_EQ(_seen.size(), 2u);

    std::ifstream in(eventsIn(state()));
    const std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_NE(all.find("weak-secret"), std::string::npos);
    EXPECT_EQ(all.find("hunter"), std::string::npos);
}

TEST_F(ArrayEventsTest, AChangeThatFailsIsNotNoted) {
    EXPECT_ANY_THROW(change([](Change& change) {
        change.create(Initiator{"iqn.2026-01.com.example:host1", "weak"});
        throw std::runtime_error("changed my mind");
    }));
    EXPECT_TRUE(_seen.empty());
}

} // namespace
} // namespace array
