#include "server/auth/AddressGroup.h"

#include <algorithm>

#include <boost/asio/ip/address.hpp>

namespace smisd {
namespace {

// The first bytes of an IPv6 address, or else `other`.
std::string networkOf(const std::string& address, std::size_t bytes, const std::string& other) {
    if (address.find(':') == std::string::npos) {
        return other;
    }
    boost::system::error_code error;
    const auto parsed = boost::asio::ip::make_address_v6(address, error);
    if (error || parsed.is_v4_mapped()) {
        return other;
    }
    auto network = parsed.to_bytes();
    std::fill(network.begin() + static_cast<std::ptrdiff_t>(bytes), network.end(),
              static_cast<unsigned char>(0));
    return boost::asio::ip::make_address_v6(network).to_string() + "/" + std::to_string(8 * bytes);
}

} // namespace

std::string addressGroup(const std::string& address) {
    return networkOf(address, 8, address);
}

std::string neighbourhood(const std::string& address) {
    const std::size_t dot = address.rfind('.');
    return networkOf(address, 6,
                     dot == std::string::npos ? address : address.substr(0, dot) + ".0/24");
}

} // namespace smisd
