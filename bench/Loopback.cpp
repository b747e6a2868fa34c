#include "bench/Loopback.h"

#include <sys/socket.h>
#include <unistd.h>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>

#include "bench/GiveUp.h"

namespace bench {

Loopback::Loopback(std::string bytes)
    : _bytes(std::move(bytes)), _listening(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in here{};
    here.sin_family = AF_INET;
    here.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof here;
    auto* address = reinterpret_cast<sockaddr*>(&here);
    if (bind(_listening, address, size) != 0 || listen(_listening, 1) != 0 ||
        getsockname(_listening, address, &size) != 0) {
        giveUp("cannot listen on the loopback interface");
    }
    _address = "127.0.0.1:" + std::to_string(ntohs(here.sin_port));
    _thread = std::jthread([this] { serve(); });
}

Loopback::~Loopback() {
    shutdown(_listening, SHUT_RDWR);
    _thread.join();
    close(_listening);
}

void Loopback::serve() const {
    const int client = accept(_listening, nullptr, nullptr);
    char request;
    while (recv(client, &request, 1, 0) == 1) {
        for (std::size_t sent = 0; sent < _bytes.size();) {
            const ssize_t count =
                send(client, _bytes.data() + sent, _bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0) {
                return;
            }
            sent += static_cast<std::size_t>(count);
        }
    }
    close(client);
}

} // namespace bench
