#include "server/http/HttpMessage.h"

#include <algorithm>
#include <charconv>

#include <boost/beast/core/string.hpp>

namespace smisd {
namespace {

constexpr std::string_view plainCharacters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                             "0123456789-_.!~*'()";
constexpr char hexDigits[] = "0123456789ABCDEF";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isNamed(std::string_view text, std::string_view name) {
    if (text.size() == name.size() + 3 && isDigit(text[0]) && isDigit(text[1]) && text[2] == '-') {
        text.remove_prefix(3);
    }
    return boost::beast::iequals(text, name);
}

} // namespace

void HttpRequest::add(std::string_view name, std::string_view value) {
    for (HttpHeader& header : headers) {
        if (boost::beast::iequals(header.name, name)) {
            header.value.append(", ").append(value);
            return;
        }
    }
    headers.push_back({std::string(name), WipedString(value)});
}

std::optional<std::string_view> HttpRequest::header(std::string_view name) const {
    const auto found = std::find_if(headers.begin(), headers.end(), [&](const HttpHeader& entry) {
        return isNamed(entry.name, name);
    });
    return found == headers.end() ? std::nullopt : std::optional<std::string_view>(found->value);
}

std::string percentEncoded(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (plainCharacters.find(c) != std::string_view::npos) {
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
