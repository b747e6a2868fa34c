#include "server/http/HttpServer.h"

#include "tests/server/http/TestServer.h"

#include <gmock/gmock.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <stdexcept>

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

std::string answer(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

// Answers with the body of the request between brackets.
bool echo(const HttpRequest& request, ResponseChannel& channel) {
    channel.send(answer("[" + request.body + "]"));
    return request.keepAlive;
}

// Lets handlers wait until the test lets them go on.
class Gate {
public:
    void wait() {
        std::unique_lock lock(_mutex);
        ++_waiting;
        _changed.notify_all();
        _changed.wait(lock, [this] { return _open; });
    }
    void awaitWaiting(int count) {
        std::unique_lock lock(_mutex);
        _changed.wait(lock, [&] { return _waiting >= count; });
    }
    void open() {
        const std::lock_guard lock(_mutex);
        _open = true;
        _changed.notify_all();
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    int _waiting = 0;
    bool _open = false;
};

TEST(HttpServer, PassesTheRequestOn) {
    HttpRequest received;
    TestServer server([&](HttpRequest request, ResponseChannel& channel) {
        received = request;
        return echo(request, channel);
    });
    TestClient client(server.port);
    client.send("M-POST /cimom HTTP/1.1\r\nHost: x\r\nContent-Length: 2\r\n48-CIMMethod:  A b \r\n"
                "\r\nhi");
    EXPECT_THAT(client.readUntil("]"), HasSubstr("[hi]"));
    EXPECT_EQ(received.method, "M-POST");
    EXPECT_EQ(received.target, "/cimom");
    EXPECT_EQ(received.version, 11U);
    EXPECT_EQ(received.peer, "127.0.0.1");
    EXPECT_EQ(received.header("CIMMethod"), "A b");
}

TEST(HttpServer, KeepsTheConnectionOpen) {
    TestServer server(echo);
    TestClient client(server.port);
    for (const char* body : {"1", "2", "3"}) {
        client.send(post(body));
        EXPECT_THAT(client.readUntil("]"), HasSubstr(std::string("[") + body + "]"));
    }
}

TEST(HttpServer, AnswersPipelinedRequestsInOrder) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send(post("1") + post("2") + post("3", "Connection: close\r\n"));
    const std::string all = client.readAll();
    EXPECT_LT(all.find("[1]"), all.find("[2]"));
    EXPECT_LT(all.find("[2]"), all.find("[3]"));
    EXPECT_THAT(all, HasSubstr("[3]"));
}

TEST(HttpServer, ClosesWhenTheClientWantsIt) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send(post("1", "Connection: close\r\n"));
    EXPECT_THAT(client.readAll(), HasSubstr("[1]"));
    TestClient old(server.port);
    old.send("POST / HTTP/1.0\r\nContent-Length: 1\r\n\r\n2");
    EXPECT_THAT(old.readAll(), HasSubstr("[2]"));
}

TEST(HttpServer, TakesAChunkedBody) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send("POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n"
                "2\r\nab\r\n1\r\nc\r\n0\r\n\r\n");
    EXPECT_THAT(client.readUntil("]"), HasSubstr("[abc]"));
}

TEST(HttpServer, AsksForTheBodyThatTheClientHoldsBack) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 2\r\nExpect: 100-continue\r\n\r\n");
    EXPECT_EQ(client.readUntil("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
    client.send("hi");
    EXPECT_THAT(client.readUntil("]"), HasSubstr("[hi]"));
}

TEST(HttpServer, SendsALongResponseWhole) {
    const std::string body(5'000'000, 'x');
    TestServer server([&](const HttpRequest&, ResponseChannel& channel) {
        channel.send(answer(body));
        return false;
    });
    TestClient client(server.port);
    client.send(post(""));
    EXPECT_EQ(client.readAll().size(), answer(body).size());
}

TEST(HttpServer, DelaysAResponse) {
    TestServer server([](const HttpRequest&, ResponseChannel& channel) {
        channel.delay(300ms);
        channel.send(answer("late"));
        return false;
    });
    TestClient client(server.port);
    const auto start = std::chrono::steady_clock::now();
    client.send(post(""));
    EXPECT_THAT(client.readAll(), HasSubstr("late"));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 300ms);
}

// Refused requests

std::string refusalOf(const std::string& bytes, const HttpLimits& limits = {}) {
    std::atomic<int> handled{0};
    TestServer server(
        [&](const HttpRequest& request, ResponseChannel& channel) {
            ++handled;
            return echo(request, channel);
        },
        limits);
    TestClient client(server.port);
    client.send(bytes);
    const std::string all = client.readAll();
    EXPECT_EQ(handled, 0);
    EXPECT_THAT(all, HasSubstr("Connection: close\r\n"));
    return all;
}

TEST(RefusedRequest, WithoutLength) {
    EXPECT_THAT(refusalOf("POST / HTTP/1.1\r\nHost: x\r\n\r\n"),
                StartsWith("HTTP/1.1 411 Length Required\r\n"));
}

TEST(RefusedRequest, WithBadLength) {
    EXPECT_THAT(refusalOf("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: abc\r\n\r\n"),
                StartsWith("HTTP/1.1 400 Bad Request\r\n"
                           "PGErrorDetail: Invalid%20Content-Length%20header%20detected\r\n"));
    EXPECT_THAT(refusalOf("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: -1\r\n\r\n"),
                StartsWith("HTTP/1.1 400 Bad Request\r\n"));
}

