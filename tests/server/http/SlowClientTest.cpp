// Slow, silent and vanishing clients of HttpServer.
#include <atomic>

#include <gmock/gmock.h>

#include "server/http/HttpServer.h"
#include "tests/server/http/TestServer.h"

using namespace std::chrono_literals;
using testing::HasSubstr;

namespace smisd::test {
namespace {

TEST(SlowClient, IsCutOffWhenTheRequestTakesTooLong) {
    HttpLimits limits;
    limits.requestTime = 1s;
    TestServer server(echo, limits);
    TestClient client(server.port);
    client.send("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 5\r\n\r\nab");
    EXPECT_EQ(client.readAll(), "");
}

TEST(SlowClient, IsCutOffWhenItSaysNothing) {
    HttpLimits limits;
    limits.idleTime = 1s;
    TestServer server(echo, limits);
    TestClient client(server.port);
    EXPECT_EQ(client.readAll(), "");
}

TEST(SlowClient, CostsOthersNothing) {
    HttpLimits limits;
    limits.workers = 1;
    const std::string body(20'000'000, 'x');
    TestServer server(
        [&](const HttpRequest& request, ResponseChannel& channel) {
            channel.send(answer(request.body == "much" ? body : "little"));
            return true;
        },
        limits);
    TestClient slow(server.port);
    slow.send(post("much")); // and reads nothing
    TestClient half(server.port);
    half.send("POST / HTTP/1.1\r\nHost: x\r\nContent-Le");
    for (int i = 0; i < 3; ++i) {
        TestClient quick(server.port);
        quick.send(post("x"));
        EXPECT_THAT(quick.readUntil("little"), HasSubstr("little"));
    }
}

// Sends pieces without end, until the client is lost.
bool flood(std::atomic<int>& pieces, ResponseChannel& channel) {
    const std::string piece(10'000, 'x');
    for (;;) {
        channel.send(piece);
        ++pieces;
    }
}

// Once it no longer changes.
int settled(const std::atomic<int>& count) {
    int before = -1;
    while (before != count) {
        before = count;
        std::this_thread::sleep_for(300ms);
    }
    return before;
}

TEST(SlowClient, HoldsItsAnswerBack) {
    HttpLimits limits;
    limits.queueBytes = 100'000;
    std::atomic<int> pieces{0};
    TestServer server(
        [&](const HttpRequest&, ResponseChannel& channel) { return flood(pieces, channel); },
        limits);
    TestClient client(server.port);
    client.send(post("x"));
    const int first = settled(pieces);
    EXPECT_LT(first, 1000); // what the sockets hold, and the limit
    for (int i = 0; i < 1000; ++i) {
        client.readUntil(std::string(10'000, 'x'));
    }
    EXPECT_GT(settled(pieces), first + 100);
    client.socket().close();
}

TEST(SlowClient, OccupiesNoWorker) {
    HttpLimits limits;
    limits.workers = 1;
    limits.queueBytes = 100'000;
    std::atomic<int> pieces{0};
    TestServer server(
        [&](const HttpRequest& request, ResponseChannel& channel) {
            return request.body == "much" ? flood(pieces, channel) : echo(request, channel);
        },
        limits);
    TestClient slow(server.port);
    slow.send(post("much"));
    TestClient slower(server.port);
    slower.send(post("much"));
    settled(pieces);
    TestClient quick(server.port);
    quick.send(post("x"));
    EXPECT_THAT(quick.readUntil("[x]"), HasSubstr("[x]"));
    slow.socket().close();
    slower.socket().close();
}

TEST(SlowClient, IsCutOffWhenItTakesNothing) {
    HttpLimits limits;
    limits.queueBytes = 100'000;
    limits.sendTime = 1s;
    std::atomic<int> pieces{0};
    std::atomic<bool> lost{false};
    TestServer server(
        [&](const HttpRequest&, ResponseChannel& channel) {
            try {
                return flood(pieces, channel);
            } catch (const ConnectionLost&) {
                lost = true;
                throw;
            }
        },
        limits);
    TestClient client(server.port);
    client.send(post("x"));
    settled(pieces);
    std::this_thread::sleep_for(1500ms);
    EXPECT_TRUE(lost);
}

TEST(SlowClient, HoldsUpTheEndForAWhileOnly) {
    HttpLimits limits;
    limits.stopTime = 1s;
    std::atomic<int> pieces{0};
    TestServer server(
        [&](const HttpRequest&, ResponseChannel& channel) { return flood(pieces, channel); },
        limits);
    TestClient client(server.port);
    client.send(post("x"));
    settled(pieces);
    const auto start = std::chrono::steady_clock::now();
    server.stop();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

// More connections than are allowed

TEST(IdleClient, MakesRoomForAnother) {
    HttpLimits limits;
    limits.connections = 3;
    TestServer server(echo, limits);
    TestClient oldest(server.port);
    TestClient second(server.port);
    TestClient third(server.port);
    for (TestClient* client : {&oldest, &second, &third}) {
        client->send(post("x"));
        client->readUntil("[x]");
    }
    std::this_thread::sleep_for(600ms);
    TestClient another(server.port);
    another.send(post("y"));
    EXPECT_THAT(another.readUntil("[y]"), HasSubstr("[y]"));
    EXPECT_EQ(oldest.readAll(), "");
    second.send(post("z"));
    EXPECT_THAT(second.readUntil("[z]"), HasSubstr("[z]"));
}

TEST(SlowClient, MakesRoomWhenNoneIsIdle) {
    HttpLimits limits;
    limits.connections = 1;
    TestServer server(echo, limits);
    TestClient slow(server.port);
    slow.send("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 5\r\n\r\nab");
    std::this_thread::sleep_for(600ms);
    TestClient another(server.port);
    another.send(post("y"));
    EXPECT_THAT(another.readUntil("[y]"), HasSubstr("[y]"));
    EXPECT_EQ(slow.readAll(), "");
}

TEST(VanishedClient, EndsItsAnswer) {
    Gate gate;
    std::atomic<bool> lost{false};
    TestServer server([&](const HttpRequest&, ResponseChannel& channel) {
        gate.wait();
        const std::string piece(1'000'000, 'x');
        try {
            for (int i = 0; i < 1000; ++i) {
                channel.send(piece);
                std::this_thread::sleep_for(1ms);
            }
        } catch (const ConnectionLost&) {
            lost = true;
            throw;
        }
        return true;
    });
    {
        TestClient client(server.port);
        client.send(post("x"));
        gate.awaitWaiting(1);
        client.socket().set_option(boost::asio::socket_base::linger(true, 0));
    }
    gate.open();
    server.stop();
    EXPECT_TRUE(lost);
}

} // namespace
} // namespace smisd::test
