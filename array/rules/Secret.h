#ifndef ARRAY_RULES_SECRET_H
#define ARRAY_RULES_SECRET_H

#include <string_view>

namespace array {

// A secret has at most 255 bytes of UTF-8 and no control characters. Throws
// DRAVOperationFailedException with ErrorCode::BadSecret, which names `owner`, never the secret.
void checkSecret(std::string_view secret, std::string_view owner);

// True for a secret that is accepted, but shorter than CHAP needs to be safe: 96 bits (RFC 7143
// section 9.2.1). No secret at all is none that is weak.
bool isWeakSecret(std::string_view secret);

} // namespace array

#endif
