// String from and to UTF-8 and streams.

#include <algorithm>
#include <cstring>
#include <iterator>
#include <ostream>
#include <string>
#include <utility>

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Utf.h>

namespace Pegasus {

// "...: <the 40 bytes before, as they are> 0xHH 0xHH ..."
[[noreturn]] static void throwMalformedUtf8(const unsigned char* begin, const unsigned char* bad,
                                            const unsigned char* end) {
    const std::ptrdiff_t mostBefore = 40, mostFrom = 11;
    const unsigned char* from = bad - std::min(bad - begin, mostBefore);
    while (from != bad && (*from & 0xC0) == 0x80) { // not into the middle of a character
        ++from;
    }
    std::string text = "The byte sequence starting at index " + std::to_string(bad - begin) +
                       " is not valid UTF-8 encoding: ";
    text.append(from, bad);
    for (const unsigned char* p = bad; p != bad + std::min(end - bad, mostFrom); ++p) {
        const char* const digits = "0123456789ABCDEF";
        text.append(" 0x").append({digits[*p >> 4], digits[*p & 0xF]});
    }
    throw Exception(String(text.data(), static_cast<Uint32>(text.size())));
}

// Whether all is ASCII, as in most texts: then it is copied. No branch in the loop, so that it
// works on many bytes at a time.
static bool widenAscii(const unsigned char* bytes, std::size_t count, Char16* out) {
    unsigned all = 0;
    for (std::size_t i = 0; i < count; ++i) {
        all |= bytes[i];
        out[i] = bytes[i];
    }
    return all < 0x80;
}

static std::size_t lengthOf(const char* str) {
    if (!str) {
        throw Exception("null pointer");
    }
    return std::strlen(str);
}

String::String(const char* str) : String(str, static_cast<Uint32>(lengthOf(str))) {}

String::String(const char* str, Uint32 n) {
    if (!str) {
        throw Exception("null pointer");
    }
    if (n == 0) {
        return;
    }
    String made;
    made._rep = StringRep::make(n); // no text has more units than bytes
    const auto* const begin = reinterpret_cast<const unsigned char*>(str);
    const unsigned char* const end = begin + n;
    Char16* out = made._rep->text();
    const unsigned char* p = begin;
    if (widenAscii(begin, n, out)) {
        p += n;
        out += n;
    }
    while (p != end) {
        const Uint32 c = Utf::readUtf8(p, end);
        if (c == Utf::malformed) {
            throwMalformedUtf8(begin, p, end);
        }
        out = Utf::writeUtf16(out, Utf::isSurrogate(c) ? 0xFFFD : c);
    }
    made._rep->setSize(static_cast<Uint32>(out - made._rep->text()));
    std::swap(_rep, made._rep);
}

CString String::getCString() const {
    const Char16* p = getChar16Data();
    const Char16* const end = p + size();
    char* const text = new char[std::size_t(size()) * 3 + 1]; // most bytes of a unit: 3
    char* out = text;
    for (; p != end && *p < 0x80; ++p) { // most texts have nothing else
        *out++ = static_cast<char>(*p);
    }
    while (p != end) {
        out = Utf::writeUtf8(out, Utf::readUtf16(p, end));
    }
    *out = '\0';
    return CString(text);
}

CString::CString(const CString& other) {
    if (!other._text) {
        return;
    }
    const std::size_t size = std::strlen(other._text) + 1;
    _text = new char[size];
    std::memcpy(_text, other._text, size);
}

CString::CString(CString&& other) noexcept : _text(std::exchange(other._text, nullptr)) {}

CString& CString::operator=(CString other) noexcept {
    std::swap(_text, other._text);
    return *this;
}

CString::~CString() {
    delete[] _text;
}

std::ostream& operator<<(std::ostream& os, const String& s) {
    std::string text;
    for (const Char16 *p = s.getChar16Data(), *end = p + s.size(); p != end; ++p) {
        const Uint32 c = *p;
        if (c >= 1 && c <= 0xFF) {
            text += static_cast<char>(c);
        } else {
            const char* const digits = "0123456789ABCDEF";
            text += "\\x";
            for (int shift = 12; shift >= 0; shift -= 4) {
                text += digits[(c >> shift) & 0xF];
            }
        }
    }
    return os << text;
}

} // namespace Pegasus
