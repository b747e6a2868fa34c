#include "engine/ManagedObject.h"

namespace Pegasus {

namespace {

constexpr Uint32 NO_DIGIT = 16;

Uint32 digitOf(Uint16 c) {
    if (c >= '0' && c <= '9')
        return c - Uint32('0');
    if (c >= 'A' && c <= 'F')
        return c - Uint32('A') + 10;
    if (c >= 'a' && c <= 'f')
        return c - Uint32('a') + 10;
    return NO_DIGIT;
}

} // namespace

ManagedObject::~ManagedObject() = default;

String ManagedObject::hexToBin(const String& text) {
    if (text.size() % 2 != 0)
        return String();
    String key;
    key.reserveCapacity(text.size() / 2);
    const Char16* digits = text.getChar16Data();
    for (Uint32 i = 0; i < text.size(); i += 2) {
        const Uint32 high = digitOf(digits[i]);
        const Uint32 low = digitOf(digits[i + 1]);
        if (high == NO_DIGIT || low == NO_DIGIT)
            return String();
        key.append(Char16(static_cast<Uint16>(high << 4 | low)));
    }
    return key;
}

} // namespace Pegasus
