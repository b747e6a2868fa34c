// Requests that HttpServer judges before it reads their bodies.
#include <gmock/gmock.h>

#include "server/http/HttpServer.h"
#include "tests/server/http/TestServer.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

// Wants the bodies of requests to /good.
bool admitGood(const HttpRequest& head, ResponseChannel& channel) {
    if (head.target == "/good") {
        return true;
    }
    channel.send("HTTP/1.1 401 Unauthorized\r\nContent-Length: 0\r\n\r\n");
    return false;
}

std::string head(const std::string& target, const std::string& length) {
    return "POST " + target + " HTTP/1.1\r\nHost: x\r\n" + length + "\r\n";
}

TEST(LongBody, IsNotReadWhenItIsNotWanted) {
    TestServer server(echo, {}, admitGood);
    TestClient client(server.port);
    client.send(head("/bad", "Content-Length: 10000000\r\n")); // and nothing of it
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 401 "));
}

TEST(LongBody, IsReadWhenItIsWanted) {
    TestServer server(echo, {}, admitGood);
    TestClient client(server.port);
    const std::string body(1'000'000, 'x');
    client.send(head("/good", "Content-Length: 1000000\r\n") + body);
    EXPECT_THAT(client.readUntil("x]"), HasSubstr("[" + body + "]"));
    client.send(post("y")); // short, so it is not asked about
    EXPECT_THAT(client.readUntil("[y]"), HasSubstr("[y]"));
}

TEST(ChunkedBody, IsNotReadWhenItIsNotWanted) {
    TestServer server(echo, {}, admitGood);
    TestClient client(server.port);
    client.send(head("/bad", "Transfer-Encoding: chunked\r\n"));
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 401 "));
}

TEST(ExpectedBody, IsNotAskedForWhenItIsNotWanted) {
    TestServer server(echo, {}, admitGood);
    TestClient client(server.port);
    client.send(head("/bad", "Content-Length: 5\r\nExpect: 100-continue\r\n"));
    EXPECT_THAT(client.readAll(), StartsWith("HTTP/1.1 401 "));
}

} // namespace
} // namespace smisd::test
