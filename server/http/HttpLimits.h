// What a client may cost the server.
#pragma once

#include <chrono>
#include <cstddef>

namespace smisd {

struct HttpLimits {
    unsigned connections = 256;               // open at once; more are refused with 503
    unsigned workers = 8;                     // operations carried out at once
    std::size_t headerBytes = 128 * 1024;     // of one request; 431
    std::size_t bodyBytes = 16 * 1024 * 1024; // of one request; 413
    std::chrono::seconds requestTime{30};     // from its first byte to its last; then 408
    std::chrono::seconds idleTime{300};       // between requests
    std::chrono::seconds sendTime{60};        // for each 64 KiB of a response
};

} // namespace smisd
