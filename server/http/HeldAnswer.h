// The answer to a client that takes no trailers.
#pragma once

#include "server/http/CimRequest.h"
#include "server/http/HttpMessage.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace smisd {

// Collects the pieces of a body, one at least. A body that stays within the limit is sent when it
// is complete, with its length. A longer one is begun when it passes the limit: in chunks, or, over
// HTTP/1.0, up to the end of the connection. From then on an error cannot be reported any more; the
// caller leaves the body without its end.
//
// One thread; all functions but the constructor throw ConnectionLost.
class HeldAnswer {
public:
    HeldAnswer(const CimRequest& request, bool keepOpen, std::size_t limit,
               ResponseChannel& channel);

    void add(std::string_view piece);
    void finish();

    // Whether a part of it was sent.
    bool begun() const { return _begun; }
    // The end of the connection is no end of the body.
    bool keepOpen() const { return _keepOpen; }

private:
    void begin();
    std::string framed(std::string_view piece) const;

    const CimRequest& _request;
    const std::size_t _limit;
    ResponseChannel& _channel;
    bool _keepOpen;
    bool _begun = false;
    std::vector<std::string> _held; // until it is begun; never one text, which would be copied
    std::size_t _heldBytes = 0;
};

} // namespace smisd
