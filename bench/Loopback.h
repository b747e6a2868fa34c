#pragma once

#include <string>
#include <thread>

namespace bench {

// A thread that writes the same bytes to one loopback connection for each byte that it is sent: as
// fast as any server could have them sent.
class Loopback {
public:
    explicit Loopback(std::string bytes);
    ~Loopback();

    // "127.0.0.1:40000"
    const std::string& address() const { return _address; }

private:
    void serve() const;

    const std::string _bytes;
    const int _listening;
    std::string _address;
    std::jthread _thread;
};

} // namespace bench
