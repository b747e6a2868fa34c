// A client that means no harm, and what an attack costs it.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include <netinet/in.h>

namespace attack {

using Seconds = std::chrono::duration<double>;

// Both as numbers of this machine: 127.0.0.1 is 0x7F000001.
sockaddr_in endpoint(std::uint32_t address, unsigned short port);

// "Basic bmFtZTpwYXNzd29yZA=="
std::string basic(const std::string& nameAndPassword);

// A whole GetInstance of a host that does not exist or does; `credentials` may be empty.
std::string getInstance(const std::string& credentials);

// One connection from an address of 127.0.0.0/8 to a port of 127.0.0.1.
class Line {
public:
    Line(std::uint32_t source, unsigned short port);
    ~Line();
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    // The status of the response, and the seconds of Retry-After; status 0 when the connection
    // fails or nothing comes for ten seconds.
    struct Response {
        int status = 0;
        unsigned retryAfter = 0;
    };
    Response request(const std::string& bytes);

private:
    int _descriptor;
    bool _connected = false;
};

// What a client saw.
struct Seen {
    std::vector<Seconds> kept;   // of each request on a connection that it keeps
    std::vector<Seconds> opened; // of each request on a connection of its own
    unsigned refused = 0;        // requests that were not answered with 200
};

// Asks again and again until `stop`.
Seen watch(std::uint32_t source, unsigned short port, const std::string& credentials,
           const std::atomic<bool>& stop);

// How long a login takes whose password the server has to hash, tries after a 503 included;
// nothing has come of it when that is more than ten seconds.
Seconds logIn(std::uint32_t source, unsigned short port, const std::string& credentials);

// Of a part of the values, such as 0.99, none is larger.
Seconds quantile(std::vector<Seconds> values, double part);

} // namespace attack
