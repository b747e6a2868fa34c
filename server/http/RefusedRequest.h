// Requests that HTTP itself refuses: too large, malformed, or of a method that is not served.
#pragma once

#include <optional>

#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/system/error_code.hpp>

#include "server/auth/Wiping.h"
#include "server/cimxml/XmlDocument.h"
#include "server/http/HttpMessage.h"

namespace smisd {

// The password among the headers is wiped with it.
using RequestParser =
    boost::beast::http::request_parser<boost::beast::http::string_body, WipingAllocator<char>>;

// How a request that could not be read is answered; nothing when the connection is lost, or was
// cut off because the client took too long.
std::optional<BadRequest> refusalOf(const boost::system::error_code& error);

// Why a request is refused when its head was read, if it is.
std::optional<BadRequest> refusalOf(const RequestParser& parser);

// Throws BadRequest for a method that is not served.
void checkHttpMethod(const HttpRequest& request);

} // namespace smisd
