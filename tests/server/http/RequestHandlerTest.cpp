#include "server/http/RequestHandler.h"

#include <functional>
#include <stdexcept>

#include <Pegasus/Common/Exception.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/server/http/HttpRequests.h"

using namespace Pegasus;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace smisd::test {
namespace {

struct FakeDispatcher : Dispatcher {
    std::function<void(ResultSink&)> answer = [](ResultSink&) {};
    int calls = 0;
    RequestContext context;
    Operation operation;

    void dispatch(const Operation& received, const RequestContext& receivedContext,
                  ResultSink& sink) override {
        ++calls;
        operation = received;
        context = receivedContext;
        answer(sink);
    }
};

struct FakeAuthenticator : Authenticator {
    std::optional<User> userOf(const LoginAttempt& attempt) override {
        address = attempt.address;
        if (attempt.credentials == "Basic slow") {
            attempt.wait(std::chrono::seconds(3));
        }
        return attempt.credentials == "Basic good" ? std::optional<User>({"alice", Role::reader})
                                                   : std::nullopt;
    }
    std::string address;
};

struct Channel : ResponseChannel {
    std::string bytes;
    int sends = 0;
    std::chrono::milliseconds waited{0};
    bool lost = false;

    void send(std::string more) override {
        if (lost) {
            throw ConnectionLost();
        }
        bytes += more;
        ++sends;
    }
    void wait(std::chrono::milliseconds time) override { waited += time; }
};

CIMObjectPath path() {
    return CIMObjectPath("", CIMNamespaceName(), CIMName("C"));
}

class HandledRequest : public testing::Test {
protected:
    FakeDispatcher dispatcher;
    FakeAuthenticator authenticator;
    Channel channel;
    Authenticator* checkedBy = nullptr;

    bool handle(const HttpRequest& request) { return handler().handle(request, channel); }
    RequestHandler handler() { return RequestHandler(dispatcher, checkedBy, "array1", limits); }

    static constexpr size_t answerBytes = 100'000;

    HttpLimits limits = [] {
        HttpLimits changed;
        changed.queueBytes = answerBytes;
        return changed;
    }();

    static void deliver(ResultSink& sink, int count) {
        for (int i = 0; i < count; ++i) {
            sink.instanceName(path());
        }
    }
};

TEST_F(HandledRequest, IsAnsweredWithTheResults) {
    dispatcher.answer = [](ResultSink& sink) { sink.instanceName(path()); };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(channel.bytes, HasSubstr("<INSTANCENAME CLASSNAME=\"C\">"));
    EXPECT_THAT(channel.bytes, HasSubstr("MESSAGE ID=\"7\""));
    EXPECT_EQ(channel.sends, 1);
    const auto& operation = std::get<EnumerateInstanceNames>(dispatcher.operation);
    EXPECT_TRUE(operation.nameSpace.equal(CIMNamespaceName("root")));
}

TEST_F(HandledRequest, HasItsLength) {
    handle(enumerateRequest());
    const size_t head = channel.bytes.find("\r\n\r\n") + 4;
    char expected[64];
    std::snprintf(expected, sizeof(expected), "content-length: %010zu\r\n",
                  channel.bytes.size() - head);
    EXPECT_THAT(channel.bytes, HasSubstr(expected));
}

TEST_F(HandledRequest, PassesUserAddressAndLanguages) {
    checkedBy = &authenticator;
    HttpRequest request = with(enumerateRequest(), "Authorization", "Basic good");
    request = with(with(request, "Accept-Language", "de"), "Content-Language", "en");
    request.peer = "192.0.2.7";
    handle(request);
    EXPECT_EQ(dispatcher.context.role, Role::reader);
    EXPECT_EQ(dispatcher.context.address, "192.0.2.7");
    EXPECT_EQ(authenticator.address, "192.0.2.7");
    EXPECT_TRUE(dispatcher.context.userName == String("alice"));
    EXPECT_TRUE(dispatcher.context.acceptLanguage == String("de"));
    EXPECT_TRUE(dispatcher.context.contentLanguage == String("en"));
}

TEST_F(HandledRequest, WithoutAuthenticationHasNoUser) {
    handle(with(enumerateRequest(), "Authorization", "Basic good"));
    EXPECT_TRUE(dispatcher.context.userName == String());
    EXPECT_EQ(dispatcher.context.role, Role::administrator);
    EXPECT_EQ(dispatcher.calls, 1);
}

TEST_F(HandledRequest, WithoutCredentialsIsAskedForThem) {
    checkedBy = &authenticator;
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 401 Unauthorized\r\n"
                                          "WWW-Authenticate: Basic realm=\"array1\"\r\n"));
    EXPECT_EQ(channel.waited.count(), 0);
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, WaitsWhenItsPasswordHasTo) {
    checkedBy = &authenticator;
    handle(with(enumerateRequest(), "Authorization", "Basic slow"));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 401 Unauthorized\r\n"));
    EXPECT_EQ(channel.waited.count(), 3000);
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, IsAuthenticatedBeforeItIsLookedAt) {
    checkedBy = &authenticator;
    HttpRequest request = with(enumerateRequest(), "CIMOperation", {});
    request.body = "no XML";
    handle(request);
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 401 "));
}

