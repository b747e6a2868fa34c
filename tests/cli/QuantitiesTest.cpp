#include "cli/Quantities.h"

#include <limits>

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

namespace {

std::string roundTrip(const std::string& portal) {
    return cli::portalText(cli::portalFromText(portal));
}

TEST(SizeText, IsInTheGreatestUnitThatTheSizeFills) {
    EXPECT_EQ(cli::sizeText(0), "0 B");
    EXPECT_EQ(cli::sizeText(1023), "1023 B");
    EXPECT_EQ(cli::sizeText(1024), "1 KiB");
    EXPECT_EQ(cli::sizeText(std::uint64_t(1) << 30), "1 GiB");
    EXPECT_EQ(cli::sizeText(std::uint64_t(1) << 60), "1 EiB");
}

TEST(SizeText, HasOneDecimalWhereTheUnitDoesNotDivide) {
    EXPECT_EQ(cli::sizeText(1536), "1.5 KiB");
    EXPECT_EQ(cli::sizeText((std::uint64_t(10) << 30) + 1), "10.0 GiB");
    EXPECT_EQ(cli::sizeText(std::numeric_limits<std::uint64_t>::max()), "16.0 EiB");
}

TEST(SizeFromText, TakesBytesAndUnitsOfEitherKindAndCase) {
    EXPECT_EQ(cli::sizeFromText("0"), 0U);
    EXPECT_EQ(cli::sizeFromText("512B"), 512U);
    EXPECT_EQ(cli::sizeFromText("10GiB"), 10737418240U);
    EXPECT_EQ(cli::sizeFromText("10gib"), 10737418240U);
    EXPECT_EQ(cli::sizeFromText("500MB"), 500000000U);
    EXPECT_EQ(cli::sizeFromText("18446744073709551615"), 18446744073709551615U);
}

TEST(SizeFromText, RefusesOtherTextsAndQuotesThem) {
    for (const char* text :
         {"", "-1", "+1", " 1", "1 GiB", "1.5GiB", "GiB", "1X", "16EiB", "18446744073709551616"}) {
        try {
            cli::sizeFromText(text);
            ADD_FAILURE() << text;
        } catch (const CLI::ValidationError& error) {
            EXPECT_EQ(std::string(error.what()).find('"' + std::string(text) + "\" is no size"),
                      0U);
        }
    }
}

TEST(NumberFromText, TakesDecimalNumbersUpToTheLimit) {
    EXPECT_EQ(cli::numberFromText("0", 9), 0U);
    EXPECT_EQ(cli::numberFromText("010", 10), 10U);
    for (const char* text : {"", "-1", "11", "0x1", "1a"}) {
        EXPECT_THROW(cli::numberFromText(text, 10), CLI::ValidationError) << text;
    }
}

TEST(Portal, IsAnAddressAndAPort) {
    EXPECT_EQ(roundTrip("192.0.2.10:860"), "192.0.2.10:860");
    EXPECT_EQ(roundTrip("[2001:db8::1]:860"), "[2001:db8::1]:860");
    EXPECT_EQ(cli::portalFromText("[2001:db8::1]:860").address, "2001:db8::1");
}

TEST(Portal, WithoutAPortHasTheStandardOne) {
    EXPECT_EQ(roundTrip("192.0.2.10"), "192.0.2.10:3260");
    EXPECT_EQ(roundTrip("2001:db8::1"), "[2001:db8::1]:3260");
    EXPECT_EQ(roundTrip("[2001:db8::1]"), "[2001:db8::1]:3260");
}

TEST(Portal, WithABadPortIsRefused) {
    for (const char* text :
         {"192.0.2.10:", "192.0.2.10:x", "192.0.2.10:65536", "192.0.2.10:-1", "[2001:db8::1]:1x"}) {
        EXPECT_THROW(cli::portalFromText(text), CLI::ValidationError) << text;
    }
}

TEST(Counted, PutsManyInThePlural) {
    EXPECT_EQ(cli::counted(0, "volume"), "0 volumes");
    EXPECT_EQ(cli::counted(1, "volume"), "1 volume");
    EXPECT_EQ(cli::counted(2, "volume"), "2 volumes");
}

} // namespace
