#include "server/auth/Users.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <new>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <boost/algorithm/string/split.hpp>
#include <sodium.h>

#include "server/operation/Utf8.h"

namespace smisd {

namespace fs = std::filesystem;

namespace {

void requireSodium() {
    static const bool ready = sodium_init() >= 0;
    if (!ready) {
        throw std::runtime_error("libsodium has no source of randomness");
    }
}

[[noreturn]] void fail(const fs::path& file, const std::string& why) {
    throw std::runtime_error("users file " + file.string() + ": " + why);
}

void requirePrivate(const fs::path& file) {
    std::error_code error;
    const fs::perms permissions = fs::status(file, error).permissions();
    if (error) {
        fail(file, error.message());
    }
    if ((permissions & (fs::perms::group_all | fs::perms::others_all)) != fs::perms::none) {
        fail(file, "others than its owner may read or write it; run chmod 600 on it");
    }
}

bool isLegalName(const std::string& name) {
    return !name.empty() && isUtf8(name) && std::none_of(name.begin(), name.end(), [](char c) {
        return c == ':' || static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    });
}

// The user of "name:role:hash" or "name:hash"; nothing for another form.
std::optional<Users::value_type> userOf(const std::string& line) {
    std::vector<std::string> fields;
    boost::split(fields, line, [](char c) { return c == ':'; });
    const auto role = fields.size() == 3 ? roleNamed(fields[1]) : Role::administrator;
    const bool isLegal = (fields.size() == 2 || fields.size() == 3) && role &&
                         isLegalName(fields.front()) && isPasswordHash(fields.back());
    return isLegal ? std::optional<Users::value_type>({fields.front(), {fields.back(), *role}})
                   : std::nullopt;
}

// "$argon2id$v=19$m=65536,t=2,p=1$SALT$DIGEST", as hashPassword() makes it.
struct HashParts {
    unsigned long long passes = 0;
    std::size_t memory = 0; // bytes
    std::array<unsigned char, crypto_pwhash_SALTBYTES> salt{};
    std::array<unsigned char, 32> digest{};
};

template<class Bytes>
bool readBase64(std::string_view text, Bytes& bytes) {
    std::size_t length = 0;
    return sodium_base642bin(bytes.data(), bytes.size(), text.data(), text.size(), nullptr, &length,
                             nullptr, sodium_base64_VARIANT_ORIGINAL_NO_PADDING) == 0 &&
           length == bytes.size();
}

// For libsodium's own comparison a lack of memory is a wrong password, so that it serves only for
// hashes that other programs have made.
std::optional<HashParts> partsOf(const std::string& hash) {
    HashParts parts;
    unsigned long kibibytes = 0;
    int end = 0;
    if (std::sscanf(hash.c_str(), "$argon2id$v=19$m=%lu,t=%llu,p=1$%n", &kibibytes, &parts.passes,
                    &end) != 2 ||
        end == 0) {
        return std::nullopt;
    }
    parts.memory = std::size_t{kibibytes} * 1024;
    const std::string_view rest = std::string_view(hash).substr(static_cast<std::size_t>(end));
    const std::size_t dollar = rest.find('$');
    const bool isWhole = dollar != std::string_view::npos &&
                         readBase64(rest.substr(0, dollar), parts.salt) &&
                         readBase64(rest.substr(dollar + 1), parts.digest);
    return isWhole ? std::optional(parts) : std::nullopt;
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
    if (!isPasswordHash(hash)) {
        return false;
    }
    const std::optional<HashParts> parts = partsOf(hash);
    if (!parts) {
        return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
    }
    decltype(HashParts::digest) digest{};
    if (crypto_pwhash(digest.data(), digest.size(), password.data(), password.size(),
                      parts->salt.data(), parts->passes, parts->memory,
                      crypto_pwhash_ALG_ARGON2ID13) != 0) {
        throw std::bad_alloc();
    }
    return sodium_memcmp(digest.data(), parts->digest.data(), digest.size()) == 0;
}

bool isPasswordHash(const std::string& text) {
    return text.size() < crypto_pwhash_STRBYTES &&
           crypto_pwhash_str_needs_rehash(text.c_str(), crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                          crypto_pwhash_MEMLIMIT_INTERACTIVE) != -1;
}

Users readUsersFile(const fs::path& file) {
    requirePrivate(file);
    std::ifstream in(file);
    if (!in) {
        fail(file, "cannot be read");
    }
    Users users;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        const auto user = userOf(line);
        if (!user) {
            fail(file, "line " + std::to_string(number) +
                           " is not of the form name:role:hash; make one with smisd hash-password");
        }
        if (!users.insert(*user).second) {
            fail(file, "line " + std::to_string(number) + " repeats the user " + user->first);
        }
    }
    return users;
}

std::string usersFileLine(const std::string& name, Role role, const std::string& password) {
    if (!isLegalName(name)) {
        throw std::runtime_error("a user name is UTF-8 without colons and control characters");
    }
    return name + ":" + std::string(nameOf(role)) + ":" + hashPassword(password);
}

} // namespace smisd