TEST_F(HandledRequest, ErrorReplacesTheResults) {
    dispatcher.answer = [](ResultSink& sink) {
        sink.instanceName(path());
        throw CIMException(CIM_ERR_NOT_FOUND, "x");
    };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(channel.bytes, HasSubstr("DESCRIPTION=\"CIM_ERR_NOT_FOUND: x\""));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("INSTANCENAME")));
}

TEST_F(HandledRequest, ErrorOfCodeZeroIsSuccess) {
    dispatcher.answer = [](ResultSink&) { throw CIMException(CIM_ERR_SUCCESS, "x"); };
    handle(enumerateRequest());
    EXPECT_THAT(channel.bytes, Not(HasSubstr("ERROR")));
    EXPECT_THAT(channel.bytes, HasSubstr("</IMETHODRESPONSE>"));
}

TEST_F(HandledRequest, UnexpectedExceptionIsAFailure) {
    dispatcher.answer = [](ResultSink&) { throw std::runtime_error("broken"); };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes,
                HasSubstr("ERROR CODE=\"1\" DESCRIPTION=\"CIM_ERR_FAILED: Internal error\""));
}

TEST_F(HandledRequest, WithBadBodyIsRefused) {
    HttpRequest request = enumerateRequest();
    request.body = "no XML";
    EXPECT_TRUE(handle(request));
    EXPECT_THAT(channel.bytes,
                StartsWith("HTTP/1.1 400 Bad Request\r\nCIMError: request-not-valid\r\n"));
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, WithDeeperBodyThanTheLimitIsRefused) {
    limits.depth = 6;
    handle(enumerateRequest());
    EXPECT_EQ(dispatcher.calls, 1);
    limits.depth = 5;
    handle(enumerateRequest());
    EXPECT_EQ(dispatcher.calls, 1);
    EXPECT_THAT(channel.bytes, HasSubstr("More%20than%205%20nested%20elements"));
}

TEST_F(HandledRequest, WithUnknownMethodGetsACimError) {
    HttpRequest request = with(enumerateRequest(), "CIMMethod", "Frob");
    const std::string known = "EnumerateInstanceNames";
    request.body.replace(request.body.find(known), known.size(), "Frob");
    handle(request);
    EXPECT_THAT(channel.bytes, HasSubstr("CIM_ERR_NOT_SUPPORTED: Unrecognized intrinsic method"));
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, ForADocumentEndsTheConnection) {
    HttpRequest request = enumerateRequest();
    request.method = "GET";
    EXPECT_FALSE(handle(request));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 404 Not Found\r\n"));
    EXPECT_THAT(channel.bytes, HasSubstr("Connection: close\r\n"));
}

TEST_F(HandledRequest, EndsTheConnectionWhenTheClientWantsIt) {
    HttpRequest request = enumerateRequest();
    request.keepAlive = false;
    EXPECT_FALSE(handle(request));
    EXPECT_THAT(channel.bytes, HasSubstr("Connection: close\r\n"));
}

// Judged by its head

TEST_F(HandledRequest, IsAdmittedByItsHead) {
    checkedBy = &authenticator;
    HttpRequest head = with(enumerateRequest(), "Authorization", "Basic good");
    head.body = "";
    EXPECT_TRUE(handler().admit(head, channel));
    EXPECT_EQ(channel.bytes, "");
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(HandledRequest, IsNotAdmittedWithoutCredentials) {
    checkedBy = &authenticator;
    EXPECT_FALSE(handler().admit(enumerateRequest(), channel));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 401 "));
}

TEST_F(HandledRequest, IsNotAdmittedWithBadHeaders) {
    EXPECT_FALSE(handler().admit(with(enumerateRequest(), "CIMOperation", "Frob"), channel));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 400 Bad Request\r\nCIMError: unsupp"));
}

// Without TE, and more than is kept

class LongAnswer : public HandledRequest {
protected:
    // Some 45 bytes each.
    static constexpr int many = 10'000;
};

TEST_F(LongAnswer, UpToTheLimitGoesOutInPiecesWithItsLength) {
    dispatcher.answer = [&](ResultSink& sink) {
        deliver(sink, 250);
        EXPECT_EQ(channel.sends, 0);
    };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_EQ(channel.sends, 3);
    const size_t bodyBegin = channel.bytes.find("\r\n\r\n") + 4;
    EXPECT_EQ(channel.bytes.size() - bodyBegin, 11510U);
    EXPECT_THAT(channel.bytes.substr(0, bodyBegin),
                HasSubstr("\r\ncontent-length: 0000011510\r\n"));
    EXPECT_TRUE(channel.bytes.ends_with("</CIM>\n"));
}

TEST_F(LongAnswer, GoesOutInChunksWithoutTrailer) {
    int sendsBefore = 0;
    dispatcher.answer = [&](ResultSink& sink) {
        deliver(sink, many);
        sendsBefore = channel.sends;
    };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_GT(sendsBefore, 10);
    EXPECT_THAT(channel.bytes, HasSubstr("transfer-encoding: chunked\r\n"));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("Trailer")));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("content-length")));
    EXPECT_TRUE(channel.bytes.ends_with("</CIM>\n\r\n0\r\n\r\n"));
}

