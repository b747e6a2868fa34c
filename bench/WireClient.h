#ifndef BENCH_WIRE_CLIENT_H
#define BENCH_WIRE_CLIENT_H

#include <cstddef>
#include <string>

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

private:
    void readUntil(std::size_t size);

    int _socket;
    std::string _received;
    std::string _body;
};

// Bodies of requests in namespace "root/snia".
std::string intrinsicCall(const std::string& method, const std::string& parameters);
std::string extrinsicCall(const std::string& method, const std::string& className,
                          const std::string& parameters);

} // namespace bench

#endif
