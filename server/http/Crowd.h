// Sessions, counted by where they come from.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <set>
#include <string>

namespace smisd {

class Session;

// Where a connection comes from.
struct Origin {
    explicit Origin(const std::string& numericAddress);

    std::string address;       // numeric
    std::string group;         // the address, or the /64 of an IPv6 one
    std::string neighbourhood; // the /24, or the /48
};

// The I/O thread's. Each call takes a time that grows with the number of neighbourhoods, and
// largestFor() one that grows with the number of sessions.
class Crowd {
public:
    void add(Session& session); // nothing is added if it throws
    void remove(const Session& session);

    std::size_t size() const { return _sessions.size(); }
    const std::set<Session*>& sessions() const { return _sessions; }

    // Whom to end for a newcomer: one from where there are most, if there are more of them than
    // there would be of the newcomer's. Neighbourhoods are compared first, then the groups of the
    // newcomer's own. Of those it is who keeps the server waiting, and then who has been there for
    // longest. Null when nobody has to go for the newcomer.
    Session* largestFor(const Origin& newcomer) const;

    // Who has kept the server waiting since before `then`: for a next request, or else for the rest
    // of one, or else for room to send to. Of these one from where there are most, and of those who
    // does so for longest.
    Session* waitingSince(std::chrono::steady_clock::time_point then) const;

private:
    struct Neighbourhood {
        std::size_t count = 0;
        std::map<std::string, std::size_t> groups;
    };

    std::size_t countFrom(const Origin& origin) const;
    Session* oldestOf(const std::string& group) const;

    std::set<Session*> _sessions;
    std::map<std::string, Neighbourhood> _neighbourhoods;
};

} // namespace smisd
