#include "array/model/ISCSIName.h"

#include <stringprep.h>

#include "array/model/Text.h"

namespace array {

namespace {

// More than any name that is kept can need, which has 223 bytes. Stringprep takes time that grows
// with the square of the length.
constexpr std::size_t mostBytes = 4 * 223;

const char* ruleOf(int result) {
    switch (result) {
    case STRINGPREP_CONTAINS_UNASSIGNED:
        return "it has a character that Unicode 3.2 does not have (RFC 3722)";
    case STRINGPREP_BIDI_BOTH_L_AND_RAL:
    case STRINGPREP_BIDI_LEADTRAIL_NOT_RAL:
        return "it is written in both directions (RFC 3722 section 7)";
    default:
        return "it has a character that no iSCSI name has (RFC 3722 section 6)";
    }
}

} // namespace

PreparedName prepareISCSIName(std::string_view name) {
    if (all(name, isAscii)) {
        PreparedName prepared{std::string(name)};
        std::ranges::transform(name, prepared.name.begin(), lower);
        return prepared;
    }
    if (name.size() > mostBytes) {
        return {{}, "it is too long; 223 bytes are allowed (RFC 7143 section 4.2.7.1)"};
    }
    if (hasHidden(name)) {
        return {{}, "it has a character that is not shown"};
    }
    std::string text(name);
    text.resize(name.size() * 18 + 1); // no character becomes longer than that
    const int result =
        stringprep(text.data(), text.size(), STRINGPREP_NO_UNASSIGNED, stringprep_iscsi);
    if (result != STRINGPREP_OK) {
        return {{}, ruleOf(result)};
    }
    text.resize(text.find('\0'));
    return {text};
}

} // namespace array
