#include "tests/wire/support/Http.h"

#include <chrono>
#include <stdexcept>

#include <boost/asio.hpp>

namespace asio = boost::asio;

namespace wire {
namespace {

constexpr std::chrono::seconds patience{10};

} // namespace

std::string roundTrip(unsigned short port, const std::string& bytes) {
    asio::io_context io;
    asio::ip::tcp::socket socket(io);
    socket.connect({asio::ip::address_v4::loopback(), port});
    boost::system::error_code ignored; // the server may answer before it has read all
    asio::write(socket, asio::buffer(bytes), ignored);
    socket.shutdown(asio::ip::tcp::socket::shutdown_send, ignored);

    std::string response;
    std::string buffer(65536, '\0');
    bool open = true;
    while (open) {
        socket.async_read_some(asio::buffer(buffer),
                               [&](boost::system::error_code error, std::size_t count) {
                                   response.append(buffer, 0, count);
                                   open = !error;
                               });
        io.restart();
        io.run_for(patience);
        if (!io.stopped()) {
            throw std::runtime_error("no end after 10 seconds, only: " + response);
        }
    }
    return response;
}

} // namespace wire