TEST(RefusedRequest, WithTwoLengths) {
    EXPECT_THAT(
        refusalOf("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\nab"),
        StartsWith("HTTP/1.1 400 Bad Request\r\n"));
    EXPECT_THAT(refusalOf("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 1\r\n"
                          "Transfer-Encoding: chunked\r\n\r\n0\r\n\r\n"),
                StartsWith("HTTP/1.1 400 Bad Request\r\n"));
}

TEST(RefusedRequest, WithBrokenChunks) {
    EXPECT_THAT(
        refusalOf("POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\nxyz\r\n"),
        StartsWith("HTTP/1.1 400 Bad Request\r\n"));
}

TEST(RefusedRequest, WithTooMuchBody) {
    HttpLimits limits;
    limits.bodyBytes = 1000;
    EXPECT_THAT(refusalOf(post(std::string(1001, 'x')), limits),
                StartsWith("HTTP/1.1 413 Request Entity Too Large\r\n"));
    EXPECT_THAT(refusalOf("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 99999999999\r\n\r\n"),
                StartsWith("HTTP/1.1 413 Request Entity Too Large\r\n"));
    EXPECT_THAT(refusalOf("POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: chunked\r\n\r\n"
                          "fffffff\r\nab",
                          limits),
                StartsWith("HTTP/1.1 413 Request Entity Too Large\r\n"));
}

TEST(RefusedRequest, WithTooLongHeaders) {
    HttpLimits limits;
    limits.headerBytes = 1000;
    EXPECT_THAT(refusalOf(post("", "X: " + std::string(1000, 'x') + "\r\n"), limits),
                StartsWith("HTTP/1.1 431 Request Header Fields Too Large\r\n"));
}

TEST(RefusedRequest, WithHeadersBeyondWhatTheLibraryHolds) {
    EXPECT_THAT(refusalOf(post("", "X: " + std::string(70000, 'x') + "\r\n")),
                StartsWith("HTTP/1.1 431 Request Header Fields Too Large\r\n"));
}

TEST(HttpServer, TakesHeadersUpToTheLimit) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send(post("x", "X: " + std::string(60000, 'x') + "\r\n"));
    EXPECT_THAT(client.readUntil("]"), HasSubstr("[x]"));
}

TEST(RefusedRequest, ThatIsNoHttp) {
    EXPECT_THAT(refusalOf("hello\r\n\r\n"), StartsWith("HTTP/1.1 400 Bad Request\r\n"));
    EXPECT_THAT(refusalOf("POST / HTTP/1.1\r\nno colon\r\n\r\n"),
                StartsWith("HTTP/1.1 400 Bad Request\r\n"));
}

// Slow, silent and vanishing clients

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

// Limits and the end

TEST(HttpServer, RefusesConnectionsBeyondTheLimit) {
    HttpLimits limits;
    limits.connections = 2;
    TestServer server(echo, limits);
    TestClient one(server.port);
    TestClient two(server.port);
    one.send(post("1"));
    two.send(post("2"));
    one.readUntil("]");
    two.readUntil("]");
    TestClient three(server.port);
    EXPECT_THAT(three.readAll(), StartsWith("HTTP/1.1 503 Service Unavailable\r\n"));
    one.send(post("x"));
    EXPECT_THAT(one.readUntil("]"), HasSubstr("[x]"));
}

TEST(HttpServer, RunsOperationsSideBySide) {
    HttpLimits limits;
    limits.workers = 3;
    Gate gate;
    TestServer server(
        [&](const HttpRequest& request, ResponseChannel& channel) {
            gate.wait();
            return echo(request, channel);
        },
        limits);
    TestClient clients[] = {TestClient(server.port), TestClient(server.port),
                            TestClient(server.port)};
    for (TestClient& client : clients) {
        client.send(post("x"));
    }
    gate.awaitWaiting(3); // hangs when one waits for another
    gate.open();
    for (TestClient& client : clients) {
        EXPECT_THAT(client.readUntil("]"), HasSubstr("[x]"));
    }
}

TEST(HttpServer, StopAnswersWhatItHasReceived) {
    Gate gate;
    TestServer server([&](const HttpRequest& request, ResponseChannel& channel) {
        gate.wait();
        return echo(request, channel);
    });
    TestClient busy(server.port);
    TestClient idle(server.port);
    busy.send(post("x"));
    gate.awaitWaiting(1);
    std::thread stopping([&] { server.stop(); });
    EXPECT_EQ(idle.readAll(), "");
    EXPECT_THROW(TestClient{server.port}, boost::system::system_error);
    gate.open();
    EXPECT_THAT(busy.readAll(), HasSubstr("[x]"));
    stopping.join();
}

TEST(HttpServer, BusyPortIsNamed) {
    TestServer server(echo);
    HttpServer second({}, echo);
    try {
        second.listen({"127.0.0.1", server.port});
        FAIL() << "listens on a busy port";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(),
                    HasSubstr("cannot listen on 127.0.0.1:" + std::to_string(server.port) +
                              ": Address already in use"));
    }
}

TEST(HttpServer, HandlerThatFailsEndsItsConnectionOnly) {
    TestServer server([](const HttpRequest& request, ResponseChannel& channel) {
        if (request.body == "bad") {
            throw std::runtime_error("broken");
        }
        return echo(request, channel);
    });
    TestClient bad(server.port);
    TestClient good(server.port);
    bad.send(post("bad"));
    EXPECT_EQ(bad.readAll(), "");
    good.send(post("x"));
    EXPECT_THAT(good.readUntil("]"), HasSubstr("[x]"));
}

} // namespace
} // namespace smisd::test
