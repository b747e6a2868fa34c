#include "array/description/Import.h"

#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include "array/description/Export.h"
#include "array/description/Reader.h"
#include "array/description/Writer.h"
#include "array/model/Text.h"
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

TEST_F(DescriptionImport, TakesASessionOfSeveralConnections) {
    std::string text = everything;
    text.replace(text.find("{ \"endpoint\": 1 }"), 17, "{ \"endpoint\": 1 }, { \"endpoint\": 0 }");
    import(text);
    EXPECT_EQ(exported(), text);
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

const char* const t1InGrants =
    R"("target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:host2" }
  ])";

const Mistake mistakes[] = {
    // Dangling references.
    {"UnknownTargetOfAGrant", t1InGrants,
     R"("target": "iqn.2026-01.com.example:t9", "initiator": "iqn.2026-01.com.example:host2" } ])",
     "/grants/0/target: there is no target \"iqn.2026-01.com.example:t9\""},
    {"UnknownInitiatorOfAGrant", t1InGrants,
     R"("target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:t1" } ])",
     "/grants/0/initiator: there is no initiator \"iqn.2026-01.com.example:t1\""},
    {"UnknownTargetOfAUnit", R"("target": "iqn.2026-01.com.example:t2", "volume")",
     R"("target": "", "volume")", "/logicalUnits/1/target: there is no target \"\""},
    {"UnknownVolumeOfAUnit", R"("volume": "60014051A2B3C4D5E6F7A8B9C0D1E2F3", "lun": 7)",
     R"("volume": "6001", "lun": 7)", "/logicalUnits/0/volume: there is no volume \"6001\""},
    {"UnknownInitiatorOfASession", R"("initiator": "iqn.2026-01.com.example:host2", "connections")",
     R"("initiator": "iqn.2026-01.com.example:host9", "connections")",
     "/sessions/0/initiator: there is no initiator \"iqn.2026-01.com.example:host9\""},
    {"UnknownEndpointOfAConnection", R"("endpoint": 1)", R"("endpoint": 2)",
     "/sessions/0/connections/0/endpoint: there is no endpoint 2; \"endpoints\" has 2, counted "
     "from 0"},
    {"HugeEndpointOfAConnection", R"("endpoint": 1)", R"("endpoint": 18446744073709551615)",
     "/sessions/0/connections/0/endpoint: there is no endpoint 18446744073709551615; \"endpoints\" "
     "has 2, counted from 0"},

    // Duplicates.
    {"EndpointTwice", R"("address": "2001:db8::1", "port": 860)",
     R"("address": "192.0.2.10", "port": 3260)",
     "/endpoints/1: \"192.0.2.10 3260\" is the name of another endpoint, Ovrin:09000001, and each "
     "has its own."},
    {"VolumeTwice", "60014051A2B3C4D5E6F7A8B9C0D1E2F4", "60014051a2b3c4d5e6f7a8b9c0d1e2f3",
     "/volumes/1: \"60014051A2B3C4D5E6F7A8B9C0D1E2F3\" is the name of another volume, "
     "Ovrin:17000001, and each has its own."},
    {"TargetTwice", R"("name": "iqn.2026-01.com.example:t2")",
     R"("name": "iqn.2026-01.com.example:t1")",
     "/targets/1: \"iqn.2026-01.com.example:t1\" is the name of another target, Ovrin:0E000001, "
     "and each has its own."},
    {"InitiatorTwice", R"("name": "iqn.2026-01.com.example:host1")",
     R"("name": "IQN.2026-01.com.example:HOST2")",
     "/initiators/1: \"iqn.2026-01.com.example:host2\" is the name of another initiator, "
     "Ovrin:0D000001, and each has its own."},
    {"GrantTwice", t1InGrants,
     R"("target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:host2" },
        { "target": "iqn.2026-01.com.example:t1", "initiator": "iqn.2026-01.com.example:host2" } ])",
     "/grants/1: the same grant stands before"},
    {"LunTwice",
     R"({ "target": "iqn.2026-01.com.example:t2", "volume": "60014051A2B3C4D5E6F7A8B9C0D1E2F3", "lun": 0)",
     R"({ "target": "iqn.2026-01.com.example:t1", "volume": "60014051A2B3C4D5E6F7A8B9C0D1E2F4", "lun": 7)",
     "/logicalUnits/1: LUN 7 of target \"iqn.2026-01.com.example:t1\" is taken by logical unit "
     "Ovrin:0F000001."},

    // Rules of the array.
    {"EmptyHost", R"("host": "array1.example.com")", R"("host": "")",
     "/host: \"\" cannot be the array's host name: it has 1 to 255 bytes of UTF-8 and no control "
     "characters."},
    {"SystemWithControls", R"("system": "array1")", R"("system": "a\u0000b")",
     "/system: \"a?b\" cannot be the array's system name: it has 1 to 255 bytes of UTF-8 and no "
     "control characters."},
    {"BadAddress", "192.0.2.10", "192.0.2.256",
     "/endpoints/0: \"192.0.2.256\" is no IPv4 or IPv6 address."},
    {"BadPort", R"("port": 860)", R"("port": 0)",
     "/endpoints/1: Port 0 of endpoint \"2001:db8::1\" is no TCP port."},
    {"BadVolumeName", "60014051A2B3C4D5E6F7A8B9C0D1E2F4", "mail",
     "/volumes/0: \"mail\" is no volume name: it consists of an even number of hexadecimal digits, "
     "from 2 to 128."},
    {"BadElementName", R"("elementName": "later")", R"("elementName": "la\nter")",
     "/volumes/0: \"la?ter\" is no element name: it has at most 255 bytes of UTF-8 and no control "
     "characters."},
    {"BadTargetName", R"("name": "iqn.2026-01.com.example:t2")", R"("name": "t2")",
     "/targets/0: \"t2\" is no iSCSI name: it begins with \"iqn.\", \"eui.\" or \"naa.\" (RFC 7143 "
     "section 4.2.7.3)."},
    {"BadSecretWhichIsNotShown", R"("secret": "the target's secret")",
     R"("secret": "the target's\u0007secret")",
     "/targets/1: The secret of \"iqn.2026-01.com.example:t1\" is refused: it has control "
     "characters."},
    {"BadLun", R"("lun": 7)", R"("lun": 16384)",
     "/logicalUnits/0: LUN 16384 of target \"iqn.2026-01.com.example:t1\" is out of range: it must "
     "be below 16384."},
    {"BadAccess", R"("access": "none")", R"("access": "RW")",
     "/logicalUnits/0/access: \"RW\" is none of \"rw\", \"ro\" and \"none\""},
    {"SessionWithoutAGrant", R"("initiator": "iqn.2026-01.com.example:host2", "connections")",
     R"("initiator": "iqn.2026-01.com.example:host1", "connections")",
     "/sessions/0: Initiator \"iqn.2026-01.com.example:host1\" has no grant for target "
     "\"iqn.2026-01.com.example:t1\"."},

    // Mistakes of the format, late in the text.
    {"UnknownMember", R"("endpoint": 1 })", R"("endpoint": 1, "port": 1 })",
     "/sessions/0/connections/0/port: this member is unknown"},
    {"NoEnd", "  ]\n}\n", "  ]\n",
     "parse error at line 30, column 1: syntax error while parsing object - unexpected end of "
     "input; expected '}'"},
};

INSTANTIATE_TEST_SUITE_P(Import, DescriptionImportMistake, testing::ValuesIn(mistakes),
                         [](const auto& test) { return test.param.name; });

} // namespace
