// Requests that could not be read.
#pragma once

#include "server/cimxml/BadRequest.h"

#include <boost/system/error_code.hpp>

#include <optional>

namespace smisd {

// What the client is told of an error of Beast's parser; nothing when the connection was closed,
// lost or too slow.
std::optional<BadRequest> refusalOf(const boost::system::error_code& error);

} // namespace smisd
