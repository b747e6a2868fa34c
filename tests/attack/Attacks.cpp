#include "tests/attack/Attacks.h"

#include "tests/attack/GoodClient.h"

namespace attack {
namespace {

constexpr unsigned hashMemory = 64; // MiB, of the one password that is looked at

std::function<void(const Target&, const std::atomic<bool>&)> by(const Behaviour& behaviour) {
    return [behaviour](const Target& target, const std::atomic<bool>& stop) {
        swarm(target.port, behaviour, stop);
    };
}

// Before a password

// Sends requests without credentials, one after the other, and reads no answer.
Behaviour pipelining(unsigned connections, unsigned addresses) {
    std::string many;
    for (int i = 0; i < 20; ++i) {
        many += getInstance("");
    }
    return {
        .connections = connections,
        .source = [addresses](unsigned number) { return loopback(0, 0, 2 + number % addresses); },
        .request = [many](unsigned, unsigned) { return many; },
        .reads = false};
}

// Guesses the good user's password, each time another one.
Behaviour guessing(unsigned connections, unsigned addresses) {
    return {.connections = connections,
            .source =
                [addresses](unsigned number) {
                    const unsigned address = number % addresses;
                    return loopback(1, address / 250, 2 + address % 250);
                },
            .request =
                [](unsigned number, unsigned turn) {
                    return getInstance(
                        basic("good:guess" + std::to_string(number) + "-" + std::to_string(turn)));
                }};
}

} // namespace

std::string newUser(unsigned number) {
    return "new" + std::to_string(number) + ":never-logged-in";
}

std::vector<Attack> attacks() {
    std::vector<Attack> all = {
        {.name = "none",
         .run = [](const Target&, const std::atomic<bool>& stop) { stop.wait(false); },
         .logins = true,
         .memory = hashMemory + 16},
        {.name = "256 connections of an address that pipeline and do not read",
         .run = by(pipelining(256, 1))},
        {.name = "2,000 of them", .run = by(pipelining(2000, 1))},
        {.name = "2,000 of them, of 64 addresses", .run = by(pipelining(2000, 64))},
        {.name = "128 addresses that guess passwords",
         .run = by(guessing(128, 128)),
         .logins = true,
         .memory = hashMemory + 32},
        {.name = "4,096 addresses that guess passwords",
         .run = by(guessing(4096, 4096)),
         .logins = true,
         .memory = hashMemory + 32},
        {.name = "a guesser behind the client's own address",
         .run = by(guessing(4, 1)),
         .goodSource = loopback(1, 0, 2),
         .memory = hashMemory + 32},
    };
    return all;
}

} // namespace attack
