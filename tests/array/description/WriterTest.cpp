#include "array/description/Writer.h"

#include <sstream>

#include <gmock/gmock.h>

#include "array/description/Reader.h"
#include "tests/array/description/RecordingReceiver.h"

using namespace array::description;

namespace {

const char* const everything = R"({
  "host": "array1.example.com",
  "system": "array \"1\"",
  "endpoints": [
    { "address": "192.0.2.10", "port": 3260 },
    { "address": "2001:db8::1", "port": 860 }
  ],
  "volumes": [
    { "name": "6001", "elementName": "mäil", "size": 18446744073709551615 }
  ],
  "targets": [
    { "name": "iqn.t", "secret": "target's own" }
  ],
  "initiators": [
    { "name": "iqn.i", "secret": "host's own" },
    { "name": "iqn.j", "secret": "" }
  ],
  "grants": [
    { "target": "iqn.t", "initiator": "iqn.i" }
  ],
  "logicalUnits": [
    { "target": "iqn.t", "volume": "6001", "lun": 7, "access": "none" }
  ],
  "sessions": [
    { "target": "iqn.t", "initiator": "iqn.i", "connections": [ { "endpoint": 0 }, { "endpoint": 1 } ] }
  ]
}
)";

std::string rewritten(const std::string& text, Secrets secrets) {
    std::istringstream input(text);
    std::ostringstream output;
    Writer writer(output, secrets);
    read(input, writer);
    writer.finish();
    return output.str();
}

TEST(DescriptionWriter, WritesWhatWasReadInTheSameForm) {
    EXPECT_EQ(rewritten(everything, Secrets::Write), everything);
}

TEST(DescriptionWriter, WritesEmptySections) {
    const char* const empty = R"({
  "host": "h",
  "system": "s",
  "endpoints": [],
  "volumes": [],
  "targets": [],
  "initiators": [],
  "grants": [],
  "logicalUnits": [],
  "sessions": []
}
)";
    EXPECT_EQ(rewritten(R"({ "host": "h", "system": "s" })", Secrets::Write), empty);
}

TEST(DescriptionWriter, LeavesSecretsOutButSaysWhoHasNone) {
    const std::string text = rewritten(everything, Secrets::Leave);
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("own")));
    EXPECT_THAT(text, testing::HasSubstr("{ \"name\": \"iqn.i\" }"));
    EXPECT_THAT(text, testing::HasSubstr("{ \"name\": \"iqn.j\", \"secret\": \"\" }"));
}

} // namespace
