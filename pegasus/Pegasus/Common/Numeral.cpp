#include <limits>

#include <Pegasus/Common/Numeral.h>

namespace Pegasus {

static Uint32 digitOf(Uint32 c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return 16;
}

std::optional<WholeNumber> wholeNumber(const String& text) {
    const Char16 *p = text.getChar16Data(), *const end = p + text.size();
    const bool minus = p != end && *p == '-';
    if (minus) {
        ++p;
    }
    const bool hex = end - p > 2 && p[0] == '0' && (p[1] == 'x' || p[1] == 'X');
    if (p == end || (*p == '0' && end - p > 1 && !hex)) {
        return std::nullopt;
    }
    if (hex) {
        p += 2;
    }

    const Uint64 base = hex ? 16 : 10;
    const Uint64 most = minus ? Uint64(1) << 63 : std::numeric_limits<Uint64>::max();
    Uint64 magnitude = 0;
    for (; p != end; ++p) {
        const Uint64 digit = digitOf(*p);
        if (digit >= base || magnitude > (most - digit) / base) {
            return std::nullopt;
        }
        magnitude = magnitude * base + digit;
    }
    return WholeNumber{minus && magnitude != 0, magnitude};
}

} // namespace Pegasus
