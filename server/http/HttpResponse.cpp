#include "server/http/HttpResponse.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

#include "server/http/HttpMessage.h"

namespace smisd {
namespace {

constexpr const char* endOfLine = "\r\n";

struct Reason {
    unsigned status;
    const char* phrase;
};
constexpr Reason reasons[] = {
    {200, "OK"},
    {400, "Bad Request"},
    {401, "Unauthorized"},
    {404, "Not Found"},
    {408, "Request Timeout"},
    {411, "Length Required"},
    {413, "Request Entity Too Large"},
    {431, "Request Header Fields Too Large"},
    {500, "Internal Server Error"},
    {501, "Not Implemented"},
    {503, "Service Unavailable"},
};

std::string statusLine(unsigned status) {
    const auto* reason = std::find_if(std::begin(reasons), std::end(reasons),
                                      [&](const Reason& entry) { return entry.status == status; });
    return "HTTP/1.1 " + std::to_string(status) + " " +
           (reason != std::end(reasons) ? reason->phrase : "Error") + endOfLine;
}

std::string header(const std::string& name, const std::string& value) {
    return name + ": " + value + endOfLine;
}

std::string lengthHeader(std::size_t length) {
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%010zu", length);
    return header("content-length", digits.data());
}

// An extension response declares what its prefix stands for (RFC 2774, section 5).
std::string operationHeaders(const CimRequest& request) {
    if (!request.extension) {
        return header("CIMOperation", "MethodResponse");
    }
    return std::string("Ext:") + endOfLine + header("Cache-Control", "no-cache") +
           header("Man", "http://www.dmtf.org/cim/mapping/http/v1.0; ns=48") +
           header("48-CIMOperation", "MethodResponse");
}

std::string endOfHead(bool keepOpen) {
    return (keepOpen ? std::string() : header("Connection", "close")) + endOfLine;
}

std::string startOfAnswer() {
    return statusLine(200) + header("Content-Type", "application/xml; charset=utf-8");
}

} // namespace

std::string answerHead(const CimRequest& request, std::size_t bodyLength, bool keepOpen) {
    return startOfAnswer() + lengthHeader(bodyLength) + operationHeaders(request) +
           endOfHead(keepOpen);
}

std::string chunkedAnswerHead(const CimRequest& request, bool keepOpen) {
    return startOfAnswer() + header("transfer-encoding", "chunked") + operationHeaders(request) +
           (request.trailers
                ? header("Trailer", "CIMStatusCode, CIMStatusCodeDescription, Content-Language")
                : std::string()) +
           endOfHead(keepOpen);
}

std::string endlessAnswerHead(const CimRequest& request) {
    return startOfAnswer() + operationHeaders(request) + endOfHead(false);
}

std::string chunk(std::string_view piece, std::string spare) {
    std::array<char, 32> size{};
    std::snprintf(size.data(), size.size(), "%zx", piece.size());
    spare.clear();
    spare.reserve(piece.size() + size.size() + 4);
    spare.append(size.data()).append(endOfLine).append(piece).append(endOfLine);
    return spare;
}

std::string lastChunk() {
    return std::string("0") + endOfLine + endOfLine;
}

std::string lastChunk(int statusCode, const std::string& description) {
    return std::string("0") + endOfLine + header("CIMStatusCode", std::to_string(statusCode)) +
           header("CIMStatusCodeDescription", percentEncoded(description)) + endOfLine;
}

std::string refusal(const BadRequest& badRequest, bool keepOpen) {
    const std::string detail = badRequest.what();
    return statusLine(badRequest.status()) +
           (badRequest.cimError().empty() ? "" : header("CIMError", badRequest.cimError())) +
           (detail.empty() ? "" : header("PGErrorDetail", percentEncoded(detail))) +
           lengthHeader(0) + endOfHead(keepOpen);
}

std::string unavailable(const std::string& detail, std::chrono::seconds tryAgainAfter,
                        bool keepOpen) {
    return statusLine(503) + header("Retry-After", std::to_string(tryAgainAfter.count())) +
           header("PGErrorDetail", percentEncoded(detail)) + lengthHeader(0) + endOfHead(keepOpen);
}

std::string unauthorized(const std::string& realm, bool keepOpen) {
    return statusLine(401) + header("WWW-Authenticate", "Basic realm=\"" + realm + "\"") +
           lengthHeader(0) + endOfHead(keepOpen);
}

} // namespace smisd
