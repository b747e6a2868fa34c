#include "server/http/PercentEncoding.h"

#include <charconv>

namespace smisd {
namespace {

constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                   "0123456789-_.!~*'()";
constexpr char hexDigits[] = "0123456789ABCDEF";

} // namespace

std::string percentEncoded(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (plain.find(c) != std::string_view::npos) {
            out += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            out += {'%', hexDigits[byte >> 4U], hexDigits[byte & 15U]};
        }
    }
    return out;
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string out;
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            out += text[at];
            continue;
        }
        const std::string_view digits = text.substr(at + 1, 2);
        unsigned byte = 0;
        const char* end = digits.data() + digits.size();
        if (digits.size() < 2 || std::from_chars(digits.data(), end, byte, 16).ptr != end) {
            return std::nullopt;
        }
        out += static_cast<char>(byte);
        at += 2;
    }
    return out;
}

} // namespace smisd
