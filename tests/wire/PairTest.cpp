// Recorded requests get the responses that were recorded with them, and leave a server that runs
// and an array in order.
//
// With WIRE_RECORD set in the environment the responses in files are written instead, to be looked
// at; what a table says is changed by hand.
#include "tests/wire/support/Pair.h"

#include <cstdlib>
#include <fstream>
#include <ostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Http.h"
#include "tests/wire/support/Smisd.h"

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
        normalized(roundTrip(smisd.port(), requestBytes(GetParam().request)));
    if (std::getenv("WIRE_RECORD") != nullptr && !GetParam().recording.empty()) {
        std::ofstream(GetParam().recording, std::ios::binary) << response;
    } else {
        EXPECT_EQ(response, GetParam().response);
    }
    EXPECT_EQ(smisd.stop().status, 0);
    EXPECT_EQ(array.arrayctl({"check"}), "");
}

INSTANTIATE_TEST_SUITE_P(, RecordedPair, testing::ValuesIn(readPairs(PAIRS)), nameOf);

TEST(RecordedPairs, ThatAreBadChangeNothingAndLeaveAServerThatAnswers) {
    const Array array;
    const std::string before = array.arrayctl({"export", "--with-secrets"});
    const Smisd smisd(array.state());
    for (const Pair& pair : readPairs(PAIRS)) {
        if (pair.name.starts_with("Bad")) {
            roundTrip(smisd.port(), requestBytes(pair.request));
        }
    }
    EXPECT_THAT(roundTrip(smisd.port(), "GET /healthz HTTP/1.1\r\nHost: x\r\n\r\n"),
                testing::StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_EQ(array.arrayctl({"export", "--with-secrets"}), before);
    EXPECT_EQ(array.arrayctl({"check"}), "");
}

} // namespace
} // namespace wire
