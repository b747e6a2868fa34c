#pragma once

#include <optional>
#include <string>

#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/system/error_code.hpp>

#include "server/cimxml/RequestDecoder.h"
#include "server/cimxml/ValueReader.h"
#include "server/http/HttpMessage.h"

// What the headers of a request must say (DSP0200, "Encapsulation of CIM Exchange Messages").

namespace smisd {

struct CimRequest {
    CimHeaders headers;
    bool extension = false; // M-POST: the response declares its headers too
    bool trailers = false;  // the client takes a chunked response with trailers
    bool http10 = false;    // the client knows no chunks
    std::string acceptLanguage;
    std::string contentLanguage;
};

// Throws BadRequest for a method that is not served.
void checkHttpMethod(const HttpRequest& request);

// Throws BadRequest for headers that are missing or wrong. The method was checked.
CimRequest readCimRequest(const HttpRequest& request);

// Requests that could not be read.

// What the client is told of an error of Beast's parser; nothing when the connection was closed,
// lost or too slow.
std::optional<BadRequest> refusalOf(const boost::system::error_code& error);

// What is wrong with a head that was read: nobody can tell where its body ends, or it has too many
// fields.
std::optional<BadRequest>
refusalOf(const boost::beast::http::request_parser<boost::beast::http::string_body>& parser);

} // namespace smisd
