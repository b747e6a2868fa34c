#pragma once

#include <optional>

#include <Pegasus/Common/String.h>

namespace Pegasus {

// A number of 64 bits, signed or unsigned; zero is not negative.
struct WholeNumber {
    bool negative;
    Uint64 magnitude;

    bool operator==(const WholeNumber&) const = default;
};

// A whole number as object paths write it: "-" perhaps, then decimal digits without leading zeros,
// or "0x" and hexadecimal digits. Nothing if the text is of another form or out of range. Internal.
std::optional<WholeNumber> wholeNumber(const String& text);

} // namespace Pegasus
