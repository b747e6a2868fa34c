// Recorded requests get the responses that were recorded with them, and leave a server that runs
// and an array in order.
//
// With WIRE_RECORD set in the environment the responses are written instead, to be looked at.
#include "tests/wire/support/Pair.h"
#include "tests/wire/support/Array.h"
#include "tests/wire/support/Http.h"
#include "tests/wire/support/Smisd.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <ostream>

namespace wire {

void PrintTo(const Pair& pair, std::ostream* out) {
    *out << pair.name;
}

namespace {

std::string nameOf(const testing::TestParamInfo<Pair>& parameter) {
    return parameter.param.name;
}

class RecordedPair : public testing::TestWithParam<Pair> {};

TEST_P(RecordedPair, IsAnsweredAsRecorded) {
    const Array array;
    Smisd smisd(array.state());
    const std::string response =
        normalized(roundTrip(smisd.port(), requestBytes(readFile(GetParam().request))));
    if (std::getenv("WIRE_RECORD") != nullptr) {
        std::ofstream(GetParam().response, std::ios::binary) << response;
    }
    EXPECT_EQ(response, readFile(GetParam().response));
    EXPECT_EQ(smisd.stop().status, 0);
    EXPECT_EQ(array.arrayctl({"check"}), "");
}

INSTANTIATE_TEST_SUITE_P(, RecordedPair, testing::ValuesIn(readPairs(PAIRS)), nameOf);

} // namespace
} // namespace wire
