#include "cli/Units.h"

#include <charconv>
#include <iomanip>
#include <sstream>

#include <CLI/CLI.hpp>

namespace cli {

namespace {

constexpr const char* units[] = {"B", "KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};

std::uint16_t portFromText(const std::string& text) {
    std::uint16_t port = 0;
    const char* end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, port);
    if (error != std::errc() || stopped != end)
        throw CLI::ValidationError("\"" + text + "\" is no port: a number below 65536 is needed");
    return port;
}

} // namespace

std::string sizeText(std::uint64_t bytes) {
    std::size_t unit = 0;
    while (unit + 1 < std::size(units) && (bytes >> 10 * (unit + 1)) > 0)
        ++unit;
    const std::uint64_t one = std::uint64_t(1) << 10 * unit;
    std::ostringstream text;
    if (bytes % one == 0)
        text << bytes / one;
    else
        text << std::fixed << std::setprecision(1)
             << static_cast<double>(bytes) / static_cast<double>(one);
    text << ' ' << units[unit];
    return text.str();
}

std::string portalText(const array::Endpoint& endpoint) {
    const bool bracketed = endpoint.address.find(':') != std::string::npos;
    return (bracketed ? "[" + endpoint.address + "]" : endpoint.address) + ":" +
           std::to_string(endpoint.port);
}

array::Endpoint portalFromText(const std::string& text) {
    array::Endpoint endpoint;
    const auto bracket = text.find(']');
    const auto colon = text.rfind(':');
    const bool isBareIPv6 = bracket == std::string::npos && text.find(':') != colon;
    const bool hasPort = colon != std::string::npos && !isBareIPv6 &&
                         (bracket == std::string::npos || colon > bracket);
    endpoint.address = text.substr(0, hasPort ? colon : std::string::npos);
    if (hasPort)
        endpoint.port = portFromText(text.substr(colon + 1));
    if (endpoint.address.starts_with('[') && endpoint.address.ends_with(']'))
        endpoint.address = endpoint.address.substr(1, endpoint.address.size() - 2);
    return endpoint;
}

std::string counted(std::uint64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace cli
