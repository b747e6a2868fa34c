#include "array/model/Ids.h"

namespace array {

std::string keyText(Id id) {
    std::string text = "Ovrin:00000000";
    for (std::size_t at = text.size(); id != 0; id >>= 4) {
        text[--at] = "0123456789ABCDEF"[id & 0xF];
    }
    return text;
}

std::string givenKey(Id id) {
    return id == noKeyId ? "A key that is not \"Ovrin:\" and eight upper-case hexadecimal digits"
                         : keyText(id);
}

} // namespace array
