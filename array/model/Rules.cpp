#include "array/model/Rules.h"

#include <array>

#include <arpa/inet.h>
#include <netinet/in.h>

#include "array/model/ErrorCode.h"
#include "array/model/ISCSIName.h"
#include "array/model/Text.h"

namespace array {

namespace {

constexpr std::size_t iSCSINameBytes = 223; // RFC 7143 section 4.2.7.1
constexpr std::size_t volumeNameDigits = 128;
constexpr std::size_t textBytes = 255;
constexpr std::size_t mostSecretBytes = 255; // that other implementations of CHAP take
constexpr std::size_t safeSecretBytes = 12;  // 96 bits

// What a name has besides letters and digits (RFC 7143 section 4.2.7.2); other characters outside
// of ASCII are left to prepareISCSIName().
bool isNameCharacter(char c) {
    return isLetter(c) || isDigit(c) || c == '-' || c == '.' || c == ':' || !isAscii(c);
}

// "2026-01.com.example" and what follows: a date, a dot and a naming authority.
bool isQualified(std::string_view rest) {
    if (rest.size() < 9 || !all(rest.substr(0, 4), isDigit) || rest[4] != '-' ||
        !all(rest.substr(5, 2), isDigit) || rest[7] != '.') {
        return false;
    }
    const std::string_view month = rest.substr(5, 2);
    return month >= "01" && month <= "12" && (isLetter(rest[8]) || isDigit(rest[8]));
}

bool isEui(std::string_view rest) {
    return rest.size() == 16 && all(rest, isHexDigit);
}

bool isNaa(std::string_view rest) {
    return (rest.size() == 16 || rest.size() == 32) && all(rest, isHexDigit);
}

struct Form {
    std::string_view prefix;
    bool (*isRest)(std::string_view);
    const char* rule;
};

constexpr std::array<Form, 3> nameForms = {{
    {"iqn.", isQualified,
     "after \"iqn.\" come a date, yyyy-mm, a dot and a domain name reversed (RFC 7143 section "
     "4.2.7.4)"},
    {"eui.", isEui, "after \"eui.\" come 16 hexadecimal digits (RFC 7143 section 4.2.7.5)"},
    {"naa.", isNaa, "after \"naa.\" come 16 or 32 hexadecimal digits (RFC 7143 section 4.2.7.6)"},
}};

[[noreturn]] void failISCSIName(std::string_view name, const std::string& rule) {
    fail(ErrorCode::BadName, array::quoted(name) + " is no iSCSI name: " + rule + ".");
}

bool isPlainText(std::string_view text) {
    return text.size() <= textBytes && !hasControls(text) && isUtf8(text);
}

} // namespace

std::string keptISCSIName(std::string_view name) {
    if (!all(name, isNameCharacter) || !isUtf8(name)) {
        failISCSIName(name, "it consists of letters, digits, \"-\", \".\" and \":\" (RFC 7143 "
                            "section 4.2.7.2)");
    }
    const PreparedName prepared = prepareISCSIName(name);
    if (prepared.brokenRule) {
        failISCSIName(name, prepared.brokenRule);
    }
    const std::string& kept = prepared.name;
    if (kept.size() > iSCSINameBytes) {
        failISCSIName(name, "it has " + std::to_string(kept.size()) +
                                " bytes, and 223 are allowed (RFC 7143 section 4.2.7.1)");
    }
    for (const Form& form : nameForms) {
        if (!kept.starts_with(form.prefix)) {
            continue;
        }
        if (!form.isRest(std::string_view(kept).substr(form.prefix.size()))) {
            failISCSIName(name, form.rule);
        }
        return kept;
    }
    failISCSIName(name, "it begins with \"iqn.\", \"eui.\" or \"naa.\" (RFC 7143 section 4.2.7.3)");
}

void checkISCSIName(std::string_view name) {
    if (keptISCSIName(name) != name) {
        failISCSIName(name, "names are kept in lower case and normalized (RFC 3722)");
    }
}

void checkVolumeName(std::string_view name) {
    if (name.empty() || name.size() % 2 != 0 || name.size() > volumeNameDigits ||
        !all(name, isHexDigit)) {
        fail(ErrorCode::BadName, array::quoted(name) +
                                     " is no volume name: it consists of an even number "
                                     "of hexadecimal digits, from 2 to 128.");
    }
}

void checkElementName(std::string_view text) {
    if (!isPlainText(text)) {
        fail(ErrorCode::BadText, array::quoted(text) +
                                     " is no element name: it has at most 255 bytes of "
                                     "UTF-8 and no control characters.");
    }
}

void checkNames(const ArrayNames& names) {
    for (const auto& [what, name] : {std::pair("host", std::string_view(names.host)),
                                     std::pair("system", std::string_view(names.system))}) {
        if (name.empty() || !isPlainText(name)) {
            fail(ErrorCode::BadName, array::quoted(name) + " cannot be the array's " + what +
                                         " name: it has 1 to 255 bytes of UTF-8 and no control "
                                         "characters.");
        }
    }
}

void checkEndpoint(const Endpoint& endpoint) {
    in6_addr address{};
    const bool isAddress = endpoint.address.find('\0') == std::string::npos &&
                           (inet_pton(AF_INET, endpoint.address.c_str(), &address) == 1 ||
                            inet_pton(AF_INET6, endpoint.address.c_str(), &address) == 1);
    if (!isAddress) {
        fail(ErrorCode::BadName, array::quoted(endpoint.address) + " is no IPv4 or IPv6 address.");
    }
    if (endpoint.port == 0) {
        fail(ErrorCode::BadName,
             "Port 0 of endpoint " + array::quoted(endpoint.address) + " is no TCP port.");
    }
}

void checkSecret(std::string_view secret, std::string_view owner) {
    const auto refuse = [&](const char* rule) {
        fail(ErrorCode::BadSecret,
             "The secret of " + array::quoted(owner) + " is refused: it " + rule);
    };
    if (secret.size() > mostSecretBytes) {
        refuse("has more than 255 bytes.");
    }
    if (hasControls(secret)) {
        refuse("has control characters.");
    }
    if (!isUtf8(secret)) {
        refuse("is not UTF-8.");
    }
}

bool isWeakSecret(std::string_view secret) {
    return !secret.empty() && secret.size() < safeSecretBytes;
}

void checkValues(const Endpoint& endpoint) {
    checkEndpoint(endpoint);
}

void checkValues(const Volume& volume) {
    checkVolumeName(volume.name);
    checkElementName(volume.elementName);
}

void checkValues(const Initiator& initiator) {
    checkISCSIName(initiator.name);
    checkSecret(initiator.secret, initiator.name);
}

void checkValues(const Target& target) {
    checkISCSIName(target.name);
    checkSecret(target.secret, target.name);
}

} // namespace array
