#include "cli/SecretInput.h"

#include <istream>
#include <stdexcept>
#include <string.h>

#include <bsd/readpassphrase.h>

#include "array/model/Text.h"

namespace cli {

namespace {

std::string askOnTerminal(const std::string& prompt) {
    char buffer[1024]; // longer than any secret that the array accepts
    if (readpassphrase((array::escaped(prompt) + ": ").c_str(), buffer, sizeof buffer,
                       RPP_REQUIRE_TTY) == nullptr) {
        throw std::runtime_error("The secret cannot be read from the terminal.");
    }
    std::string secret(buffer);
    explicit_bzero(buffer, sizeof buffer);
    return secret;
}

} // namespace

std::string readSecret(Context& context, const std::string& prompt) {
    std::string secret;
    if (context.inIsTerminal) {
        secret = askOnTerminal(prompt);
    } else {
        std::getline(context.in, secret);
    }
    if (secret.empty()) {
        throw std::runtime_error("No secret was given on standard input.");
    }
    return secret;
}

std::string readNewSecret(Context& context, const std::string& prompt) {
    std::string secret = readSecret(context, prompt);
    if (context.inIsTerminal && askOnTerminal("The same again") != secret) {
        throw std::runtime_error("The two secrets differ; nothing was changed.");
    }
    return secret;
}

} // namespace cli
