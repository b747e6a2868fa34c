#include "server/auth/Authenticator.h"

#include <exception>
#include <new>
#include <utility>

#include <boost/algorithm/string/predicate.hpp>
#include <sodium.h>
#include <spdlog/spdlog.h>

#include "server/auth/Users.h"

namespace smisd {
namespace {

constexpr std::string_view scheme = "Basic ";

// After which a client may try again: to be in a shorter queue, to find more memory.
constexpr std::chrono::seconds queueTime{2};
constexpr std::chrono::seconds memoryTime{5};

constexpr std::chrono::milliseconds faultPause{100};

// Random text that nobody knows.
std::string randomText() {
    std::string bytes(32, '\0');
    randombytes_buf(bytes.data(), bytes.size());
    return bytes;
}

// "name:password" of "Basic bmFtZTpwYXNzd29yZA=="; empty when it is none.
WipedText decoded(std::string_view credentials) {
    WipedText secret;
    if (!boost::algorithm::istarts_with(credentials, scheme)) {
        return secret;
    }
    credentials.remove_prefix(scheme.size());
    secret.text.resize(credentials.size());
    std::size_t length = 0;
    if (sodium_base642bin(reinterpret_cast<unsigned char*>(secret.text.data()), secret.text.size(),
                          credentials.data(), credentials.size(), " ", &length, nullptr,
                          sodium_base64_VARIANT_ORIGINAL) != 0) {
        length = 0;
    }
    secret.text.resize(length);
    return secret;
}

} // namespace

BasicAuthenticator::BasicAuthenticator(Users users,
                                       std::function<void(const FailedLogin&)> onFailure,
                                       Clock::time_point (*now)())
    : _onFailure(std::move(onFailure)), _nobodysHash(hashPassword(randomText())), _now(now),
      _throttle(now), _users(std::move(users)) {
    randombytes_buf(_key.data(), _key.size());
}

void BasicAuthenticator::judge(const LoginAttempt& attempt, Done done) {
    if (attempt.credentials.empty()) {
        done({});
        return;
    }
    const WipedText secret = decoded(attempt.credentials);
    const std::size_t colon = secret.text.find(':');
    if (colon == std::string::npos) {
        _onFailure({attempt.address, "", "malformed credentials"});
        done({});
        return;
    }
    const std::string_view name = std::string_view(secret.text).substr(0, colon);
    if (std::optional<User> user = knownUser(name, fingerprintOf(secret.text))) {
        done({std::move(user)});
    } else {
        wait(attempt, secret.text, std::move(done));
    }
}

// Being used, a login goes on being known: the client pays for one hash, however long it stays.
std::optional<User> BasicAuthenticator::knownUser(std::string_view name,
                                                  const Fingerprint& fingerprint) {
    const Clock::time_point now = _now();
    const std::lock_guard lock(_mutex);
    const auto user = _users.find(name);
    const auto known = _known.find(fingerprint);
    if (user == _users.end() || known == _known.end() || now >= known->second.end) {
        return std::nullopt;
    }
    known->second.end = now + memory;
    return User{user->first, user->second.role};
}

void BasicAuthenticator::wait(const LoginAttempt& attempt, std::string_view secret, Done done) {
    const std::optional<std::chrono::milliseconds> pause = _throttle.admit(attempt.address);
    if (!pause) {
        done({{}, LoginThrottle::longestWait});
        return;
    }
    Done turnedAway;
    {
        const Clock::time_point now = _now();
        const std::lock_guard lock(_mutex);
        const std::uint64_t number = ++_lastNumber;
        auto login = std::make_unique<Waiting>();
        login->address = attempt.address;
        login->secret.text = secret;
        login->done = std::move(done);
        _waiting.emplace(number, std::move(login));
        try {
            if (const auto out = _queue.add(number, attempt.address, now + *pause, now)) {
                turnedAway = std::move(taken(*out)->done);
            }
        } catch (const std::bad_alloc&) {
            turnedAway = std::move(taken(number)->done);
        }
    }
    _added.notify_one();
    if (turnedAway) {
        turnedAway({{}, queueTime});
    }
}

// With the lock held.
std::unique_ptr<BasicAuthenticator::Waiting> BasicAuthenticator::taken(std::uint64_t number) {
    return std::move(_waiting.extract(number).mapped()); // takes no memory
}

void BasicAuthenticator::serveNext() {
    std::unique_lock lock(_mutex);
    const Clock::time_point now = _now();
    const std::optional<std::uint64_t> late = _queue.takeLate(now);
    const std::optional<std::uint64_t> next = late ? late : _queue.takeNext(now);
    if (!next) {
        return;
    }
    const std::unique_ptr<Waiting> login = taken(*next);
    lock.unlock();
    login->done(late ? Judgement{{}, queueTime} : lookIfPossible(*login));
}

// Whatever goes wrong, the client's session has to be told, by which it lives.
Judgement BasicAuthenticator::lookIfPossible(const Waiting& login) {
    try {
        return look(login);
    } catch (const std::exception&) {
        return {{}, memoryTime};
    }
}

// The address pauses after a wrong password, but not after one that nobody could look at.
Judgement BasicAuthenticator::look(const Waiting& login) {
    const std::string& text = login.secret.text;
    const std::size_t colon = text.find(':');
    const std::string name = text.substr(0, colon);
    const WipedText password{text.substr(colon + 1)};
    std::optional<Account> account;
    {
        const std::lock_guard lock(_mutex);
        if (const auto found = _users.find(name); found != _users.end()) {
            account = found->second;
        }
    }
    bool right = false;
    try {
        right = verifyPassword(account ? account->hash : _nobodysHash, password.text) && account;
    } catch (const std::bad_alloc&) {
        return {{}, memoryTime};
    }
    if (!right) {
        _throttle.failed(login.address);
        {
            const std::lock_guard lock(_mutex);
            _queue.failed(login.address);
        }
        _onFailure({login.address, account ? name : "", "unknown user or wrong password"});
        return {};
    }
    const std::lock_guard lock(_mutex);
    const auto user = _users.find(name); // may have changed meanwhile
    if (user != _users.end() && user->second.hash == account->hash) {
        _known[fingerprintOf(text)] = {name, _now() + memory};
    }
    _queue.succeeded(login.address);
    return {User{name, account->role}};
}

void BasicAuthenticator::replaceUsers(Users users) {
    const std::lock_guard lock(_mutex);
    std::erase_if(_known, [&](const auto& entry) {
        const std::string& name = entry.second.user;
        const auto found = users.find(name);
        return found == users.end() || found->second.hash != _users.find(name)->second.hash;
    });
    _users = std::move(users);
}

std::size_t BasicAuthenticator::waiting() const {
    const std::lock_guard lock(_mutex);
    return _queue.size();
}

BasicAuthenticator::Fingerprint BasicAuthenticator::fingerprintOf(std::string_view text) const {
    Fingerprint fingerprint{};
    crypto_generichash(fingerprint.data(), fingerprint.size(),
                       reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                       _key.data(), _key.size());
    return fingerprint;
}

PasswordThread::PasswordThread(BasicAuthenticator& authenticator)
    : _authenticator(authenticator), _thread([this] { run(); }) {}

PasswordThread::~PasswordThread() {
    {
        const std::lock_guard lock(_authenticator._mutex);
        _ending = true;
    }
    _authenticator._added.notify_one();
    _thread.join();
    _authenticator._waiting.clear();
    _authenticator._queue = LoginQueue();
}

void PasswordThread::run() {
    std::unique_lock lock(_authenticator._mutex);
    while (!_ending) {
        const auto next = _authenticator._queue.nextTurn();
        if (!next) {
            _authenticator._added.wait(lock);
        } else if (*next > _authenticator._now()) {
            _authenticator._added.wait_until(lock, *next);
        } else {
            lock.unlock();
            serveNext();
            lock.lock();
        }
    }
}

// Without memory even for less than a hash the login stays in the queue, or its client is cut off.
void PasswordThread::serveNext() {
    try {
        _authenticator.serveNext();
    } catch (const std::exception& error) {
        spdlog::error("a password was not looked at: {}", error.what());
        std::this_thread::sleep_for(faultPause);
    }
}

} // namespace smisd
