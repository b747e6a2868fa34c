#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace bench {

// One keep-alive connection to a CIM-XML server; any failure ends the program with a message.
class WireClient {
public:
    // "127.0.0.1:5988"
    explicit WireClient(const std::string& address);
    ~WireClient();
    WireClient(const WireClient&) = delete;
    WireClient& operator=(const WireClient&) = delete;

    // Sends a CIM operation and reads the answer; gives its body.
    const std::string& call(const std::string& method, const std::string& object,
                            const std::string& body);

    // The same, but the answer's body is dropped as it comes; gives its size.
    std::size_t callAndDrop(const std::string& method, const std::string& object,
                            const std::string& body);

    // Sends the bytes, and reads and drops that many.
    void receive(const std::string& request, std::size_t size);

private:
    void answer(const std::string& method, const std::string& object, const std::string& body);
    void sendAll(const std::string& request);
    void fill();
    std::string line(std::string_view end);
    void readBody(std::size_t size);
    void readChunks();

    int _socket;
    std::string _buffer;
    std::string_view _received; // of the buffer, what is not yet read
    std::string _body;
    std::size_t _bodySize = 0;
    bool _dropping = false; // the body is not kept
};

// Bodies of requests in namespace "root/snia".
std::string intrinsicCall(const std::string& method, const std::string& parameters);
std::string extrinsicCall(const std::string& method, const std::string& className,
                          const std::string& parameters);

} // namespace bench
