#include "engine/DRAVKeys.h"

#include "tests/array/ArrayFixture.h"

namespace array {
namespace {

using Pegasus::DRAVObjectID;
using Pegasus::DRAVObjectIDDecimal;
using Pegasus::DRAVObjectKey;
using Pegasus::String;
using Pegasus::Uint32;

TEST(DRAVObjectKey, IsOvrinAndEightUpperCaseHexadecimalDigits) {
    EXPECT_EQ(toUtf8(DRAVObjectKey(0x0D00002A)), "Ovrin:0D00002A");
    EXPECT_EQ(toUtf8(DRAVObjectKey(0)), "Ovrin:00000000");
    EXPECT_EQ(toUtf8(DRAVObjectKey(0xFFFFFFFF)), "Ovrin:FFFFFFFF");
}

TEST(DRAVObjectID, ReadsBackEveryKeyText) {
    for (const Uint32 id : {0u, 1u, 0x0D000001u, 0x17ABCDEFu, 0xFFFFFFFFu})
        EXPECT_EQ(DRAVObjectID(DRAVObjectKey(id)).id, id);
}

TEST(DRAVObjectID, QuotesATextOfAnyOtherForm) {
    for (const char* text : {"", "Ovrin:", "Ovrin:0D00002", "Ovrin:0D00002A0", "Ovrin:0d00002a",
                             "ovrin:0D00002A", "Ovrin:0D00002G", "Ovrin:+D00002A", "Ovrin: D00002A",
                             " Ovrin:0D00002A", "0D00002A", "218103850"})
        expectFailure(ErrorCode::BadKeyText,
                      "\"" + std::string(text) +
                          "\" is not the key text of an object: \"Ovrin:\" "
                          "and eight upper-case hexadecimal digits.",
                      [&] { DRAVObjectID id{String(text)}; });
}

TEST(DRAVObjectID, CutsALongTextAndHidesWhatIsNotPrintable) {
    EXPECT_EQ(failureOf([] { DRAVObjectID id(fromUtf8("a\n\xC3\xA4")); }).message.substr(0, 7),
              "\"a???\" ");
    const std::string longText(100000, 'x');
    EXPECT_LT(failureOf([&] { DRAVObjectID id(fromUtf8(longText)); }).message.size(), 400u);
}

TEST(DRAVObjectIDDecimal, ReadsDigitsOnly) {
    EXPECT_EQ(DRAVObjectIDDecimal(String("0")).id, 0u);
    EXPECT_EQ(DRAVObjectIDDecimal(String("007")).id, 7u);
    EXPECT_EQ(DRAVObjectIDDecimal(String("4294967295")).id, 4294967295u);
    for (const char* text : {"", "-1", "+1", " 1", "1 ", "0x1", "1.0", "4294967296", "one"})
        expectFailure(ErrorCode::BadNumber,
                      "\"" + std::string(text) + "\" is not a decimal number below 4294967296.",
                      [&] { DRAVObjectIDDecimal number{String(text)}; });
}

} // namespace
} // namespace array
