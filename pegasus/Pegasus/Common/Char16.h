#pragma once

#include <Pegasus/Common/Linkage.h>

namespace Pegasus {

// A UTF-16 code unit.
class PEGASUS_COMMON_LINKAGE Char16 {
public:
    constexpr Char16() : _rep(0) {}
    constexpr Char16(Uint16 x) : _rep(x) {}
    Char16& operator=(Uint16 x) {
        _rep = x;
        return *this;
    }
    constexpr operator Uint16() const { return _rep; }

private:
    Uint16 _rep;
};

inline Boolean operator==(const Char16& x, const Char16& y) {
    return Uint16(x) == Uint16(y);
}
inline Boolean operator==(const Char16& x, char y) {
    return Uint16(x) == static_cast<unsigned char>(y);
}
inline Boolean operator==(char x, const Char16& y) {
    return y == x;
}
inline Boolean operator!=(const Char16& x, const Char16& y) {
    return !(x == y);
}
inline Boolean operator!=(const Char16& x, char y) {
    return !(x == y);
}
inline Boolean operator!=(char x, const Char16& y) {
    return !(x == y);
}

} // namespace Pegasus
