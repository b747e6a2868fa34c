#pragma once

#include <Pegasus/Common/String.h>

namespace Pegasus {

// A host as an object path may name it: labels of letters, digits, '-' and '_', joined by dots; an
// IPv4 address; or an IPv6 address in brackets; each with or without ":port". Internal.
bool isLegalHost(const String& host);

} // namespace Pegasus
