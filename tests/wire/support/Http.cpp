#include "tests/wire/support/Http.h"

#include <boost/asio.hpp>

#include <chrono>
#include <regex>
#include <stdexcept>

namespace asio = boost::asio;

namespace wire {
namespace {

constexpr std::chrono::seconds patience{10};

bool isComplete(const std::string& response) {
    const std::size_t headEnd = response.find("\r\n\r\n");
    if (headEnd == std::string::npos) {
        return false;
    }
    const std::string head = response.substr(0, headEnd + 2);
    std::smatch length;
    if (std::regex_search(head, length, std::regex("content-length: (\\d+)\r\n"))) {
        return response.size() >= headEnd + 4 + std::stoul(length[1]);
    }
    const bool chunked = head.find("transfer-encoding: chunked\r\n") != std::string::npos;
    const std::size_t lastChunk = response.find("\r\n0\r\n", headEnd);
    return chunked && lastChunk != std::string::npos &&
           response.find("\r\n\r\n", lastChunk) != std::string::npos;
}

} // namespace

std::string roundTrip(unsigned short port, const std::string& bytes) {
    asio::io_context io;
    asio::ip::tcp::socket socket(io);
    socket.connect({asio::ip::address_v4::loopback(), port});
    boost::system::error_code ignored; // the server may answer before it has read all
    asio::write(socket, asio::buffer(bytes), ignored);

    std::string response;
    std::string buffer(65536, '\0');
    bool open = true;
    while (open && !isComplete(response)) {
        socket.async_read_some(asio::buffer(buffer),
                               [&](boost::system::error_code error, std::size_t count) {
                                   response.append(buffer, 0, count);
                                   open = !error;
                               });
        io.restart();
        io.run_for(patience);
        if (!io.stopped()) {
            throw std::runtime_error("no response after 10 seconds, only: " + response);
        }
    }
    return response;
}

} // namespace wire
