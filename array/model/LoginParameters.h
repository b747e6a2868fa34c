#pragma once

#include <string_view>

#include "array/model/Records.h"

namespace array {

// The limits of RFC 7143 section 13 for the login parameters of `owner`, each by itself, and how
// they must agree. Throws DRAVOperationFailedException with ErrorCode::BadParameter or
// ParametersDisagree, which names the parameters by their text keys.
void checkParameters(const SessionParameters& parameters, std::string_view owner);
void checkParameters(const ConnectionParameters& parameters, std::string_view owner);

} // namespace array
