// Very many connections to one server, in one thread.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace attack {

// What the connections of a swarm do, each on its own.
struct Behaviour {
    unsigned connections = 1;
    // The address of 127.0.0.0/8 from which a connection comes, in the order of the host.
    std::function<std::uint32_t(unsigned connection)> source;
    // What a connection sends in its turn; turns are counted from 0 for each connection it opens.
    std::function<std::string(unsigned connection, unsigned turn)> request;
    // Whether it reads the response to each turn before the next; else it reads nothing and sends
    // turn after turn, as fast as the server takes them.
    bool reads = true;
    // Between turns that are answered, and before it connects again when the server has ended the
    // connection.
    std::chrono::milliseconds pause{0};
    std::chrono::milliseconds reconnect{1};
    unsigned turns = ~0U; // after which it keeps the connection and does nothing
};

// Behaves so towards a port of 127.0.0.1 until `stop`. Throws std::runtime_error when it cannot
// begin.
void swarm(unsigned short port, const Behaviour& behaviour, const std::atomic<bool>& stop);

// 127.a.b.c
constexpr std::uint32_t loopback(unsigned a, unsigned b, unsigned c) {
    return 127U << 24U | a << 16U | b << 8U | c;
}

} // namespace attack
