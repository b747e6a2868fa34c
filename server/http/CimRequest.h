// What the headers of a request must say (DSP0200, "Encapsulation of CIM Exchange Messages").
#pragma once

#include <string>

#include "server/cimxml/RequestDecoder.h"
#include "server/http/HttpMessage.h"

namespace smisd {

struct CimRequest {
    CimHeaders headers;
    bool extension = false; // M-POST: the response declares its headers too
    bool trailers = false;  // the client takes a chunked response with trailers
    bool http10 = false;    // the client knows no chunks
    std::string acceptLanguage;
    std::string contentLanguage;
};

// Throws BadRequest for headers that are missing or wrong. The method was checked.
CimRequest readCimRequest(const HttpRequest& request);

} // namespace smisd
