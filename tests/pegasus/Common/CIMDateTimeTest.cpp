#include <Pegasus/Common/CIMDateTime.h>
#include <gtest/gtest.h>

#include "tests/pegasus/Text.h"

using namespace Pegasus;

static const char* const stamp = "20050102030405.678901+060";
static const char* const sameInUtc = "20050102020405.678901+000";
static const char* const day = "00000001000000.000000:000";
static const Uint64 dayMicros = 86400000000ULL;

static std::string text(const CIMDateTime& x) {
    return utf8(x.toString());
}

TEST(CIMDateTime, DefaultIsTheZeroInterval) {
    EXPECT_EQ(text(CIMDateTime()), "00000000000000.000000:000");
    EXPECT_TRUE(CIMDateTime().isInterval());
    EXPECT_EQ(CIMDateTime().toMicroSeconds(), 0u);
}

TEST(CIMDateTime, TextComesBackAsItWas) {
    for (const char* t :
         {stamp, sameInUtc, day, "20040229235959.999999-720", "99999999235959.999999:000",
          "99991231235959.999999+000", "2005010203****.******+060", "20050102030405.6789**+060",
          "00000012******.******:000"}) {
        EXPECT_EQ(text(CIMDateTime(t)), t);
    }
}

TEST(CIMDateTime, KnowsIntervalsFromTimestamps) {
    EXPECT_FALSE(CIMDateTime(stamp).isInterval());
    EXPECT_TRUE(CIMDateTime(day).isInterval());
}

TEST(CIMDateTime, MicrosecondsAreOfTheIntervalOrSinceTheYearZeroInUtc) {
    EXPECT_EQ(CIMDateTime(day).toMicroSeconds(), dayMicros);
    EXPECT_EQ(CIMDateTime("00010101000000.000000+000").toMicroSeconds(), 366 * dayMicros);
    EXPECT_EQ(CIMDateTime(stamp).toMicroSeconds(), 63271850645678901ULL);
    EXPECT_EQ(CIMDateTime(sameInUtc).toMicroSeconds(), 63271850645678901ULL);
}

TEST(CIMDateTime, IsMadeFromMicroseconds) {
    EXPECT_EQ(text(CIMDateTime(Uint64(123456789012345ULL), true)), "00001428213309.012345:000");
    EXPECT_EQ(text(CIMDateTime(Uint64(63271234567890123ULL), false)), "20041225225607.890123+000");
    EXPECT_EQ(text(CIMDateTime(Uint64(0), false)), "00000101000000.000000+000");
}

TEST(CIMDateTime, MicrosecondsBeyondTheTextThrow) {
    EXPECT_THROW(CIMDateTime(Uint64(8640000000000000000ULL), true), DateTimeOutOfRangeException);
    EXPECT_THROW(CIMDateTime(Uint64(315569520000000000ULL), false), DateTimeOutOfRangeException);
    EXPECT_NO_THROW(CIMDateTime(Uint64(315569519999999999ULL), false));
}

class BadDateTimeText : public testing::TestWithParam<const char*> {};

TEST_P(BadDateTimeText, IsRefused) {
    EXPECT_THROW(CIMDateTime{String(GetParam())}, InvalidDateTimeFormatException);
}

INSTANTIATE_TEST_SUITE_P(Format, BadDateTimeText,
                         testing::Values("", "abc", "20050102030405.678901+0600",
                                         "20050102030405.678901 060", "20050102030405,678901+060",
                                         "2005x102030405.678901+060", "20050102030405.678901:001",
                                         "20050102030405.678901+06x", "2005*102030405.678901+060",
                                         "200501020304*5.678901+060", "0000001*000000.000000:000"));

class DateTimeFieldOutOfRange : public testing::TestWithParam<const char*> {};

TEST_P(DateTimeFieldOutOfRange, IsRefused) {
    EXPECT_THROW(CIMDateTime{String(GetParam())}, Exception);
}

INSTANTIATE_TEST_SUITE_P(Fields, DateTimeFieldOutOfRange,
                         testing::Values("20051302030405.678901+060", "20050002030405.678901+060",
                                         "20050132030405.678901+060", "20050100030405.678901+060",
                                         "20050229000000.000000+000", "20050102240405.678901+060",
                                         "20050102036005.678901+060", "20050102030460.678901+060",
                                         "00000001240000.000000:000", "00000001006000.000000:000"));

