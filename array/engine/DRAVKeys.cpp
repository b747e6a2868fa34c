#include "engine/DRAVKeys.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

#include "array/ErrorCode.h"
#include "array/KeyText.h"
#include "array/engine/Text.h"

namespace Pegasus {

namespace {

constexpr std::string_view PREFIX = "Ovrin:";
constexpr std::size_t DIGITS = 8;

// The number that a text consists of; zero characters are no number.
bool parse(std::string_view text, int base, Uint32& value) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && stop == end;
}

bool isKeyText(std::string_view text) {
    return text.size() == PREFIX.size() + DIGITS && text.starts_with(PREFIX) &&
           std::ranges::none_of(text.substr(PREFIX.size()),
                                [](char c) { return c >= 'a' && c <= 'f'; });
}

} // namespace

DRAVObjectKey::DRAVObjectKey(Uint32 id) : String(array::fromUtf8(array::keyText(id))) {}

DRAVObjectID::DRAVObjectID(const String& keyText) : id(0) {
    const std::string text = array::toUtf8(keyText);
    if (!isKeyText(text) || !parse(std::string_view(text).substr(PREFIX.size()), 16, id))
        array::fail(array::ErrorCode::BadKeyText,
                    array::quoted(text) + " is not the key text of an object: \"Ovrin:\" and eight "
                                          "upper-case hexadecimal digits.");
}

DRAVObjectIDDecimal::DRAVObjectIDDecimal(const String& decimal) : id(0) {
    const std::string text = array::toUtf8(decimal);
    if (!parse(text, 10, id))
        array::fail(array::ErrorCode::BadNumber,
                    array::quoted(text) + " is not a decimal number below 4294967296.");
}

} // namespace Pegasus
