#include "array/description/Import.h"

#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include "array/description/Export.h"
#include "array/description/Reader.h"
#include "array/description/Writer.h"
#include "array/engine/Text.h"
#include "engine/DRAVOperationFailedException.h"

using namespace array::description;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class DescriptionImport : public testing::Test {
protected:
    DescriptionImport() {
        std::string name = testing::TempDir() + "description.XXXXXX";
        directory = mkdtemp(name.data());
        opened = array::Array::openOrCreate(directory / "state");
    }

    ~DescriptionImport() override {
        opened.reset();
        std::filesystem::remove_all(directory);
    }

    void import(const std::string& text) {
        std::istringstream input(text);
        importFrom(input, *opened);
    }

    // What is wrong with a description, of which nothing may have been imported.
    std::string errorOf(const std::string& text) {
        const std::uint64_t version = opened->snapshot()->version();
        std::string message = "no error";
        try {
            import(text);
        } catch (const DescriptionError& error) {
            message = error.what();
        }
        EXPECT_EQ(opened->snapshot()->version(), version);
        EXPECT_EQ(exported(), emptyArray);
        return message;
    }

    std::string exported() {
        std::ostringstream text;
        Writer writer(text, Secrets::Write);
        exportTo(writer, *opened->snapshot());
        writer.finish();
        return text.str();
    }

    void SetUp() override { emptyArray = exported(); }

    std::filesystem::path directory;
    std::unique_ptr<array::Array> opened;
    std::string emptyArray;
};

const char* const everything = R"({
  "host": "array1.example.com",
  "system": "array1",
  "endpoints": [
    { "address": "192.0.2.10", "port": 3260 },
    { "address": "2001:db8::1", "port": 860 }
  ],
  "volumes": [
    { "name": "60014051A2B3C4D5E6F7A8B9C0D1E2F4", "elementName": "later", "size": 1024 },
    { "name": "60014051A2B3C4D5E6F7A8B9C0D1E2F3", "elementName": "mäil", "size": 1073741824 }
  ],
  "targets": [
    { "name": "iqn.2026-01.com.example:t2", "secret": "" },
    { "name": "iqn.2026-01.com.example:t1", "secret": "the target's secret" }
  ],
  "initiators": [
    { "name": "iqn.2026-01.com.example:host2", "secret": "the host's secret" },
    { "name": "iqn.2026-01.com.example:host1", "secret": "" }
  ],
  "grants": [
    { "target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:host2" }
  ],
  "logicalUnits": [
    { "target": "iqn.2026-01.com.example:t1", "volume": "60014051A2B3C4D5E6F7A8B9C0D1E2F3", "lun": 7, "access": "none" },
    { "target": "iqn.2026-01.com.example:t2", "volume": "60014051A2B3C4D5E6F7A8B9C0D1E2F3", "lun": 0, "access": "ro" }
  ],
  "sessions": [
    { "target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:host2", "connections": [ { "endpoint": 1 } ] }
  ]
}
)";

TEST_F(DescriptionImport, ThenExportGivesTheSame) {
    import(everything);
    EXPECT_EQ(exported(), everything);
}

TEST_F(DescriptionImport, GivesIdsInTheOrderOfTheText) {
    import(everything);
    const array::SnapshotPtr array = opened->snapshot();
    EXPECT_EQ(array->endpoint(0x09000001)->port, 3260);
    EXPECT_EQ(array->endpoint(0x09000002)->port, 860);
    EXPECT_EQ(array->volume(0x17000001)->elementName, "later");
    EXPECT_EQ(array->volume(0x17000002)->elementName, "mäil");
    EXPECT_EQ(array->target(0x0E000001)->name, "iqn.2026-01.com.example:t2");
    EXPECT_EQ(array->initiator(0x0D000001)->name, "iqn.2026-01.com.example:host2");
    EXPECT_EQ(array->logicalUnit(0x0F000001)->lun, 7U);
    EXPECT_EQ(array->logicalUnit(0x0F000002)->target, 0x0E000001U);
    EXPECT_EQ(array->session(0x11000001)->initiator, 0x0D000001U);
    EXPECT_EQ(array->names().host, "array1.example.com");
    EXPECT_EQ(array->names().system, "array1");
}

TEST_F(DescriptionImport, IsThereAfterTheArrayIsOpenedAgain) {
    import(everything);
    opened = array::Array::open(directory / "state");
    EXPECT_EQ(exported(), everything);
}

TEST_F(DescriptionImport, TakesTheSectionsInAnyOrder) {
    std::istringstream input(everything);
    const auto sorted = nlohmann::json::parse(input).dump();
    ASSERT_LT(sorted.find("grants"), sorted.find("targets"));
    import(sorted);
    EXPECT_EQ(exported(), everything);
}

TEST_F(DescriptionImport, IntoAnArrayWithObjectsIsRefused) {
    import(
        R"({ "host": "h", "system": "s", "endpoints": [ { "address": "192.0.2.10", "port": 1 } ] })");
    const std::string before = exported();
    try {
        import(everything);
        ADD_FAILURE() << "no error";
    } catch (const Pegasus::DRAVOperationFailedException& error) {
        EXPECT_THAT(array::toUtf8(error.getMessage()), StartsWith("The array has objects already"));
    }
    EXPECT_EQ(exported(), before);
}

TEST_F(DescriptionImport, ExportLeavesOutUnitsWithoutAVolumeAndCountsThem) {
    import(everything);
    opened->change([](array::Change& change) { change.remove(0x17000002); });
    std::ostringstream text;
    Writer writer(text, Secrets::Write);
    EXPECT_EQ(exportTo(writer, *opened->snapshot()), 2U);
    writer.finish();
    EXPECT_THAT(text.str(), HasSubstr("\"logicalUnits\": [],"));
}

TEST_F(DescriptionImport, ExportCallsBackAfterEachEntryThatWasCounted) {
    import(everything);
    std::ostringstream text;
    Writer writer(text, Secrets::Write);
    std::size_t calls = 0;
    exportTo(writer, *opened->snapshot(), [&] { ++calls; });
    EXPECT_EQ(calls, 12U);
    EXPECT_EQ(countEntries(*opened->snapshot()), 12U);
}

// A valid description with one text replaced by another.
std::string withMistake(const std::string& valid, const std::string& mistake) {
    std::string text = everything;
    text.replace(text.find(valid), valid.size(), mistake);
    return text;
}

struct Mistake {
    const char* name;
    const char* valid;
    const char* mistake;
    const char* message;
};

class DescriptionImportMistake : public DescriptionImport,
                                 public testing::WithParamInterface<Mistake> {};

TEST_P(DescriptionImportMistake, IsRefusedWithItsPointerAndNothingIsImported) {
    const Mistake& mistake = GetParam();
    EXPECT_EQ(errorOf(withMistake(mistake.valid, mistake.mistake)), mistake.message);
}

const Mistake mistakes[] = {
    {"UnknownTargetOfAGrant", R"("target": "iqn.2026-01.com.example:t1", "initiator")",
     R"("target": "iqn.2026-01.com.example:t9", "initiator")",
     "/grants/0/target: there is no target \"iqn.2026-01.com.example:t9\""},
};

INSTANTIATE_TEST_SUITE_P(Import, DescriptionImportMistake, testing::ValuesIn(mistakes),
                         [](const auto& test) { return test.param.name; });

} // namespace
