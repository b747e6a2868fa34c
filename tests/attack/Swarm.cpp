#include "tests/attack/Swarm.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <deque>
#include <stdexcept>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tests/attack/GoodClient.h"

namespace attack {
namespace {

using Clock = std::chrono::steady_clock;

struct Connection {
    int descriptor = -1;
    unsigned turn = 0;
    std::string unsent;
    std::size_t sent = 0;
    std::string received;
};

// Whether the text begins with a whole response, which has a length.
bool isWhole(const std::string& text) {
    const std::size_t end = text.find("\r\n\r\n");
    if (end == std::string::npos) {
        return false;
    }
    const std::size_t length = text.find("ontent-length: ");
    return length < end &&
           text.size() >= end + 4 + std::strtoul(text.c_str() + length + 15, nullptr, 10);
}

class Swarm {
public:
    Swarm(unsigned short port, const Behaviour& behaviour)
        : _port(port), _behaviour(behaviour), _connections(behaviour.connections) {
        if (_epoll < 0) {
            throw std::runtime_error("epoll_create1");
        }
    }
    ~Swarm() {
        for (const Connection& connection : _connections) {
            if (connection.descriptor >= 0) {
                close(connection.descriptor);
            }
        }
        close(_epoll);
    }
    Swarm(const Swarm&) = delete;
    Swarm& operator=(const Swarm&) = delete;

    void run(const std::atomic<bool>& stop) {
        for (unsigned number = 0; number < _connections.size(); ++number) {
            connect(number);
        }
        std::array<epoll_event, 256> events{};
        while (!stop) {
            const int count = epoll_wait(_epoll, events.data(), events.size(), 5);
            for (int i = 0; i < count; ++i) {
                const epoll_event& event = events[static_cast<std::size_t>(i)];
                serve(event.data.u32, event.events);
            }
            wake();
        }
    }

private:
    void connect(unsigned number) {
        Connection& connection = _connections[number];
        connection = {};
        const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        if (descriptor < 0) {
            throw std::runtime_error("a swarm needs more open files: raise ulimit -n");
        }
        connection.descriptor = descriptor;
        const sockaddr_in from = endpoint(_behaviour.source(number), 0);
        const sockaddr_in to = endpoint(INADDR_LOOPBACK, _port);
        if (bind(descriptor, reinterpret_cast<const sockaddr*>(&from), sizeof from) != 0 ||
            (::connect(descriptor, reinterpret_cast<const sockaddr*>(&to), sizeof to) != 0 &&
             errno != EINPROGRESS)) {
            again(number);
            return;
        }
        connection.unsent = _behaviour.request(number, connection.turn);
        watch(number, EPOLL_CTL_ADD, EPOLLOUT);
    }

    void watch(unsigned number, int change, unsigned events) const {
        epoll_event event{};
        event.events = events | EPOLLRDHUP | (_behaviour.reads ? EPOLLIN : 0U);
        event.data.u32 = number;
        epoll_ctl(_epoll, change, _connections[number].descriptor, &event);
    }

    void again(unsigned number) {
        close(std::exchange(_connections[number].descriptor, -1));
        _toConnect.emplace_back(Clock::now() + _behaviour.reconnect, number);
    }

    void serve(unsigned number, unsigned events) {
        Connection& connection = _connections[number];
        if (connection.descriptor < 0) {
            return;
        }
        if ((events & EPOLLIN) != 0 && !receive(number)) {
            again(number);
        } else if ((events & (EPOLLHUP | EPOLLERR | EPOLLRDHUP)) != 0) {
            again(number);
        } else if ((events & EPOLLOUT) != 0) {
            send(number);
        }
    }

    // Returns whether the connection is still open.
    bool receive(unsigned number) {
        Connection& connection = _connections[number];
        std::array<char, 16384> buffer{};
        const ssize_t count = recv(connection.descriptor, buffer.data(), buffer.size(), 0);
        if (count <= 0) {
            return count < 0 && errno == EAGAIN;
        }
        connection.received.append(buffer.data(), static_cast<std::size_t>(count));
        if (isWhole(connection.received)) {
            connection.received.clear();
            _toSend.emplace_back(Clock::now() + _behaviour.pause, number);
        }
        return true;
    }

    void send(unsigned number) {
        Connection& connection = _connections[number];
        const ssize_t count =
            ::send(connection.descriptor, connection.unsent.data() + connection.sent,
                   connection.unsent.size() - connection.sent, MSG_NOSIGNAL);
        if (count < 0) {
            if (errno != EAGAIN) {
                again(number);
            }
            return;
        }
        connection.sent += static_cast<std::size_t>(count);
        if (connection.sent == connection.unsent.size()) {
            connection.unsent.clear();
            connection.sent = 0;
            if (_behaviour.reads || !next(number)) {
                watch(number, EPOLL_CTL_MOD, 0);
            }
        }
    }

    // Prepares the next turn, if there is one.
    bool next(unsigned number) {
        Connection& connection = _connections[number];
        if (++connection.turn >= _behaviour.turns) {
            return false;
        }
        connection.unsent = _behaviour.request(number, connection.turn);
        return true;
    }

    void wake() {
        const Clock::time_point now = Clock::now();
        while (!_toConnect.empty() && _toConnect.front().first <= now) {
            const unsigned number = _toConnect.front().second;
            _toConnect.pop_front();
            connect(number);
        }
        while (!_toSend.empty() && _toSend.front().first <= now) {
            const unsigned number = _toSend.front().second;
            _toSend.pop_front();
            if (_connections[number].descriptor >= 0 && _connections[number].unsent.empty() &&
                next(number)) {
                watch(number, EPOLL_CTL_MOD, EPOLLOUT);
            }
        }
    }

    const unsigned short _port;
    const Behaviour& _behaviour;
    const int _epoll = epoll_create1(EPOLL_CLOEXEC);
    std::vector<Connection> _connections;
    std::deque<std::pair<Clock::time_point, unsigned>> _toConnect; // in order of time, as the next
    std::deque<std::pair<Clock::time_point, unsigned>> _toSend;
};

} // namespace

void swarm(unsigned short port, const Behaviour& behaviour, const std::atomic<bool>& stop) {
    Swarm(port, behaviour).run(stop);
}

} // namespace attack
