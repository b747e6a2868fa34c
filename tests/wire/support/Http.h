// HTTP as bytes.
#pragma once

#include <string>

namespace wire {

// Sends bytes to a port of 127.0.0.1 and returns one response: what comes until it is complete by
// its length or its last chunk, or the server closes. Throws after ten seconds.
std::string roundTrip(unsigned short port, const std::string& bytes);

} // namespace wire
