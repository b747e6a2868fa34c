#include "server/auth/UsersFile.h"

#include "server/auth/PasswordHash.h"
#include "server/operation/Utf8.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace smisd {
namespace {

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

} // namespace

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
        const size_t colon = line.find(':');
        const std::string name = line.substr(0, colon);
        const std::string hash = colon == std::string::npos ? "" : line.substr(colon + 1);
        if (!isLegalName(name) || !isPasswordHash(hash)) {
            fail(file, "line " + std::to_string(number) +
                           " is not of the form name:hash; make one with smisd hash-password");
        }
        if (!users.emplace(name, hash).second) {
            fail(file, "line " + std::to_string(number) + " repeats the user " + name);
        }
    }
    return users;
}

std::string usersFileLine(const std::string& name, const std::string& password) {
    if (!isLegalName(name)) {
        throw std::runtime_error("a user name is UTF-8 without colons and control characters");
    }
    return name + ":" + hashPassword(password);
}

} // namespace smisd
