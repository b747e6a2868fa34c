// What strangers and users may do to a server, and what of it is bearable.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/attack/Swarm.h"

namespace attack {

// Users of the server that is attacked; what stands behind the colon is the password.
inline const std::string goodUser = "good:bears-good-will"; // an administrator
inline const std::string reader = "reader:bears-ill-will";  // what attacks with a password use
// Whose passwords nobody has used yet, as many as `newUsers`
std::string newUser(unsigned number);
constexpr unsigned newUsers = 8;

struct Target {
    unsigned short port;
};

struct Attack {
    std::string name;
    // Attacks until `stop`.
    std::function<void(const Target& target, const std::atomic<bool>& stop)> run;
    // Where the good client asks from.
    std::uint32_t goodSource = loopback(100, 0, 1);
    // Whether new users log in meanwhile, each from an address of its own.
    bool logins = false;
    // More resident memory than before the attack, MiB at most.
    unsigned memory = 48;
    // And so much more when it is over; 0 where that is not judged.
    unsigned left = 0;
    // What smisd is started with, beside users.
    std::vector<std::string> options{};
};

// Each once, in the order in which the table lists them.
std::vector<Attack> attacks();

} // namespace attack
