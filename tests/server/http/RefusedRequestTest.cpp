// Requests that HttpServer refuses before anybody handles them.
#include <atomic>

#include <gmock/gmock.h>

#include "server/http/HttpServer.h"
#include "tests/server/http/TestServer.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

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

TEST(RefusedRequest, ThatIsNoHttp) {
    EXPECT_THAT(refusalOf("hello\r\n\r\n"), StartsWith("HTTP/1.1 400 Bad Request\r\n"));
    EXPECT_THAT(refusalOf("POST / HTTP/1.1\r\nno colon\r\n\r\n"),
                StartsWith("HTTP/1.1 400 Bad Request\r\n"));
}

} // namespace
} // namespace smisd::test
