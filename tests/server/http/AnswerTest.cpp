#include "server/http/Answer.h"

#include <cstdio>
#include <stdexcept>
#include <string>

#include <Pegasus/Common/Exception.h>
#include <gmock/gmock.h>

#include "tests/server/http/HandledRequest.h"

using namespace Pegasus;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace smisd::test {
namespace {

class Answer : public HandledRequest {};

TEST_F(Answer, HasTheResults) {
    dispatcher.answer = [](ResultSink& sink) { sink.instanceName(path()); };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(channel.bytes, HasSubstr("<INSTANCENAME CLASSNAME=\"C\">"));
    EXPECT_THAT(channel.bytes, HasSubstr("MESSAGE ID=\"7\""));
    EXPECT_EQ(channel.sends, 1);
    const auto& operation = std::get<EnumerateInstanceNames>(dispatcher.operation);
    EXPECT_TRUE(operation.nameSpace.equal(CIMNamespaceName("root")));
}

TEST_F(Answer, HasItsLength) {
    handle(enumerateRequest());
    const size_t head = channel.bytes.find("\r\n\r\n") + 4;
    char expected[64];
    std::snprintf(expected, sizeof(expected), "content-length: %010zu\r\n",
                  channel.bytes.size() - head);
    EXPECT_THAT(channel.bytes, HasSubstr(expected));
}

TEST_F(Answer, ErrorReplacesTheResults) {
    dispatcher.answer = [](ResultSink& sink) {
        sink.instanceName(path());
        throw CIMException(CIM_ERR_NOT_FOUND, "x");
    };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(channel.bytes, HasSubstr("DESCRIPTION=\"CIM_ERR_NOT_FOUND: x\""));
    EXPECT_THAT(channel.bytes, Not(HasSubstr("INSTANCENAME")));
}

TEST_F(Answer, ErrorOfCodeZeroIsSuccess) {
    dispatcher.answer = [](ResultSink&) { throw CIMException(CIM_ERR_SUCCESS, "x"); };
    handle(enumerateRequest());
    EXPECT_THAT(channel.bytes, Not(HasSubstr("ERROR")));
    EXPECT_THAT(channel.bytes, HasSubstr("</IMETHODRESPONSE>"));
}

TEST_F(Answer, UnexpectedExceptionIsAFailure) {
    dispatcher.answer = [](ResultSink&) { throw std::runtime_error("broken"); };
    EXPECT_TRUE(handle(enumerateRequest()));
    EXPECT_THAT(channel.bytes,
                HasSubstr("ERROR CODE=\"1\" DESCRIPTION=\"CIM_ERR_FAILED: Internal error\""));
}

TEST_F(Answer, ToAnUnknownMethodIsACimError) {
    HttpRequest request = with(enumerateRequest(), "CIMMethod", "Frob");
    const std::string known = "EnumerateInstanceNames";
    request.body.replace(request.body.find(known), known.size(), "Frob");
    handle(request);
    EXPECT_THAT(channel.bytes, HasSubstr("CIM_ERR_NOT_SUPPORTED: Unrecognized intrinsic method"));
    EXPECT_EQ(dispatcher.calls, 0);
}

TEST_F(Answer, EndsTheConnectionWhenTheClientWantsIt) {
    HttpRequest request = enumerateRequest();
    request.keepAlive = false;
    EXPECT_FALSE(handle(request));
    EXPECT_THAT(channel.bytes, HasSubstr("Connection: close\r\n"));
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
