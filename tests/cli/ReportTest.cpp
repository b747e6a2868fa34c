#include "cli/Report.h"

#include <sstream>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

const cli::Progress::Clock::time_point start{};

TEST(Progress, AppearsOnceTheWorkTakesOverASecondAndIsWipedAtTheEnd) {
    std::ostringstream err;
    {
        cli::Progress progress(err, true, 200, start);
        progress.update(50, start + 999ms);
        EXPECT_EQ(err.str(), "");
        progress.update(100, start + 1000ms);
        EXPECT_EQ(err.str(), "\r[" + std::string(25, '#') + std::string(25, ' ') + "] 50 %");
    }
    EXPECT_TRUE(err.str().ends_with("50 %\r\033[K"));
}

TEST(Progress, IsDrawnAtMostTenTimesASecond) {
    std::ostringstream err;
    cli::Progress progress(err, true, 200, start);
    progress.update(100, start + 1000ms);
    const std::string first = err.str();
    progress.update(120, start + 1099ms);
    EXPECT_EQ(err.str(), first);
    progress.update(120, start + 1100ms);
    EXPECT_NE(err.str(), first);
}

TEST(Progress, NeverPassesTheTotal) {
    std::ostringstream err;
    cli::Progress progress(err, true, 200, start);
    progress.update(500, start + 2s);
    EXPECT_EQ(err.str(), "\r[" + std::string(50, '#') + "] 100 %");
}

TEST(Progress, IsSilentWithoutATerminalOrATotal) {
    std::ostringstream err;
    {
        cli::Progress noTerminal(err, false, 200, start);
        noTerminal.update(100, start + 5s);
        cli::Progress noTotal(err, true, 0, start);
        noTotal.update(100, start + 5s);
    }
    EXPECT_EQ(err.str(), "");
}

} // namespace
