// Who sends a request.
#pragma once

#include "server/operation/Role.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace smisd {

struct User {
    std::string name;
    Role role = Role::reader;

    bool operator==(const User&) const = default;
};

struct LoginAttempt {
    std::string_view credentials; // the value of an Authorization header
    std::string address;          // of the client, numeric
    // Called when the attempt has to wait; returns after that time.
    std::function<void(std::chrono::milliseconds)> wait;
};

class Authenticator {
public:
    virtual ~Authenticator() = default;

    // The user whom the credentials prove; nothing when they prove none, are malformed or empty.
    // Thread-safe; may take tens of milliseconds, and longer by what it waits.
    virtual std::optional<User> userOf(const LoginAttempt& attempt) = 0;
};

} // namespace smisd
