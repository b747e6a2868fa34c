// Answers that are longer than what the server keeps of them.
#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <list>
#include <string>
#include <thread>

#include <boost/asio.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/wire/support/Array.h"
#include "tests/wire/support/Http.h"
#include "tests/wire/support/Pair.h"
#include "tests/wire/support/Smisd.h"

namespace asio = boost::asio;

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace wire {
namespace {

constexpr int hosts = 40'000; // with 618 bytes of answer each

std::string description() {
    std::string text = R"({"host": "array1", "system": "array1", "initiators": [)";
    for (int i = 0; i < hosts; ++i) {
        text += (i == 0 ? "" : ",") + std::string(R"({"name": "iqn.2026-01.com.example:h)") +
                std::to_string(i) + R"(", "secret": ""})";
    }
    return text + "]}";
}

// Highest memory of a process so far, in bytes.
std::size_t peakOf(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            std::size_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
    }
    throw std::runtime_error("no VmHWM");
}

// A client that asks for all hosts and reads when it is told to.
class SlowClient {
public:
    SlowClient(unsigned short port, const std::string& header) : _socket(_io) {
        _socket.connect({asio::ip::address_v4::loopback(), port});
        std::string request =
            requestBytes(readFile(std::string(PAIRS) + "/EnumerateHosts.request"));
        request.insert(request.find("\r\n") + 2, header);
        asio::write(_socket, asio::buffer(request));
    }
    std::string readSome() {
        std::array<char, 1000> buffer{};
        return {buffer.data(), asio::read(_socket, asio::buffer(buffer))};
    }
    std::string readAll() {
        std::string text;
        boost::system::error_code ended;
        asio::read(_socket, asio::dynamic_buffer(text), ended);
        return text;
    }
    void sayNoMore() { _socket.shutdown(asio::ip::tcp::socket::shutdown_send); }

private:
    asio::io_context _io;
    asio::ip::tcp::socket _socket;
};

class Stream : public testing::Test {
protected:
    Stream() {
        large.arrayctl({"import", "-"}, description());
        roundTrip(smisd.port(), get()); // the module loads the array
    }
    static std::string get() {
        return requestBytes(readFile(std::string(PAIRS) + "/GetHost.request"));
    }

    const Array large{Array::Empty()};
    Smisd smisd{large.state()};
};

TEST_F(Stream, IsWholeInChunksOfEitherKind) {
    for (const char* header : {"TE: trailers\r\n", ""}) {
        SlowClient client(smisd.port(), header);
        client.sayNoMore();
        const std::string answer = client.readAll();
        EXPECT_THAT(answer.substr(0, 300), HasSubstr("transfer-encoding: chunked\r\n"));
        EXPECT_THAT(answer.substr(answer.size() - 100), EndsWith("</CIM>\n\r\n0\r\n\r\n"));
        EXPECT_GT(answer.size(), hosts * std::size_t{600});
    }
}

TEST_F(Stream, IsNotHeldInMemory) {
#ifdef WITH_ADDRESS_SANITIZER
    GTEST_SKIP() << "AddressSanitizer keeps what was freed";
#endif
    const std::size_t before = peakOf(smisd.process().pid());
    SlowClient silent(smisd.port(), "");
    std::this_thread::sleep_for(std::chrono::seconds(1));
    SlowClient client(smisd.port(), "");
    client.sayNoMore();
    EXPECT_GT(client.readAll().size(), hosts * std::size_t{600});
    EXPECT_LT(peakOf(smisd.process().pid()) - before, 12'000'000U);
}

TEST_F(Stream, ToManySilentClientsKeepsNobodyElseWaiting) {
    std::list<SlowClient> silent;
    for (int i = 0; i < 20; ++i) {
        silent.emplace_back(smisd.port(), "");
        silent.back().readSome();
    }
    EXPECT_THAT(roundTrip(smisd.port(), get()), StartsWith("HTTP/1.1 200 OK\r\n"));
}

TEST_F(Stream, IsFinishedWhenTheServerIsStopped) {
    SlowClient client(smisd.port(), "TE: trailers\r\n");
    client.readSome();
    smisd.process().signal(SIGTERM);
    const auto refused = [this] {
        try {
            return roundTrip(smisd.port(), get()).empty();
        } catch (const boost::system::system_error&) {
            return true;
        }
    };
    while (!refused()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    const std::string answer = client.readAll();
    EXPECT_GT(answer.size(), hosts * std::size_t{600});
    EXPECT_THAT(answer.substr(answer.size() - 100), EndsWith("</CIM>\n\r\n0\r\n\r\n"));
    EXPECT_EQ(smisd.stop().status, 0);
}

TEST(StopTime, EndsAnswersThatNobodyReads) {
    const Array large{Array::Empty()};
    large.arrayctl({"import", "-"}, description());
    Smisd smisd(large.state(), {"--no-auth", "--stop-time", "1"});
    SlowClient silent(smisd.port(), "");
    silent.readSome();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(smisd.stop().status, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(8));
}

} // namespace
} // namespace wire
