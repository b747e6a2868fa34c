// Who sends a request, and whether the password is right.
#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "server/auth/LoginQueue.h"
#include "server/auth/LoginThrottle.h"
#include "server/auth/Users.h"
#include "server/auth/Wiping.h"
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
};

// What became of it: a user, or a time after which the client may try again because nobody has
// looked at the password, or neither when the credentials prove nothing.
struct Judgement {
    std::optional<User> user{};
    std::optional<std::chrono::seconds> tryAgainAfter{};

    bool operator==(const Judgement&) const = default;
};

class Authenticator {
public:
    virtual ~Authenticator() = default;

    // Calls `done` once: before it returns when that takes microseconds, or else later and by
    // another thread. Thread-safe.
    using Done = std::function<void(Judgement)>;
    virtual void judge(const LoginAttempt& attempt, Done done) = 0;
};

struct FailedLogin {
    std::string address;
    std::string user; // "" when there is no such user: what was sent may be a password
    const char* reason;
};

// HTTP Basic authentication (RFC 7617) against a list of users. Remembers which credentials were
// right, so that a client pays for a password hash at its first request only. What it remembers is
// a keyed hash of them. Others wait in a LoginQueue for PasswordThread.
class BasicAuthenticator : public Authenticator {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::minutes memory{60}; // since the last use

    // `onFailure` is told of each login that failed, by any thread.
    explicit BasicAuthenticator(
        Users users, std::function<void(const FailedLogin&)> onFailure = [](const auto&) {},
        Clock::time_point (*now)() = Clock::now);

    // Missing, malformed and remembered credentials are judged at once. An unknown user costs as
    // much time as a wrong password. After failures from the same address an attempt pauses.
    void judge(const LoginAttempt& attempt, Done done) override;

    // From now on these are the users. Who is gone, or has another password, is not remembered any
    // more. Thread-safe.
    void replaceUsers(Users users);

    // Logins that wait. Thread-safe.
    std::size_t waiting() const;

    // Turns away who has waited for too long, or else looks at the password whose turn it is.
    void serveNext();

private:
    friend class PasswordThread; // waits for the next turn
    using Fingerprint = std::array<unsigned char, 32>;

    struct Login {
        std::string user;
        Clock::time_point end; // of its being known
    };

    struct Waiting {
        std::string address;
        WipedText secret; // "name:password"
        Done done;
    };

    Fingerprint fingerprintOf(std::string_view text) const;
    std::optional<User> knownUser(std::string_view name, const Fingerprint& fingerprint);
    void wait(const LoginAttempt& attempt, std::string_view secret, Done done);
    std::unique_ptr<Waiting> taken(std::uint64_t number);

    Judgement lookIfPossible(const Waiting& login);
    Judgement look(const Waiting& login);

    const std::function<void(const FailedLogin&)> _onFailure;
    const std::string _nobodysHash; // no password has it
    Clock::time_point (*const _now)();
    Fingerprint _key{}; // constant after construction
    LoginThrottle _throttle;

    mutable std::mutex _mutex; // guards what follows
    std::condition_variable _added;
    Users _users;
    std::map<Fingerprint, Login> _known; // all of _users, with the passwords that they have there
    LoginQueue _queue;
    std::map<std::uint64_t, std::unique_ptr<Waiting>> _waiting; // by their numbers in the queue
    std::uint64_t _lastNumber = 0;
};

// Hashes the passwords that wait, one after the other, until it is destroyed; logins that wait then
// are forgotten.
class PasswordThread {
public:
    // The authenticator outlives it.
    explicit PasswordThread(BasicAuthenticator& authenticator);
    ~PasswordThread();
    PasswordThread(const PasswordThread&) = delete;
    PasswordThread& operator=(const PasswordThread&) = delete;

private:
    void run();
    void serveNext();

    BasicAuthenticator& _authenticator;
    bool _ending = false; // guarded by the authenticator's mutex
    std::thread _thread;
};

} // namespace smisd
