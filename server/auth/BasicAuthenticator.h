// HTTP Basic authentication (RFC 7617) against a list of users.
#pragma once

#include "server/auth/Authenticator.h"
#include "server/auth/UsersFile.h"

#include <array>
#include <chrono>
#include <map>
#include <mutex>
#include <string>

namespace smisd {

// Remembers for a short time which credentials were right, so that a client does not pay for a
// password hash with each request. What it remembers is a keyed hash of them.
class BasicAuthenticator : public Authenticator {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds memory{60};

    explicit BasicAuthenticator(Users users, Clock::time_point (*now)() = Clock::now);

    // An unknown user costs as much time as a wrong password.
    std::optional<std::string> userOf(std::string_view credentials) override;

private:
    using Fingerprint = std::array<unsigned char, 32>;

    Fingerprint fingerprintOf(const std::string& text) const;
    bool isKnown(const Fingerprint& fingerprint);
    void remember(const Fingerprint& fingerprint);

    const Users _users;
    const std::string _nobody; // a hash that no password has
    Clock::time_point (*const _now)();
    Fingerprint _key{}; // constant after construction

    std::mutex _mutex;
    std::map<Fingerprint, Clock::time_point> _known; // guarded by _mutex: right until then
};

} // namespace smisd
