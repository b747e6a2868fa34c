#include "server/auth/Authenticator.h"

#include <utility>

#include <boost/algorithm/string/predicate.hpp>
#include <sodium.h>

#include "server/auth/Users.h"

namespace smisd {
namespace {

constexpr std::string_view scheme = "Basic ";

// Random text that nobody knows.
std::string randomText() {
    std::string bytes(32, '\0');
    randombytes_buf(bytes.data(), bytes.size());
    return bytes;
}

// A secret text that is wiped when it is destroyed.
struct Secret {
    std::string text;
    ~Secret() { sodium_memzero(text.data(), text.size()); }
};

// "name:password" of "Basic bmFtZTpwYXNzd29yZA=="; empty when it is none.
Secret decoded(std::string_view credentials) {
    Secret secret;
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
    : _users(std::move(users)), _onFailure(std::move(onFailure)),
      _nobodysHash(hashPassword(randomText())), _now(now), _throttle(now) {
    randombytes_buf(_key.data(), _key.size());
}

std::optional<User> BasicAuthenticator::userOf(const LoginAttempt& attempt) {
    if (attempt.credentials.empty()) {
        return std::nullopt;
    }
    const auto fail = [&](const std::string& user, const char* reason) {
        _onFailure({attempt.address, user, reason});
        return std::nullopt;
    };
    const Secret secret = decoded(attempt.credentials);
    const std::size_t colon = secret.text.find(':');
    if (colon == std::string::npos) {
        return fail("", "malformed credentials");
    }
    const auto found = _users.find(secret.text.substr(0, colon));
    const bool exists = found != _users.end();
    const Fingerprint fingerprint = fingerprintOf(secret.text);
    if (exists && isKnown(fingerprint)) {
        return User{found->first, found->second.role};
    }
    const auto wait = _throttle.admit(attempt.address);
    if (!wait) {
        return fail(exists ? found->first : "", "too many attempts wait already");
    }
    if (wait->count() > 0) {
        attempt.wait(*wait);
    }
    const Secret password{secret.text.substr(colon + 1)};
    if (!verifyPassword(exists ? found->second.hash : _nobodysHash, password.text) || !exists) {
        _throttle.failed(attempt.address);
        return fail(exists ? found->first : "", "unknown user or wrong password");
    }
    remember(fingerprint);
    return User{found->first, found->second.role};
}

BasicAuthenticator::Fingerprint BasicAuthenticator::fingerprintOf(const std::string& text) const {
    Fingerprint fingerprint{};
    crypto_generichash(fingerprint.data(), fingerprint.size(),
                       reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                       _key.data(), _key.size());
    return fingerprint;
}

bool BasicAuthenticator::isKnown(const Fingerprint& fingerprint) {
    const std::lock_guard lock(_mutex);
    const auto found = _known.find(fingerprint);
    return found != _known.end() && _now() < found->second;
}

// There is one fingerprint for each user at most.
void BasicAuthenticator::remember(const Fingerprint& fingerprint) {
    const std::lock_guard lock(_mutex);
    _known[fingerprint] = _now() + memory;
}

} // namespace smisd
