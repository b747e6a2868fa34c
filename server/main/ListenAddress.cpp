#include "server/main/Options.h"

#include <boost/asio/ip/address.hpp>

#include <charconv>

namespace smisd {

std::optional<ListenAddress> parseListenAddress(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string::npos) {
        return std::nullopt;
    }
    std::string host = text.substr(0, colon);
    const bool bracketed = host.size() > 2 && host.front() == '[' && host.back() == ']';
    if (bracketed) {
        host = host.substr(1, host.size() - 2);
    } else if (host == "localhost") {
        host = "127.0.0.1";
    }
    ListenAddress address{host, 0};
    const char* end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data() + colon + 1, end, address.port);
    boost::system::error_code error;
    const auto numeric = boost::asio::ip::make_address(host, error);
    if (parsed.ec != std::errc() || parsed.ptr != end || error || numeric.is_v6() != bracketed) {
        return std::nullopt;
    }
    return address;
}

bool isLoopback(const ListenAddress& address) {
    return boost::asio::ip::make_address(address.address).is_loopback();
}

} // namespace smisd
