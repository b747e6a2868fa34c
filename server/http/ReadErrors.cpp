#include "server/http/ReadErrors.h"

#include <boost/beast/http/error.hpp>

#include <algorithm>
#include <iterator>

namespace smisd {

namespace http = boost::beast::http;

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

} // namespace smisd
