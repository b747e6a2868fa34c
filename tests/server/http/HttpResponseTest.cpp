#include "server/http/HttpResponse.h"

#include <gtest/gtest.h>

namespace smisd::test {
namespace {

TEST(AnswerHead, StatesTheLengthInTenDigits) {
    EXPECT_EQ(answerHead(CimRequest(), 992, true),
              "HTTP/1.1 200 OK\r\n"
              "Content-Type: application/xml; charset=utf-8\r\n"
              "content-length: 0000000992\r\n"
              "CIMOperation: MethodResponse\r\n\r\n");
}

TEST(AnswerHead, SaysWhenTheConnectionEnds) {
    EXPECT_NE(answerHead(CimRequest(), 1, false).find("\r\nConnection: close\r\n\r\n"),
              std::string::npos);
}

TEST(AnswerHead, ExtensionIsDeclared) {
    CimRequest request;
    request.extension = true;
    EXPECT_EQ(answerHead(request, 5, true),
              "HTTP/1.1 200 OK\r\n"
              "Content-Type: application/xml; charset=utf-8\r\n"
              "content-length: 0000000005\r\n"
              "Ext:\r\n"
              "Cache-Control: no-cache\r\n"
              "Man: http://www.dmtf.org/cim/mapping/http/v1.0; ns=48\r\n"
              "48-CIMOperation: MethodResponse\r\n\r\n");
}

TEST(ChunkedAnswer, AnnouncesItsTrailer) {
    CimRequest request;
    request.trailers = true;
    EXPECT_EQ(chunkedAnswerHead(request, true),
              "HTTP/1.1 200 OK\r\n"
              "Content-Type: application/xml; charset=utf-8\r\n"
              "transfer-encoding: chunked\r\n"
              "CIMOperation: MethodResponse\r\n"
              "Trailer: CIMStatusCode, CIMStatusCodeDescription, Content-Language\r\n\r\n");
    EXPECT_EQ(chunk(std::string(26, 'x')), "1a\r\n" + std::string(26, 'x') + "\r\n");
    EXPECT_EQ(chunk("x", "what was sent before"), "1\r\nx\r\n");
    EXPECT_EQ(lastChunk(), "0\r\n\r\n");
    EXPECT_EQ(
        lastChunk(7, "CIM_ERR_NOT_SUPPORTED: T::op\r\nX: y"),
        "0\r\nCIMStatusCode: 7\r\n"
        "CIMStatusCodeDescription: CIM_ERR_NOT_SUPPORTED%3A%20T%3A%3Aop%0D%0AX%3A%20y\r\n\r\n");
}

TEST(Refusal, NamesTheErrorAndHasNoBody) {
    EXPECT_EQ(refusal(BadRequest(400, "header-mismatch", "Empty CIMMethod value."), true),
              "HTTP/1.1 400 Bad Request\r\n"
              "CIMError: header-mismatch\r\n"
              "PGErrorDetail: Empty%20CIMMethod%20value.\r\n"
              "content-length: 0000000000\r\n\r\n");
    EXPECT_EQ(refusal(BadRequest(404, "", ""), false), "HTTP/1.1 404 Not Found\r\n"
                                                       "content-length: 0000000000\r\n"
                                                       "Connection: close\r\n\r\n");
}

TEST(Unauthorized, AsksForBasicCredentials) {
    EXPECT_EQ(unauthorized("array1", true), "HTTP/1.1 401 Unauthorized\r\n"
                                            "WWW-Authenticate: Basic realm=\"array1\"\r\n"
                                            "content-length: 0000000000\r\n\r\n");
}

} // namespace
} // namespace smisd::test
