// What a client may cost the server.
#pragma once

#include "server/cimxml/XmlDocument.h"

#include <chrono>
#include <cstddef>

namespace smisd {

// Beast keeps lengths of header values in 16 bits and fails on longer ones.
constexpr std::size_t maximumHeaderBytes = 65000;

struct HttpLimits {
    unsigned connections = 256; // open at once
    // Operations carried out at once: more than processors, as changes that wait for the disk share
    // its flushes.
    unsigned workers = 32;
    std::size_t headerBytes = 64000;          // of one request, maximumHeaderBytes at most; 431
    std::size_t bodyBytes = 16 * 1024 * 1024; // of one request; 413
    unsigned depth = usualDepth;              // of the elements in a body; 400
    std::chrono::seconds requestTime{30};     // from its first byte to its last; then it is cut off
    std::chrono::seconds idleTime{300};       // between requests
    std::size_t queueBytes = 1024 * 1024;     // of one response, kept for a client that is slower
    std::chrono::seconds sendTime{60};        // for each 64 KiB of a response
    std::chrono::seconds stopTime{60};        // to answer the requests in progress at the end
};

} // namespace smisd
