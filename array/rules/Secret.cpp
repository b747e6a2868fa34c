#include "array/rules/Secret.h"

#include "array/Characters.h"
#include "array/ErrorCode.h"
#include "array/engine/Text.h"

namespace array {

namespace {

constexpr std::size_t MOST_BYTES = 255; // of a CHAP secret that other implementations take
constexpr std::size_t SAFE_BYTES = 12;  // 96 bits

} // namespace

void checkSecret(std::string_view secret, std::string_view owner) {
    const auto refuse = [&](const char* rule) {
        fail(ErrorCode::BadSecret,
             "The secret of " + array::quoted(owner) + " is refused: it " + rule);
    };
    if (secret.size() > MOST_BYTES)
        refuse("has more than 255 bytes.");
    if (hasControls(secret))
        refuse("has control characters.");
    if (!isUtf8(secret))
        refuse("is not UTF-8.");
}

bool isWeakSecret(std::string_view secret) {
    return !secret.empty() && secret.size() < SAFE_BYTES;
}

} // namespace array
