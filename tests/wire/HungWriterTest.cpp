// A process that hangs while it has the writer's turn.
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <future>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <boost/asio.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Client.h"
#include "tests/wire/support/Http.h"
#include "tests/wire/support/Names.h"
#include "tests/wire/support/Pair.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace asio = boost::asio;

namespace wire {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// An arrayctl that imports what it reads from a pipe, in which the end of the text never comes, and
// that is stopped then.
class HungImport {
public:
    explicit HungImport(const Array& array) : _pipe(array.file("pipe").string()) {
        if (mkfifo(_pipe.c_str(), 0600) != 0) {
            throw std::runtime_error("no pipe");
        }
        _import.emplace(std::vector<std::string>{"sh", "-c",
                                                 R"(exec "$0" --state "$1" import - <"$2")",
                                                 ARRAYCTL, array.state().string(), _pipe});
        _descriptor = open(_pipe.c_str(), O_WRONLY | O_CLOEXEC);
        const std::string text = R"({"host":"h","system":"s","volumes":[{"size":1,"name":"60"},)";
        EXPECT_EQ(write(_descriptor, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    HungImport(const HungImport&) = delete;
    HungImport& operator=(const HungImport&) = delete;
    ~HungImport() { close(_descriptor); }

    void stop() const { _import->signal(SIGSTOP); }
    void kill() { _import.reset(); }
    std::string name() const { return "process " + std::to_string(_import->pid()) + " (arrayctl)"; }

private:
    const std::string _pipe;
    std::optional<Process> _import;
    int _descriptor = -1;
};

// Requests whose answers nobody waits for.
class Unanswered {
public:
    void send(unsigned short port, const std::string& bytes) {
        _sockets.emplace_back(_io).connect({asio::ip::address_v4::loopback(), port});
        asio::write(_sockets.back(), asio::buffer(bytes));
    }

private:
    asio::io_context _io;
    std::vector<asio::ip::tcp::socket> _sockets;
};

std::string health(const Smisd& smisd) {
    return roundTrip(smisd.port(), "GET /healthz HTTP/1.1\r\nHost: x\r\n\r\n");
}

TEST(HungWriter, IsNamedWhileReadersDoNotNotice) {
    const Array array(R"({"host":"h","system":"s"})");
    const Smisd smisd(array.state());
    const Client client(smisd);
    client.enumerate(hostClass);
    HungImport import(array);
    const auto begin = Clock::now();
    while (health(smisd).find(import.name()) == std::string::npos) {
        ASSERT_LT(Clock::now() - begin, 10s) << health(smisd);
    }
    import.stop();

    // More changes than smisd has workers.
    Unanswered changes;
    for (int i = 0; i < 40; ++i) {
        changes.send(smisd.port(), requestBytes(readFile(std::string(PAIRS) +
                                                         "/CreateStorageHardwareID.request")));
    }
    std::future<Result> refused = std::async(std::launch::async, [&] {
        return run(
            {ARRAYCTL, "--state", array.state().string(), "volume", "create", "61", "--size", "1"});
    });
    const auto start = Clock::now();
    while (refused.wait_for(100ms) != std::future_status::ready) {
        const auto asked = Clock::now();
        EXPECT_EQ(client.enumerate(hostClass).error(), "");
        EXPECT_LT(Clock::now() - asked, 1s);
        EXPECT_THAT(health(smisd), AllOf(StartsWith("HTTP/1.1 503"),
                                         HasSubstr("changes wait for " + import.name())));
        EXPECT_LT(Clock::now() - asked, 3s);
        ASSERT_LT(Clock::now() - start, 80s);
    }
    const Result result = refused.get();
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err,
                HasSubstr("Nothing was changed. The array is being changed by " + import.name()));
    EXPECT_GT(Clock::now() - start, 55s);
    import.kill();
    EXPECT_THAT(health(smisd), StartsWith("HTTP/1.1 200 OK\r\n"));
    array.arrayctl({"volume", "create", "61", "--size", "1"});
}

} // namespace
} // namespace wire
