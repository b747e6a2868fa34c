// UTF-8, in which everything outside of Pegasus' types is written.
#pragma once

#include <string>
#include <string_view>

#include <Pegasus/Common/String.h>
#include <Pegasus/Common/Utf.h>

namespace smisd {

// Whether the bytes are UTF-8 without overlong forms and surrogates. What strangers send must be
// checked first: a Pegasus::String takes nothing else.
inline bool isUtf8(std::string_view bytes) {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const end = at + bytes.size();
    while (at != end) {
        const Pegasus::Uint32 character = Pegasus::Utf::readUtf8(at, end);
        if (character == Pegasus::Utf::malformed || Pegasus::Utf::isSurrogate(character)) {
            return false;
        }
    }
    return true;
}

// Throws Pegasus::Exception for malformed text.
inline Pegasus::String fromUtf8(std::string_view text) {
    return text.empty() ? Pegasus::String()
                        : Pegasus::String(text.data(), static_cast<Pegasus::Uint32>(text.size()));
}

inline std::string toUtf8(const Pegasus::String& text) {
    return std::string(text.getCString());
}

} // namespace smisd
