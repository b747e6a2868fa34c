// Text from strangers that is to become a Pegasus::String, which takes UTF-8 alone.
#pragma once

#include <string_view>

namespace smisd {

// Whether the bytes are UTF-8 without overlong forms and surrogates.
bool isUtf8(std::string_view bytes);

} // namespace smisd
