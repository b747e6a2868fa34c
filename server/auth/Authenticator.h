// Who sends a request.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace smisd {

class Authenticator {
public:
    virtual ~Authenticator() = default;

    // The user whom the value of an Authorization header proves; nothing when it proves none, is
    // malformed, or empty. Thread-safe; may take tens of milliseconds.
    virtual std::optional<std::string> userOf(std::string_view credentials) = 0;
};

} // namespace smisd
