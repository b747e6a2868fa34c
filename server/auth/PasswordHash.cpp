#include "server/auth/PasswordHash.h"

#include <sodium.h>

#include <array>
#include <stdexcept>

namespace smisd {
namespace {

void requireSodium() {
    static const bool ready = sodium_init() >= 0;
    if (!ready) {
        throw std::runtime_error("libsodium has no source of randomness");
    }
}

} // namespace

std::string hashPassword(const std::string& password) {
    requireSodium();
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    if (crypto_pwhash_str(hash.data(), password.data(), password.size(),
                          crypto_pwhash_OPSLIMIT_INTERACTIVE,
                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
        throw std::runtime_error("not enough memory to hash a password");
    }
    return hash.data();
}

bool verifyPassword(const std::string& hash, const std::string& password) {
    requireSodium();
    return isPasswordHash(hash) &&
           crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

bool isPasswordHash(const std::string& text) {
    return text.size() < crypto_pwhash_STRBYTES &&
           crypto_pwhash_str_needs_rehash(text.c_str(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != -1;
}

} // namespace smisd
