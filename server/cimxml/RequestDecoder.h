// From the body of a request to the operation that it asks for (DSP0201, "Message Elements").
#pragma once

#include <string>
#include <variant>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

#include "server/cimxml/ElementReaders.h"
#include "server/cimxml/XmlDocument.h"
#include "server/operation/MemoryBudget.h"
#include "server/operation/Operation.h"

namespace smisd {

// The headers that say the same as the body (DSP0200, "CIMMethod", "CIMObject",
// "CIMProtocolVersion"), percent-decoded, UTF-8; "" for one that is absent.
struct CimHeaders {
    std::string method;
    std::string object;
    std::string protocolVersion = "1.0";
};

// What the response repeats.
struct MessageHead {
    std::string messageId;
    std::string methodName;
    bool intrinsic = true;
};

struct DecodedRequest {
    MessageHead head;
    // The operation, or the CIM error that is its answer.
    std::variant<Operation, Pegasus::CIMException> operation;
    MemoryBudget::Reservation memory = {}; // holds the operation
};

// Throws BadRequest for a body that is not CIM-XML, or does not agree with the headers, and with
// the status 503 where `memory` has no room for what is in it; 413 where it could never have.
// Meanwhile `memory` holds the body, the tree and the operation. Thread-safe.
DecodedRequest decodeRequest(std::string body, const CimHeaders& headers,
                             unsigned maximumDepth = usualDepth,
                             MemoryBudget::Reservation memory = {});

} // namespace smisd
