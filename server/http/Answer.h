// From a decoded request to its answer: the operation is carried out, and its results go out as
// they come.
//
// To a client that takes trailers the answer goes in chunks, and an error in the middle stands in
// the trailer. To others it goes with its length; one that is too long for that goes in chunks
// without a trailer, or, over HTTP/1.0, up to the end of the connection.
#pragma once

#include <cstddef>

#include "server/cimxml/RequestDecoder.h"
#include "server/http/CimRequest.h"
#include "server/http/HttpMessage.h"
#include "server/operation/Dispatcher.h"

namespace smisd {

// A decoded request on its way to its answer. What it refers to outlives it.
struct Exchange {
    Dispatcher& dispatcher;
    const CimRequest& request;
    const DecodedRequest& decoded;
    const RequestContext& context;
    ResponseChannel& channel;
    bool keepOpen;                     // the connection, after the answer
    std::size_t heldBytes;             // of an answer, until its length is known
    MemoryBudget::Reservation& memory; // holds the operation; and the answer, until it is sent
};

// Returns whether the connection stays open. Throws ConnectionLost, and BadRequest with status 503
// when there is no memory for an answer.
bool answer(const Exchange& exchange);

} // namespace smisd
