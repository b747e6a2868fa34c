// Who sends a request, and whether the password is right.
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "server/auth/LoginThrottle.h"
#include "server/auth/Users.h"
#include "server/operation/Dispatcher.h"

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

struct FailedLogin {
    std::string address;
    std::string user; // "" when there is no such user: what was sent may be a password
    const char* reason;
};

// HTTP Basic authentication (RFC 7617) against a list of users. Remembers for a short time which
// credentials were right, so that a client does not pay for a password hash with each request. What
// it remembers is a keyed hash of them.
class BasicAuthenticator : public Authenticator {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds memory{60};

    // `onFailure` is told of each login that failed, by any thread.
    explicit BasicAuthenticator(
        Users users, std::function<void(const FailedLogin&)> onFailure = [](const auto&) {},
        Clock::time_point (*now)() = Clock::now);

    // An unknown user costs as much time as a wrong password. After failures from the same address
    // an attempt waits for its turn, unless its credentials are remembered.
    std::optional<User> userOf(const LoginAttempt& attempt) override;

private:
    using Fingerprint = std::array<unsigned char, 32>;

    Fingerprint fingerprintOf(const std::string& text) const;
    bool isKnown(const Fingerprint& fingerprint);
    void remember(const Fingerprint& fingerprint);

    const Users _users;
    const std::function<void(const FailedLogin&)> _onFailure;
    const std::string _nobodysHash; // no password has it
    Clock::time_point (*const _now)();
    Fingerprint _key{}; // constant after construction
    LoginThrottle _throttle;

    std::mutex _mutex;
    std::map<Fingerprint, Clock::time_point> _known; // guarded by _mutex: right until then
};

} // namespace smisd
