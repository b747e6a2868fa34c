// Slow, silent and vanishing clients of HttpServer.
#include "server/http/HttpServer.h"

#include "tests/server/http/TestServer.h"

#include <gmock/gmock.h>

#include <atomic>

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
