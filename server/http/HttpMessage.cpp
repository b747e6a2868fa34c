#include "server/http/HttpMessage.h"

#include <algorithm>
#include <boost/beast/core/string.hpp>

namespace smisd {
namespace {

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

void HttpRequest::add(const std::string& name, const std::string& value) {
    for (HttpHeader& header : headers) {
        if (boost::beast::iequals(header.name, name)) {
            header.value += ", " + value;
            return;
        }
    }
    headers.push_back({name, value});
}

std::optional<std::string_view> HttpRequest::header(std::string_view name) const {
    const auto found = std::find_if(headers.begin(), headers.end(), [&](const HttpHeader& entry) {
        return isNamed(entry.name, name);
    });
    return found == headers.end() ? std::nullopt : std::optional<std::string_view>(found->value);
}

} // namespace smisd
