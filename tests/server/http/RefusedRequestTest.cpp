#include "server/http/RefusedRequest.h"

#include <atomic>
#include <string>

#include <gmock/gmock.h>

#include "server/http/HttpServer.h"
#include "tests/server/http/HttpRequests.h"
#include "tests/server/http/TestServer.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

struct BadBytes {
    const char* why;
    std::string bytes;
    std::string response; // its beginning
};

const std::string head = "POST / HTTP/1.1\r\nHost: x\r\n";
const std::string badLength = "400 Bad Request\r\n"
                              "PGErrorDetail: Invalid%20Content-Length%20header%20detected\r\n";

// With at most 1000 bytes of headers and 1000 of body.
const BadBytes badBytes[] = {
    {"without length", head + "\r\n", "411 Length Required\r\n"},
    {"with a length that is no number", head + "Content-Length: abc\r\n\r\n", badLength},
    {"with a negative length", head + "Content-Length: -1\r\n\r\n", "400 Bad Request\r\n"},
    {"with two lengths", head + "Content-Length: 1\r\nContent-Length: 2\r\n\r\nab",
     "400 Bad Request\r\n"},
    {"with a length and chunks",
     head + "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n",
     "400 Bad Request\r\n"},
    {"with broken chunks", head + "Transfer-Encoding: chunked\r\n\r\nxyz\r\n",
     "400 Bad Request\r\n"},
    {"with too long a body", post(std::string(1001, 'x')), "413 Request Entity Too Large\r\n"},
    {"with the length of too long a body", head + "Content-Length: 99999999999\r\n\r\n",
     "413 Request Entity Too Large\r\n"},
    {"with too long a chunk", head + "Transfer-Encoding: chunked\r\n\r\nfffffff\r\nab",
     "413 Request Entity Too Large\r\n"},
    {"with too long headers", post("", "X: " + std::string(1000, 'x') + "\r\n"),
     "431 Request Header Fields Too Large\r\n"},
    {"that is no HTTP", "hello\r\n\r\n", "400 Bad Request\r\n"},
    {"with a header without colon", "POST / HTTP/1.1\r\nno colon\r\n\r\n", "400 Bad Request\r\n"},
};

// The response to bytes that nobody may come to handle.
std::string responseTo(const std::string& bytes, const HttpLimits& limits) {
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
    return all;
}

TEST(RefusedRequest, IsAnsweredAndEndsTheConnection) {
    HttpLimits limits;
    limits.headerBytes = 1000;
    limits.bodyBytes = 1000;
    for (const BadBytes& row : badBytes) {
        const std::string response = responseTo(row.bytes, limits);
        EXPECT_THAT(response, StartsWith("HTTP/1.1 " + row.response)) << "a request " << row.why;
        EXPECT_THAT(response, HasSubstr("Connection: close\r\n")) << "a request " << row.why;
    }
}

TEST(RefusedRequest, WithHeadersBeyondWhatTheLibraryHolds) {
    EXPECT_THAT(responseTo(post("", "X: " + std::string(70000, 'x') + "\r\n"), HttpLimits()),
                StartsWith("HTTP/1.1 431 Request Header Fields Too Large\r\n"));
}

struct MethodCase {
    const char* method;
    unsigned status; // 0: served
};

TEST(RefusedRequest, OfAnotherMethodThanPost) {
    const MethodCase cases[] = {{"POST", 0},     {"M-POST", 0},    {"GET", 404},  {"HEAD", 404},
                                {"DELETE", 400}, {"OPTIONS", 400}, {"FROB", 501}, {"post", 501}};
    for (const MethodCase& row : cases) {
        HttpRequest request = enumerateRequest();
        request.method = row.method;
        unsigned status = 0;
        try {
            checkHttpMethod(request);
        } catch (const BadRequest& refusal) {
            status = refusal.status();
        }
        EXPECT_EQ(status, row.status) << row.method;
    }
}

} // namespace
} // namespace smisd::test
