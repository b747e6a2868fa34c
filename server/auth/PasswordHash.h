// Salted, memory-hard password hashes: Argon2id with libsodium's limits for interactive use.
//
// All functions are thread-safe. One hash takes 64 MiB and some tens of milliseconds.
#pragma once

#include <string>

namespace smisd {

// "$argon2id$v=19$...", 128 characters at most. Throws std::runtime_error without memory for it.
std::string hashPassword(const std::string& password);

// Compares in constant time.
bool verifyPassword(const std::string& hash, const std::string& password);

// Whether the text is a hash that verifyPassword understands.
bool isPasswordHash(const std::string& text);

} // namespace smisd
