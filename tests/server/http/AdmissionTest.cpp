// Requests that HttpServer judges before it reads their bodies.
#include <condition_variable>
#include <deque>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

#include <gmock/gmock.h>

#include "server/http/HttpServer.h"
#include "tests/server/http/TestServer.h"

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

std::string refused(bool keepOpen) {
    return std::string("HTTP/1.1 401 Unauthorized\r\nContent-Length: 0\r\n") +
           (keepOpen ? "" : "Connection: close\r\n") + "\r\n";
}

// Accepts requests to /good.
void admitGood(HttpRequest head, const Decide& decide) {
    if (head.target == "/good") {
        accepting(echo)(std::move(head), decide);
    } else {
        decide({{}, refused, true});
    }
}

std::string head(const std::string& target, const std::string& length) {
    return "POST " + target + " HTTP/1.1\r\nHost: x\r\n" + length + "\r\n";
}

TEST(LongBody, IsNotReadWhenItIsNotWanted) {
    TestServer server({}, admitGood);
    TestClient client(server.port);
    client.send(head("/bad", "Content-Length: 10000000\r\n")); // and nothing of it
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 401 "));
}

TEST(LongBody, IsReadWhenItIsWanted) {
    TestServer server({}, admitGood);
    TestClient client(server.port);
    const std::string body(1'000'000, 'x');
    client.send(head("/good", "Content-Length: 1000000\r\n") + body);
    EXPECT_THAT(client.readUntil("x]"), HasSubstr("[" + body + "]"));
}

TEST(ShortBody, IsReadAndDroppedWhenItIsNotWanted) {
    TestServer server({}, admitGood);
    TestClient client(server.port);
    client.send(head("/bad", "Content-Length: 3\r\n") + "bad" +
                head("/good", "Content-Length: 4\r\n") + "good");
    const std::string all = client.readUntil("[good]");
    EXPECT_THAT(all, StartsWith(refused(true)));
    EXPECT_THAT(all, HasSubstr("[good]"));
}

// Decided later

// Keeps what is to be decided until the test decides.
class Undecided {
public:
    HttpAdmission admission() {
        return [this](HttpRequest head, Decide decide) {
            const std::lock_guard lock(_mutex);
            _waiting.emplace_back(std::move(head), std::move(decide));
            _changed.notify_all();
        };
    }
    // Waits for the next one and decides it.
    void decideOne() {
        std::unique_lock lock(_mutex);
        _changed.wait(lock, [this] { return !_waiting.empty(); });
        auto [head, decide] = std::move(_waiting.front());
        _waiting.pop_front();
        lock.unlock();
        admitGood(std::move(head), decide);
    }
    void awaitOne() {
        std::unique_lock lock(_mutex);
        _changed.wait(lock, [this] { return !_waiting.empty(); });
    }

