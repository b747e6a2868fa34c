#pragma once

#include <string>

#include "array/model/Records.h"

namespace array {

// The class and the serial that an id is made of, and back.
constexpr CLASSID_e classOf(Id id) {
    return static_cast<CLASSID_e>(id >> 24);
}
constexpr std::uint32_t serialOf(Id id) {
    return id & 0x00FFFFFF;
}
constexpr Id makeId(CLASSID_e objectClass, std::uint32_t serial) {
    return static_cast<Id>(objectClass) << 24 | serial;
}

// The id that DRAVObjectID gives for a text that is no key text. It names nothing: no class has the
// number 255.
constexpr Id noKeyId = 0xFFFFFFFF;

// "Ovrin:" and the id as eight upper-case hexadecimal digits.
std::string keyText(Id id);

// What an error calls an id that a client gave: its key text, or for noKeyId what is wrong with the
// client's text, which nobody has any more.
std::string givenKey(Id id);

} // namespace array
