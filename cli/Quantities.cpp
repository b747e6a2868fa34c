#include "cli/Quantities.h"

#include <algorithm>
#include <charconv>
#include <iomanip>
#include <optional>
#include <sstream>
#include <string_view>
#include <strings.h>

#include <CLI/Error.hpp>

namespace cli {

namespace {

constexpr const char* units[] = {"B", "KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};

struct SizeUnit {
    const char* name;
    std::uint64_t bytes;
};

constexpr SizeUnit sizeUnits[] = {
    {"", 1},
    {"B", 1},
    {"KiB", std::uint64_t(1) << 10},
    {"MiB", std::uint64_t(1) << 20},
    {"GiB", std::uint64_t(1) << 30},
    {"TiB", std::uint64_t(1) << 40},
    {"PiB", std::uint64_t(1) << 50},
    {"EiB", std::uint64_t(1) << 60},
    {"KB", 1'000},
    {"MB", 1'000'000},
    {"GB", 1'000'000'000},
    {"TB", 1'000'000'000'000},
    {"PB", 1'000'000'000'000'000},
    {"EB", 1'000'000'000'000'000'000},
};

// The number at the begin of a text, in decimal; moves the text behind it.
std::optional<std::uint64_t> takeNumber(std::string_view& text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text = {stop, end};
    return number;
}

} // namespace

std::string sizeText(std::uint64_t bytes) {
    std::size_t unit = 0;
    while (unit + 1 < std::size(units) && (bytes >> 10 * (unit + 1)) > 0) {
        ++unit;
    }
    const std::uint64_t one = std::uint64_t(1) << 10 * unit;
    std::ostringstream text;
    if (bytes % one == 0) {
        text << bytes / one;
    } else {
        text << std::fixed << std::setprecision(1)
             << static_cast<double>(bytes) / static_cast<double>(one);
    }
    text << ' ' << units[unit];
    return text.str();
}

std::uint64_t sizeFromText(const std::string& text) {
    std::string_view unit = text;
    const auto number = takeNumber(unit);
    const auto* const found = std::ranges::find_if(sizeUnits, [&](const SizeUnit& each) {
        return strcasecmp(each.name, std::string(unit).c_str()) == 0;
    });
    std::uint64_t bytes = 0;
    if (!number || found == std::end(sizeUnits) ||
        __builtin_mul_overflow(*number, found->bytes, &bytes)) {
        throw CLI::ValidationError("\"" + text +
                                   "\" is no size: a number of bytes is needed, or a whole number "
                                   "with a unit such as MB, MiB, GB or GiB");
    }
    return bytes;
}

std::uint64_t numberFromText(const std::string& text, std::uint64_t limit) {
    std::string_view rest = text;
    const auto number = takeNumber(rest);
    if (!number || !rest.empty() || *number > limit) {
        throw CLI::ValidationError("\"" + text + "\" is no whole number from 0 to " +
                                   std::to_string(limit));
    }
    return *number;
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
    if (hasPort) {
        endpoint.port = static_cast<std::uint16_t>(numberFromText(text.substr(colon + 1), 65535));
    }
    if (endpoint.address.starts_with('[') && endpoint.address.ends_with(']')) {
        endpoint.address = endpoint.address.substr(1, endpoint.address.size() - 2);
    }
    return endpoint;
}

std::string counted(std::uint64_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace cli