TEST_F(LongAnswer, HoldsNoMoreThanTheLimit) {
    dispatcher.answer = [&](ResultSink& sink) {
        size_t sent = 0;
        for (int i = 0; i < many; ++i) {
            sink.instanceName(path());
            sent = channel.bytes.size();
            EXPECT_LT(static_cast<size_t>(i) * 45, sent + answerBytes + 10'000);
        }
        EXPECT_GT(sent, answerBytes);
    };
    handle(enumerateRequest());
}

TEST_F(LongAnswer, EndsWithTheConnectionOverHttp10) {
    dispatcher.answer = [&](ResultSink& sink) { deliver(sink, many); };
    HttpRequest request = enumerateRequest();
    request.version = 10;
    EXPECT_FALSE(handle(request));
    EXPECT_THAT(channel.bytes, HasSubstr("Connection: close\r\n"));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("chunked")));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("content-length")));
    EXPECT_TRUE(channel.bytes.ends_with("</CIM>\n"));
}

TEST_F(LongAnswer, ErrorLeavesItWithoutEnd) {
    dispatcher.answer = [&](ResultSink& sink) {
        deliver(sink, many);
        throw CIMException(CIM_ERR_FAILED, "late");
    };
    EXPECT_FALSE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("</CIM>")));
    EXPECT_FALSE(channel.bytes.ends_with("0\r\n\r\n"));
}

TEST_F(LongAnswer, ErrorBeforeTheLimitReplacesIt) {
    dispatcher.answer = [&](ResultSink& sink) {
        deliver(sink, 250);
        throw CIMException(CIM_ERR_FAILED, "early");
    };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_EQ(channel.sends, 1);
    EXPECT_THAT(channel.bytes, HasSubstr("CIM_ERR_FAILED: early"));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("INSTANCENAME")));
}

// With TE: trailers

class ChunkedRequest : public HandledRequest {
protected:
    HttpRequest request = with(enumerateRequest(), "TE", "trailers");
};

TEST_F(ChunkedRequest, IsAnsweredInPieces) {
    int sendsBefore = 0;
    dispatcher.answer = [&](ResultSink& sink) {
        deliver(sink, 250);
        sendsBefore = channel.sends;
    };
    EXPECT_TRUE(handle(request));
    EXPECT_EQ(sendsBefore, 2);
    EXPECT_THAT(channel.bytes, HasSubstr("transfer-encoding: chunked\r\n"));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("content-length")));
    EXPECT_TRUE(channel.bytes.ends_with("</CIM>\n\r\n0\r\n\r\n"));
}

TEST_F(ChunkedRequest, ErrorGoesIntoTheTrailer) {
    dispatcher.answer = [](ResultSink&) { throw CIMException(CIM_ERR_NOT_SUPPORTED, "T::op"); };
    handle(request);
    EXPECT_THAT(channel.bytes, Not(HasSubstr("<ERROR")));
    EXPECT_TRUE(channel.bytes.ends_with(
        "\r\n0\r\nCIMStatusCode: 7\r\n"
        "CIMStatusCodeDescription: CIM_ERR_NOT_SUPPORTED%3A%20T%3A%3Aop\r\n\r\n"))
        << channel.bytes;
}

TEST_F(ChunkedRequest, LateErrorHasItsBareText) {
    dispatcher.answer = [](ResultSink& sink) {
        deliver(sink, 230);
        throw CIMException(CIM_ERR_FAILED, "late");
    };
    handle(request);
    EXPECT_TRUE(channel.bytes.ends_with("\r\n0\r\nCIMStatusCode: 1\r\n"
                                        "CIMStatusCodeDescription: late\r\n\r\n"))
        << channel.bytes;
}

TEST_F(ChunkedRequest, ErrorOfTheRequestItselfStaysInTheBody) {
    const std::string known = "EnumerateInstanceNames";
    request = with(request, "CIMMethod", "Frob");
    request.body.replace(request.body.find(known), known.size(), "Frob");
    handle(request);
    EXPECT_THAT(channel.bytes, HasSubstr("<ERROR CODE=\"7\""));
    EXPECT_TRUE(channel.bytes.ends_with("\r\n0\r\n\r\n"));
}

TEST_F(ChunkedRequest, EndsWhenTheClientIsGone) {
    int delivered = 0;
    dispatcher.answer = [&](ResultSink& sink) {
        channel.lost = true;
        for (; delivered < 1000; ++delivered) {
            sink.instanceName(path());
        }
    };
    EXPECT_THROW(handle(request), ConnectionLost);
    EXPECT_LT(delivered, 100);
}

} // namespace
} // namespace smisd::test
