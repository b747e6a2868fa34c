#include <algorithm>
#include <string>
#include <string_view>

#include <Pegasus/Common/HostName.h>
#include <arpa/inet.h>

namespace Pegasus {

static bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

static bool allDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), isDigit);
}

static bool fitsLabel(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_';
}

// Empty or a number up to `most`.
static bool isNumberUpTo(std::string_view text, unsigned long most) {
    return allDigits(text) && text.size() <= 6 &&
           (text.empty() || std::stoul(std::string(text)) <= most);
}

static bool isLegalName(std::string_view name) {
    int labels = 0;
    bool octets = true, lastAllDigits = false;
    for (std::size_t begin = 0; begin <= name.size(); ++labels) {
        const std::size_t end = std::min(name.find('.', begin), name.size());
        const std::string_view label = name.substr(begin, end - begin);
        if (label.empty() || label[0] == '-' ||
            !std::all_of(label.begin(), label.end(), fitsLabel)) {
            return false;
        }
        lastAllDigits = allDigits(label);
        octets = octets && isNumberUpTo(label, 255);
        begin = end + 1;
    }
    return lastAllDigits ? octets && labels == 4 : true;
}

static bool isLegalIPv6(std::string_view address) {
    in6_addr parsed;
    return inet_pton(AF_INET6, std::string(address).c_str(), &parsed) == 1;
}

bool isLegalHost(const String& host) {
    std::string text(host.size(), '\0');
    const Char16* const units = host.getChar16Data();
    std::transform(units, units + host.size(), text.begin(),
                   [](Uint16 c) { return c < 0x80 ? static_cast<char>(c) : '?'; });
    const std::string_view all(text);
    const bool bracketed = !all.empty() && all[0] == '[';
    const std::size_t nameEnd = bracketed ? all.find(']') : std::min(all.find(':'), all.size());
    if (nameEnd == std::string_view::npos) {
        return false;
    }
    const std::string_view rest = all.substr(bracketed ? nameEnd + 1 : nameEnd);
    const bool legalRest = rest.empty() || (rest[0] == ':' && isNumberUpTo(rest.substr(1), 65535));
    return legalRest && (bracketed ? isLegalIPv6(all.substr(1, nameEnd - 1))
                                   : isLegalName(all.substr(0, nameEnd)));
}

} // namespace Pegasus
