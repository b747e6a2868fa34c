// A request as it came, what requests may cost the server, and the way back for a response.
#pragma once

#include <chrono>
#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/auth/Wiping.h"
#include "server/cimxml/XmlDocument.h"
#include "server/operation/MemoryBudget.h"

namespace smisd {

struct HttpHeader {
    std::string name;
    WipedString value; // without blanks around it
};

struct HttpRequest {
    std::string method;
    std::string target;
    unsigned version = 11; // 10 or 11
    bool keepAlive = true; // the client leaves the connection open
    std::vector<HttpHeader> headers;
    std::string body;
    std::string peer; // address of the client

    // A header that is there already gets the value as a further one of a list (RFC 9110,
    // section 5.3).
    void add(std::string_view name, std::string_view value);

    // The value of the first header of the name, in any case. A name with the two-digit prefix of
    // an extension declaration, "48-CIMMethod", counts too (RFC 2774, section 3).
    std::optional<std::string_view> header(std::string_view name) const;
};

// Where the bytes of one response go. Any thread, one at a time.
class ResponseChannel {
public:
    virtual ~ResponseChannel() = default;

    // Throws ConnectionLost when the client is gone; else the bytes are on their way, which does
    // not wait for the client.
    virtual void send(std::string bytes) = 0;

    // In a request's handler, before the first send: what is on its way is held by `memory`.
    virtual void holdIn(MemoryBudget::Reservation) {}

    // There was no memory for the request: somebody who takes nothing of an answer has to go.
    virtual void outOfMemory() {}

    // An empty text to fill and send; maybe with the room of one that was sent.
    virtual std::string spareText() { return {}; }

    // In a request's handler: returns when `work` has, which must not throw and may wait long for
    // something else than a processor; another request has the worker meanwhile.
    virtual void aside(const std::function<void()>& work) { work(); }
};

class ConnectionLost : public std::exception {
public:
    const char* what() const noexcept override { return "the client closed the connection"; }
};

// Beast keeps lengths of header values in 16 bits and fails on longer ones.
constexpr std::size_t maximumHeaderBytes = 65000;

// What a client may cost the server.
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
    // Of all that requests hold; of all who have a copy of these limits.
    std::shared_ptr<MemoryBudget> memory = std::make_shared<MemoryBudget>(defaultMemory);
};

// Percent-encoding of header values (RFC 3986, section 2.1; DSP0200, "Mapping of CIM Object
// Paths"): everything but letters, digits and -_.!~*'() is encoded.
std::string percentEncoded(std::string_view text);

// Nothing when a % is not followed by two hexadecimal digits.
std::optional<std::string> percentDecoded(std::string_view text);

} // namespace smisd