TEST(CIMDateTime, TimestampsAreComparedInUtc) {
    const CIMDateTime a(stamp), b(sameInUtc), later("20050102020405.678902+000");
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a.equal(b));
    EXPECT_FALSE(a != b);
    EXPECT_TRUE(a < later);
    EXPECT_TRUE(a <= b);
    EXPECT_TRUE(later > a);
    EXPECT_TRUE(later >= a);
    EXPECT_TRUE(a != later);
}

TEST(CIMDateTime, AnIntervalIsNotComparedWithATimestamp) {
    const CIMDateTime a(stamp), b(day);
    EXPECT_THROW(static_cast<void>(a == b), TypeMismatchException);
    EXPECT_THROW(static_cast<void>(a < b), TypeMismatchException);
}

TEST(CIMDateTime, DifferenceIsInMicroseconds) {
    EXPECT_EQ(CIMDateTime::getDifference(CIMDateTime(), CIMDateTime(day)), Sint64(dayMicros));
    EXPECT_EQ(CIMDateTime::getDifference(CIMDateTime(day), CIMDateTime()), -Sint64(dayMicros));
    EXPECT_EQ(CIMDateTime::getDifference(CIMDateTime(stamp), CIMDateTime(sameInUtc)), 0);
    EXPECT_THROW(CIMDateTime::getDifference(CIMDateTime(stamp), CIMDateTime(day)),
                 InvalidDateTimeFormatException);
}

TEST(CIMDateTime, AnIntervalIsAddedToATimestampAndToAnInterval) {
    EXPECT_EQ(text(CIMDateTime(stamp) + CIMDateTime(day)), "20050103030405.678901+060");
    EXPECT_EQ(text(CIMDateTime(day) + CIMDateTime(day)), "00000002000000.000000:000");
    CIMDateTime x(day);
    x += CIMDateTime(day);
    EXPECT_EQ(text(x), "00000002000000.000000:000");
    EXPECT_THROW(CIMDateTime(day) + CIMDateTime(stamp), TypeMismatchException);
    EXPECT_THROW(CIMDateTime(stamp) + CIMDateTime(stamp), TypeMismatchException);
}

TEST(CIMDateTime, SubtractionGivesTheIntervalBetweenTwo) {
    const CIMDateTime next("20050103030405.678901+060");
    EXPECT_EQ(text(next - CIMDateTime(stamp)), day);
    EXPECT_EQ(text(CIMDateTime(day) - CIMDateTime(day)), text(CIMDateTime()));
    CIMDateTime x(day);
    x -= CIMDateTime("00000000000001.000000:000");
    EXPECT_EQ(text(x), "00000000235959.000000:000");
    EXPECT_THROW(CIMDateTime() - CIMDateTime(day), DateTimeOutOfRangeException);
    EXPECT_THROW(CIMDateTime(stamp) - next, DateTimeOutOfRangeException);
    EXPECT_THROW(CIMDateTime(day) - CIMDateTime(stamp), TypeMismatchException);
}

TEST(CIMDateTime, IntervalsAreMultipliedAndDivided) {
    const CIMDateTime x(day);
    EXPECT_EQ(text(x * 3), "00000003000000.000000:000");
    EXPECT_EQ(text(x / Uint64(2)), "00000000120000.000000:000");
    EXPECT_EQ((x * 3) / x, 3u);
    EXPECT_THROW(CIMDateTime(stamp) * 2, TypeMismatchException);
    EXPECT_THROW(x / Uint64(0), Exception);
    EXPECT_THROW(static_cast<void>(x / CIMDateTime()), Exception);
}

TEST(CIMDateTime, SetAndClearReplace) {
    CIMDateTime x(stamp);
    x.set(day);
    EXPECT_EQ(text(x), day);
    EXPECT_THROW(x.set("abc"), InvalidDateTimeFormatException);
    x.clear();
    EXPECT_EQ(text(x), text(CIMDateTime()));
}

TEST(CIMDateTime, CopiesAreIndependent) {
    CIMDateTime x(stamp);
    const CIMDateTime copy(x);
    x.set(day);
    EXPECT_EQ(text(copy), stamp);
}

TEST(CIMDateTime, TheCurrentTimeIsATimestampOfNow) {
    const CIMDateTime before = CIMDateTime::getCurrentDateTime();
    const CIMDateTime after = CIMDateTime::getCurrentDateTime();
    EXPECT_FALSE(before.isInterval());
    EXPECT_TRUE(before <= after);
    EXPECT_LT(CIMDateTime::getDifference(before, after), 60000000);
    EXPECT_TRUE(CIMDateTime("20200101000000.000000+000") < before);
}
