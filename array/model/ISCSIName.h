#pragma once

#include <string>
#include <string_view>

namespace array {

struct PreparedName {
    std::string name; // in UTF-8
    const char* brokenRule =
        nullptr; // what is wrong with the name that was given; then there is none
};

// An iSCSI name in the form in which names are kept and compared: as the stringprep profile of
// RFC 3722 makes it of UTF-8 text without U+0000. One that is far too long is
// refused; otherwise length and form are not looked at.
PreparedName prepareISCSIName(std::string_view name);

} // namespace array
