#include "server/auth/Users.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <stdexcept>
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
