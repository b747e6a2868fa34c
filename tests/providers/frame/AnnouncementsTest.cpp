#include "providers/frame/Announcements.h"

#include <iostream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/Log.h"
#include "tests/support/TraceCapture.h"

using namespace Pegasus;
using testing::ElementsAre;

namespace {

enum class Other { Socket, Pipe };

// Standard output, as the other end of it sees it: a packet for each write, if it is a socket.
class StandardOutput {
public:
    explicit StandardOutput(Other kind) : _saved(dup(STDOUT_FILENO)) {
        int ends[2]; // to read from, to write to
        const int failed =
            kind == Other::Pipe ? pipe(ends) : socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends);
        if (_saved < 0 || failed) {
            throw std::runtime_error("no other end for standard output");
        }
        std::cout.flush();
        dup2(ends[1], STDOUT_FILENO);
        close(ends[1]);
        _reader = std::thread([this, other = ends[0]] {
            char packet[65536];
            for (ssize_t size; (size = read(other, packet, sizeof packet)) > 0;) {
                _writes.emplace_back(packet, static_cast<size_t>(size));
            }
            close(other);
        });
    }

    // What was written; standard output is the old one again.
    std::vector<std::string> close() {
        std::cout.flush();
        dup2(_saved, STDOUT_FILENO);
        ::close(_saved);
        _reader.join();
        return _writes;
    }

private:
    static void close(int descriptor) { ::close(descriptor); }

    int _saved;
    std::thread _reader;
    std::vector<std::string> _writes;
};

TEST(TraceTest, WithoutABufferOfStandardOutputALineIsDropped) {
    std::streambuf* const buffer = std::cout.rdbuf(nullptr);
    trace("nowhere");
    std::cout.rdbuf(buffer);
    scripted::TraceCapture capture;
    trace("here");
    EXPECT_THAT(scripted::traces(), testing::Contains("here"));
}

TEST(TraceTest, ALineIsWrittenAndFlushedAtOnce) {
    StandardOutput output(Other::Socket);
    trace("Starting up the iSCSI Pipes provider");
    trace("");
    trace("Searching existing LU's ");

    EXPECT_THAT(output.close(), ElementsAre("Starting up the iSCSI Pipes provider\n", "\n",
                                            "Searching existing LU's \n"));
}

class TraceOfThreadsTest : public testing::TestWithParam<Other> {};

INSTANTIATE_TEST_SUITE_P(, TraceOfThreadsTest, testing::Values(Other::Socket, Other::Pipe),
                         [](const auto& other) {
                             return other.param == Other::Pipe ? "ToAPipe" : "ToASocket";
                         });

TEST_P(TraceOfThreadsTest, LinesThatAreWrittenAtTheSameTimeDoNotMix) {
    constexpr int threads = 8;
    constexpr int linesPerThread = 2000;
    const auto lineOf = [](int thread, int line) { // some longer than any buffer
        const int length = line % 100 == 0 ? 10000 : line % 100;
        return std::to_string(thread) + "/" + std::to_string(line) + " " +
               std::string(static_cast<size_t>(length), static_cast<char>('a' + thread));
    };
    std::multiset<std::string> expected;
    for (int thread = 0; thread < threads; ++thread) {
        for (int line = 0; line < linesPerThread; ++line) {
            expected.insert(lineOf(thread, line));
        }
    }

    StandardOutput output(GetParam());
    std::vector<std::thread> writers;
    for (int thread = 0; thread < threads; ++thread) {
        writers.emplace_back([&lineOf, thread] {
            for (int line = 0; line < linesPerThread; ++line) {
                trace(lineOf(thread, line));
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }

    std::string everything;
    for (const std::string& write : output.close()) {
        everything += write;
    }
    std::istringstream lines(everything);
    std::multiset<std::string> written;
    for (std::string line; std::getline(lines, line);) {
        written.insert(line);
    }
    EXPECT_TRUE(written == expected);
}

TEST(TraceTest, TheLineGoesToWhereverStandardOutputIsRedirected) {
    scripted::clearLog();
    {
        const scripted::TraceCapture capture;
        trace("ObjectID is: " + std::to_string(Uint32(4026531840)));
    }
    EXPECT_THAT(scripted::traces(), ElementsAre("ObjectID is: 4026531840"));
}

TEST(TraceTest, TextsAreWrittenAsUTF8) {
    const char* const name = "Zombie \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    EXPECT_EQ(utf8(String(name)), name);
    EXPECT_EQ(utf8(String()), "");
}

} // namespace
