#include "server/http/HttpServer.h"

#include <atomic>
#include <csignal>
#include <stdexcept>

#include <gmock/gmock.h>

#include "tests/server/http/TestServer.h"

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

TEST(HttpServer, PassesTheRequestOn) {
    HttpRequest received;
    TestServer server([&](const HttpRequest& request, ResponseChannel& channel) {
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

TEST(HttpServer, TellsOfAReload) {
    HttpServer server({}, accepting(echo));
    server.listen({"127.0.0.1", 0});
    std::atomic<int> calls{0};
    server.onReload([&] {
        ++calls;
        server.stop();
    });
    raise(SIGHUP); // is heeded once it runs
    server.run();
    EXPECT_EQ(calls, 1);
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

TEST(HttpServer, TakesHeadersUpToTheLimit) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send(post("x", "X: " + std::string(60000, 'x') + "\r\n"));
    EXPECT_THAT(client.readUntil("]"), HasSubstr("[x]"));
}

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
    HttpServer second({}, accepting(echo));
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
        if (request.body == "worse") {
            throw 5; // no std::exception, as Pegasus' are none
        }
        return echo(request, channel);
    });
    for (const char* body : {"bad", "worse"}) {
        TestClient bad(server.port);
        bad.send(post(body));
        EXPECT_EQ(bad.readAll(), "");
    }
    TestClient good(server.port);
    good.send(post("x"));
    EXPECT_THAT(good.readUntil("]"), HasSubstr("[x]"));
}

TEST(HttpServer, PassesOverEmptyLinesBetweenRequests) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send("\r\n");
    client.send("\r\n" + post("1") + "\r\n\r\n" + post("2"));
    EXPECT_THAT(client.readUntil("[1]"), HasSubstr("[1]"));
    EXPECT_THAT(client.readUntil("[2]"), HasSubstr("[2]"));
}

TEST(HttpServer, MakesOneHeaderOfSeveral) {
    TestServer server([](const HttpRequest& request, ResponseChannel& channel) {
        channel.send(answer(std::string(request.header("x-a").value_or("none"))));
        return true;
    });
    TestClient client(server.port);
    client.send(post("", "X-A: 1\r\nX-B: 2\r\nx-a: 3\r\n"));
    EXPECT_THAT(client.readUntil("1, 3"), HasSubstr("\r\n\r\n1, 3"));
}

TEST(HttpServer, RefusesEncodingsThatItDoesNotKnow) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send("POST / HTTP/1.1\r\nHost: x\r\nTransfer-Encoding: gzip\r\n\r\nx");
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 501 Not Implemented\r\n"));
}

TEST(HttpServer, RefusesAListOfLengths) {
    TestServer server(echo);
    TestClient client(server.port);
    client.send("POST / HTTP/1.1\r\nHost: x\r\nContent-Length: 1, 1\r\n\r\nx");
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 400 Bad Request\r\n"));
}

} // namespace
} // namespace smisd::test
