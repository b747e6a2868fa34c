// What becomes of requests for which there is no memory.
#include <atomic>

#include <gmock/gmock.h>

#include "server/http/HttpServer.h"
#include "tests/server/http/TestServer.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

HttpLimits limitsWith(std::size_t memory) {
    HttpLimits limits;
    limits.memory = std::make_shared<MemoryBudget>(memory);
    return limits;
}

TEST(Memory, ABodyThatThereIsNoneForIsRefused) {
    const HttpLimits limits = limitsWith(1'000'000);
    TestServer server(echo, limits);
    TestClient client(server.port);
    client.send("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 5000000\r\n\r\n" +
                std::string(2'000'000, 'x'));
    const std::string response = client.readUntil("\r\n\r\n");
    EXPECT_THAT(response, StartsWith("HTTP/1.1 503 "));
    EXPECT_THAT(response, HasSubstr("\r\nRetry-After: "));
}

TEST(Memory, OfABodyIsHeldAsItArrivesAndUntilTheRequestIsAnswered) {
    const HttpLimits limits = limitsWith(10'000'000);
    Gate begun;
    TestServer server(
        [&](const HttpRequest& request, ResponseChannel& channel) {
            begun.wait();
            return echo(request, channel);
        },
        limits);
    const std::string body(500'000, 'x');
    TestClient client(server.port);
    client.send(post(body));
    begun.awaitWaiting(1);
    EXPECT_GE(limits.memory->used(), body.size());
    EXPECT_LT(limits.memory->used(), 2 * body.size());
    begun.open();
    EXPECT_THAT(client.readUntil("]"), HasSubstr("xxx]"));
    TestClient next(server.port);
    next.send(post("x"));
    next.readUntil("]"); // by now the first one is forgotten
    EXPECT_LT(limits.memory->used(), body.size());
}

TEST(Memory, WhoTakesNothingOfAnAnswerIsEndedWhenItIsNeeded) {
    HttpLimits limits = limitsWith(2'000'000);
    limits.queueBytes = 10'000'000;
    std::atomic<bool> lost{false};
    TestServer server(
        [&](const HttpRequest& request, ResponseChannel& channel) {
            channel.holdIn(MemoryBudget::Reservation(*limits.memory, ""));
            const std::string piece(100'000, 'x');
            try {
                for (int i = 0; i < (request.body == "much" ? 1'000'000 : 1); ++i) {
                    channel.send(piece);
                }
            } catch (const ConnectionLost&) {
                lost = true;
                throw;
            }
            return false;
        },
        limits);
    TestClient silent(server.port);
    silent.send(post("much"));
    for (int i = 0; i < 300 && !lost; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    EXPECT_TRUE(lost);
    TestClient other(server.port);
    other.send(post("little"));
    EXPECT_EQ(other.readAll().size(), 100'000U);
}

} // namespace
} // namespace smisd::test
