// A request as it came, and the way back for its response.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace smisd {

struct HttpHeader {
    std::string name;
    std::string value; // without blanks around it
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
    void add(const std::string& name, const std::string& value);

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

    // An empty text to fill and send; maybe with the room of one that was sent.
    virtual std::string piece() { return {}; }

    // In a request's handler: returns after this time; another request has the worker meanwhile.
    virtual void wait(std::chrono::milliseconds time) = 0;
};

class ConnectionLost : public std::exception {
public:
    const char* what() const noexcept override { return "the client closed the connection"; }
};

} // namespace smisd
