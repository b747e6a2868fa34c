// HTTP as bytes.
#pragma once

#include <string>

namespace wire {

// Sends bytes to a port of 127.0.0.1, and that there are no more, and returns what comes until the
// server closes: a response to each request among them. Throws after ten seconds without a byte.
std::string roundTrip(unsigned short port, const std::string& bytes);

} // namespace wire
