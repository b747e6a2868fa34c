#include "server/http/RefusedRequest.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include <boost/beast/http/error.hpp>

namespace smisd {

namespace http = boost::beast::http;

namespace {

// As OpenPegasus.
constexpr int maximumFields = 1000;

} // namespace

std::optional<BadRequest> refusalOf(const boost::system::error_code& error) {
    struct Answer {
        http::error error;
        unsigned status;
        const char* detail;
    };
    static constexpr Answer answers[] = {
        {http::error::body_limit, 413, "The body of the request is too large"},
        {http::error::header_limit, 431, "The headers of the request are too large"},
        {http::error::bad_content_length, 400, "Invalid Content-Length header detected"},
        {http::error::multiple_content_length, 400, "Duplicate Content-Length header detected"},
    };
    if (error.category() != make_error_code(http::error::bad_method).category() ||
        error == http::error::end_of_stream || error == http::error::partial_message) {
        return std::nullopt;
    }
    const auto* answer = std::find_if(std::begin(answers), std::end(answers),
                                      [&](const Answer& entry) { return error == entry.error; });
    return answer != std::end(answers) ? BadRequest(answer->status, "", answer->detail)
                                       : BadRequest(400, "", error.message());
}

std::optional<BadRequest> refusalOf(const RequestParser& parser) {
    const auto& head = parser.get();
    const std::string_view length = head[http::field::content_length];
    if (std::distance(head.begin(), head.end()) > maximumFields) {
        return BadRequest(413, "",
                          "more than " + std::to_string(maximumFields) +
                              " header fields detected in HTTP message");
    }
    if (head.count(http::field::transfer_encoding) > 0 && !parser.chunked()) {
        return BadRequest(501, "", "unimplemented transfer-encoding value");
    }
    if (length.find(',') != std::string_view::npos) { // a list of equal ones
        return BadRequest(400, "", "Invalid Content-Length header detected");
    }
    if (length.empty() && !parser.chunked() && head.method_string().ends_with("POST")) {
        return BadRequest(411, "", "The request has no Content-Length");
    }
    return std::nullopt;
}

void checkHttpMethod(const HttpRequest& request) {
    static constexpr const char* served[] = {"POST", "M-POST"};
    static constexpr const char* empty[] = {"GET", "HEAD"}; // there are no documents
    static constexpr const char* refused[] = {"DELETE", "OPTIONS", "PUT", "TRACE"};
    const auto isIn = [&](const auto& methods) {
        return std::find(std::begin(methods), std::end(methods), request.method) !=
               std::end(methods);
    };
    if (isIn(served)) {
        return;
    }
    if (isIn(empty)) {
        throw BadRequest(404, "", "");
    }
    if (isIn(refused)) {
        throw BadRequest(400, "", "");
    }
    throw BadRequest(501, "", "");
}

} // namespace smisd
