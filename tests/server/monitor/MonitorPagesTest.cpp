#include "server/monitor/MonitorPages.h"

#include <functional>
#include <stdexcept>

#include <Pegasus/Common/Exception.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Pegasus;
using testing::HasSubstr;
using testing::StartsWith;

namespace smisd::test {
namespace {

HttpRequest get(const std::string& target, const std::string& peer) {
    HttpRequest request;
    request.method = "GET";
    request.target = target;
    request.peer = peer;
    return request;
}

struct Channel : ResponseChannel {
    std::string bytes;
    void send(std::string more) override { bytes += more; }
};

TEST(MonitorPages, AreForThisMachineOnly) {
    for (const char* target : {"/metrics", "/healthz"}) {
        EXPECT_TRUE(MonitorPages::serves(get(target, "127.0.0.1")));
        EXPECT_TRUE(MonitorPages::serves(get(target, "::1")));
        EXPECT_FALSE(MonitorPages::serves(get(target, "192.0.2.1")));
        EXPECT_FALSE(MonitorPages::serves(get(target, "2001:db8::1")));
        EXPECT_FALSE(MonitorPages::serves(get(target, "")));
    }
}

TEST(MonitorPages, LeaveOtherRequestsToOthers) {
    HttpRequest post = get("/metrics", "127.0.0.1");
    post.method = "POST";
    EXPECT_FALSE(MonitorPages::serves(post));
    HttpRequest withBody = get("/metrics", "127.0.0.1");
    withBody.add("Content-Length", "1");
    EXPECT_FALSE(MonitorPages::serves(withBody));
    HttpRequest inChunks = get("/metrics", "127.0.0.1");
    inChunks.add("Transfer-Encoding", "chunked");
    EXPECT_FALSE(MonitorPages::serves(inChunks));
    for (const char* target : {"/", "/metrics/", "/Metrics", "/healthz?x", "/cimom"}) {
        EXPECT_FALSE(MonitorPages::serves(get(target, "127.0.0.1"))) << target;
    }
}

TEST(MonitorPages, ShowMetricsAndHealth) {
    std::string problem;
    const MonitorPages pages([] { return "a 1\n"; }, [&] { return problem; });
    const auto answerTo = [&](const char* target) {
        Channel channel;
        EXPECT_FALSE(pages.handle(get(target, "::1"), channel));
        return channel.bytes;
    };
    EXPECT_EQ(answerTo("/metrics"), "HTTP/1.1 200 OK\r\n"
                                    "Content-Type: text/plain; version=0.0.4; charset=utf-8\r\n"
                                    "Content-Length: 4\r\nConnection: close\r\n\r\na 1\n");
    EXPECT_THAT(answerTo("/healthz"), StartsWith("HTTP/1.1 200 OK\r\n"));
    problem = "disk on fire";
    EXPECT_THAT(answerTo("/healthz"), StartsWith("HTTP/1.1 503 Service Unavailable\r\n"));
    EXPECT_THAT(answerTo("/healthz"), HasSubstr("\r\n\r\ndisk on fire\n"));
}

struct Inner : Dispatcher {
    std::function<void(ResultSink&)> act;
    void dispatch(const Operation&, const RequestContext&, ResultSink& sink) override { act(sink); }
};

TEST(Health, IsJudgedByTheFirstResult) {
    Inner inner;
    inner.act = [](ResultSink&) {};
    EXPECT_EQ(whyNotHealthy(inner), "");
    int results = 0;
    inner.act = [&](ResultSink& sink) {
        for (; results < 1000; ++results) {
            sink.instanceName(CIMObjectPath());
        }
    };
    EXPECT_EQ(whyNotHealthy(inner), "");
    EXPECT_EQ(results, 0);
    inner.act = [](ResultSink&) { throw CIMException(CIM_ERR_FAILED, "no array"); };
    EXPECT_EQ(whyNotHealthy(inner), "no array");
    inner.act = [](ResultSink&) { throw std::runtime_error("broken"); };
    EXPECT_EQ(whyNotHealthy(inner), "broken");
}

} // namespace
} // namespace smisd::test
