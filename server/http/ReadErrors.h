// Requests that could not be read.
#pragma once

#include "server/cimxml/BadRequest.h"

#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/system/error_code.hpp>

#include <optional>

namespace smisd {

// What the client is told of an error of Beast's parser; nothing when the connection was closed,
// lost or too slow.
std::optional<BadRequest> refusalOf(const boost::system::error_code& error);

// What is wrong with a head that was read: nobody can tell where its body ends, or it has too many
// fields.
std::optional<BadRequest>
refusalOf(const boost::beast::http::request_parser<boost::beast::http::string_body>& parser);

} // namespace smisd
