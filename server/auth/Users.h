// The file of users, and the password hashes in it.
#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "server/operation/Dispatcher.h"

namespace smisd {

// Salted, memory-hard password hashes: Argon2id with libsodium's limits for interactive use.
// Thread-safe. One hash takes 64 MiB and some tens of milliseconds.

// "$argon2id$v=19$...", 128 characters at most. Throws std::runtime_error without memory for it.
std::string hashPassword(const std::string& password);

// Compares in constant time. Throws std::bad_alloc without memory for a hash.
bool verifyPassword(const std::string& hash, const std::string& password);

// Whether the text is a hash that verifyPassword understands.
bool isPasswordHash(const std::string& text);

// The file of users: a line "name:role:hash" for each; empty lines and lines that start with # are
// passed over. A line "name:hash" is an administrator's. Names are compared as they stand.
struct Account {
    std::string hash; // of the password
    Role role = Role::administrator;
};
using Users = std::map<std::string, Account, std::less<>>; // by name

// Throws std::runtime_error that names the file, the line and the remedy: it cannot be read, others
// than its owner may read or write it, or a line is not of that form.
Users readUsersFile(const std::filesystem::path& file);

// A line for the file, without its end. Throws std::runtime_error for a name that is empty, is not
// UTF-8, or has a colon or control characters.
std::string usersFileLine(const std::string& name, Role role, const std::string& password);

} // namespace smisd
