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

// "Ovrin:" and the id as eight upper-case hexadecimal digits.
std::string keyText(Id id);

} // namespace array
