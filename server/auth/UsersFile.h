// The file of users: a line "name:role:hash" for each; empty lines and lines that start with # are
// passed over. A line "name:hash" is an administrator's. Names are compared as they stand.
#pragma once

#include "server/operation/Role.h"

#include <filesystem>
#include <map>
#include <string>

namespace smisd {

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
