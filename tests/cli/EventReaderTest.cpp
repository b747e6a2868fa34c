#include "cli/EventReader.h"

#include <gtest/gtest.h>

namespace {

class EventReading : public testing::Test {
protected:
    EventReading() {
        std::string name = testing::TempDir() + "events.XXXXXX";
        directory = mkdtemp(name.data());
        file = directory / "events.jsonl";
    }

    ~EventReading() override { std::filesystem::remove_all(directory); }

    void append(const std::string& text) const { std::ofstream(file, std::ios::app) << text; }

    static std::string next(cli::EventReader& reader) {
        std::string line;
        return reader.next(line) ? line : "(none)";
    }

    std::filesystem::path directory;
    std::filesystem::path file;
};

TEST_F(EventReading, GivesLinesAsTheyAreAppended) {
    append("one\ntwo\n");
    cli::EventReader reader(file);
    EXPECT_EQ(next(reader), "one");
    EXPECT_EQ(next(reader), "two");
    EXPECT_EQ(next(reader), "(none)");
    append("three\n");
    EXPECT_EQ(next(reader), "three");
    EXPECT_EQ(next(reader), "(none)");
}

TEST_F(EventReading, WaitsForTheFileToAppear) {
    cli::EventReader reader(file);
    EXPECT_EQ(next(reader), "(none)");
    append("one\n");
    EXPECT_EQ(next(reader), "one");
}

TEST_F(EventReading, WaitsForTheEndOfALine) {
    append("one\ntw");
    cli::EventReader reader(file);
    EXPECT_EQ(next(reader), "one");
    EXPECT_EQ(next(reader), "(none)");
    append("o\n");
    EXPECT_EQ(next(reader), "two");
}

TEST_F(EventReading, GoesOnInTheFileThatReplacesAFullOneAfterItsLastLine) {
    append("one\n");
    cli::EventReader reader(file);
    EXPECT_EQ(next(reader), "one");
    append("two\n");
    std::filesystem::rename(file, file.string() + ".1");
    append("three\n");
    EXPECT_EQ(next(reader), "two");
    EXPECT_EQ(next(reader), "three");
    EXPECT_EQ(next(reader), "(none)");
}

TEST_F(EventReading, StaysWithTheOldFileUntilThereIsANewOne) {
    append("one\n");
    cli::EventReader reader(file);
    EXPECT_EQ(next(reader), "one");
    std::filesystem::rename(file, file.string() + ".1");
    EXPECT_EQ(next(reader), "(none)");
    append("two\n");
    EXPECT_EQ(next(reader), "two");
}

} // namespace
