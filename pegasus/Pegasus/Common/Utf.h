// One character at a time, between code points, UTF-8 (RFC 3629) and UTF-16 (RFC 2781). Internal.

#pragma once

#include <Pegasus/Common/Char16.h>

namespace Pegasus::Utf {

const Uint32 malformed = 0xFFFFFFFF;

// Reads one character and moves `p` behind it. Overlong, truncated and otherwise malformed bytes
// give `malformed` and leave `p`; an encoded surrogate is read as what it is.
inline Uint32 readUtf8(const unsigned char*& p, const unsigned char* end) {
    const Uint32 lead = *p;
    if (lead < 0x80) {
        ++p;
        return lead;
    }
    const int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || end - p < length) {
        return malformed;
    }
    Uint32 c = lead & (0xFFU >> (length + 1));
    for (int i = 1; i < length; ++i) {
        if ((p[i] & 0xC0) != 0x80) {
            return malformed;
        }
        c = c << 6 | (p[i] & 0x3FU);
    }
    const Uint32 smallest = length == 4 ? 0x10000 : length == 3 ? 0x800 : 0x80;
    if (c < smallest || c > 0x10FFFF) {
        return malformed;
    }
    p += length;
    return c;
}

// Writes at most four bytes and returns the place behind them.
inline char* writeUtf8(char* out, Uint32 c) {
    const auto tail = [c](int shift) { return static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        *out++ = static_cast<char>(c);
    } else if (c < 0x800) {
        *out++ = static_cast<char>(0xC0 | c >> 6);
        *out++ = tail(0);
    } else if (c < 0x10000) {
        *out++ = static_cast<char>(0xE0 | c >> 12);
        *out++ = tail(6);
        *out++ = tail(0);
    } else {
        *out++ = static_cast<char>(0xF0 | c >> 18);
        *out++ = tail(12);
        *out++ = tail(6);
        *out++ = tail(0);
    }
    return out;
}

inline bool isSurrogate(Uint32 c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

// Reads one character and moves `p` behind it; a surrogate without its partner is read as itself.
inline Uint32 readUtf16(const Char16*& p, const Char16* end) {
    const Uint32 first = *p++;
    if (first < 0xD800 || first > 0xDBFF || p == end) {
        return first;
    }
    const Uint32 second = *p;
    if (second < 0xDC00 || second > 0xDFFF) {
        return first;
    }
    ++p;
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

// Writes one or two units and returns the place behind them.
inline Char16* writeUtf16(Char16* out, Uint32 c) {
    if (c < 0x10000) {
        *out++ = static_cast<Uint16>(c);
    } else {
        *out++ = static_cast<Uint16>(0xD800 + ((c - 0x10000) >> 10));
        *out++ = static_cast<Uint16>(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
    return out;
}

} // namespace Pegasus::Utf