    // What waits belongs to sessions of the server, which goes before this.
    void forgetAll() {
        const std::lock_guard lock(_mutex);
        _waiting.clear();
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    std::deque<std::pair<HttpRequest, Decide>> _waiting;
};

TEST(UndecidedRequest, KeepsNobodyWaiting) {
    Undecided undecided;
    TestServer server(
        {}, [&, decideLater = undecided.admission()](HttpRequest head, const Decide& decide) {
            head.header("X-Late") ? decideLater(std::move(head), decide)
                                  : admitGood(std::move(head), decide);
        });
    TestClient late(server.port);
    late.send(head("/good", "X-Late: yes\r\nContent-Length: 4\r\n") + "late");
    undecided.awaitOne();
    TestClient other(server.port);
    other.send(head("/good", "Content-Length: 5\r\n") + "other");
    EXPECT_THAT(other.readUntil("]"), HasSubstr("[other]"));
    undecided.decideOne();
    EXPECT_THAT(late.readUntil("]"), HasSubstr("[late]"));
}

TEST(UndecidedRequest, IsAnsweredWhenTheServerIsStopped) {
    Undecided undecided;
    TestServer server({}, undecided.admission());
    TestClient client(server.port);
    client.send(head("/good", "Content-Length: 1\r\n") + "x");
    undecided.awaitOne();
    server.server.stop(); // is carried out before what is decided after it
    undecided.decideOne();
    EXPECT_THAT(client.readAll(), HasSubstr("[x]"));
}

// What strangers may do

TEST(Stranger, IsSentAwayAfterTenRefusals) {
    TestServer server({}, admitGood);
    TestClient client(server.port);
    std::string requests;
    for (int i = 0; i < 30; ++i) {
        requests += head("/bad", "Content-Length: 3\r\n") + "bad";
    }
    client.send(requests);
    std::string expected;
    for (int i = 1; i <= 10; ++i) {
        expected += refused(i < 10);
    }
    EXPECT_EQ(client.readAll(), expected);
}

TEST(Stranger, BeginsAnewAfterAnAcceptedRequest) {
    TestServer server({}, admitGood);
    TestClient client(server.port);
    for (int i = 0; i < 30; ++i) {
        const bool isGood = i % 9 == 8;
        client.send(head(isGood ? "/good" : "/bad", "Content-Length: 1\r\n") + "x");
        EXPECT_THAT(client.readUntil(isGood ? "]" : "\r\n\r\n"),
                    StartsWith(isGood ? "HTTP/1.1 200" : "HTTP/1.1 401"));
    }
}

TEST(Stranger, WhoDoesNotReadIsCutOff) {
    TestServer server({}, [](const HttpRequest&, const Decide& decide) {
        decide({{}, [](bool) { return std::string(30'000'000, 'x'); }, true});
    });
    TestClient client(server.port);
    client.send(head("/bad", "Content-Length: 0\r\n"));
    while (server.server.connections() == 0) {
        std::this_thread::sleep_for(10ms);
    }
    for (int i = 0; i < 1000 && server.server.connections() > 0; ++i) {
        std::this_thread::sleep_for(10ms);
    }
    EXPECT_EQ(server.server.connections(), 0U);
}

TEST(Stranger, FromElsewhereTakesThePlaceOfOneOfMany) {
    HttpLimits limits;
    limits.connections = 64; // half of them strangers'
    limits.stopTime = 1s;    // nobody decides
    Undecided undecided;
    TestServer server(limits, [&, decideLater = undecided.admission()](HttpRequest request,
                                                                       const Decide& decide) {
        request.peer == "127.0.0.2" ? decideLater(std::move(request), decide)
                                    : admitGood(std::move(request), decide);
    });
    std::list<TestClient> many;
    for (int i = 0; i < 32; ++i) {
        many.emplace_back(server.port, "127.0.0.2")
            .send(head("/good", "Content-Length: 1\r\n") + "x");
        undecided.awaitOne();
    }
    TestClient oneMore(server.port, "127.0.0.2");
    EXPECT_THAT(oneMore.readAll(),
                StartsWith("HTTP/1.1 503 Service Unavailable\r\nRetry-After: 1\r\n"));
    EXPECT_EQ(server.server.refusedConnections(), 1U);
    for (int i = 0; i < 40; ++i) { // a user's connections, who is no stranger
        TestClient& good = many.emplace_back(server.port, "127.0.1.1");
        good.send(head("/good", "Content-Length: 1\r\n") + "y");
        EXPECT_THAT(good.readUntil("]"), HasSubstr("[y]"));
        if (i >= 30) {
            many.pop_back();
        }
    }
    EXPECT_EQ(server.server.refusedConnections(), 1U);
    server.stop();
    undecided.forgetAll();
}

// A page for monitoring, say: it has a worker of its own.
TEST(Stranger, KeepsNoWorkerFromUsers) {
    Gate gate;
    HttpLimits limits;
    limits.workers = 1;
    TestServer server(limits, [&](HttpRequest head, const Decide& decide) {
        if (head.target == "/good") {
            accepting(echo)(std::move(head), decide);
            return;
        }
        decide({[&gate](const std::string& body, ResponseChannel& channel) {
            gate.wait();
            channel.send(answer("<" + body + ">"));
            return false;
        }});
    });
    TestClient strangers[] = {TestClient(server.port), TestClient(server.port)};
    for (TestClient& stranger : strangers) {
        stranger.send(head("/page", "Content-Length: 1\r\n") + "x");
    }
    gate.awaitWaiting(1);
    TestClient user(server.port);
    user.send(head("/good", "Content-Length: 1\r\n") + "y");
    EXPECT_THAT(user.readUntil("[y]"), HasSubstr("[y]"));
    gate.open();
    for (TestClient& stranger : strangers) {
        EXPECT_THAT(stranger.readAll(), HasSubstr("<x>"));
    }
}

TEST(ChunkedBody, IsNotReadWhenItIsNotWanted) {
    TestServer server({}, admitGood);
    TestClient client(server.port);
    client.send(head("/bad", "Transfer-Encoding: chunked\r\n"));
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 401 "));
}

TEST(ExpectedBody, IsNotAskedForWhenItIsNotWanted) {
    TestServer server({}, admitGood);
    TestClient client(server.port);
    client.send(head("/bad", "Content-Length: 5\r\nExpect: 100-continue\r\n"));
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 401 "));
}

} // namespace
} // namespace smisd::test
