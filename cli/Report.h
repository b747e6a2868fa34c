#pragma once

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "cli/Listing.h"

namespace cli {

// A bar on a terminal's last line for work that takes over a second. Without a terminal, or without
// a total, nothing is written. The bar is wiped at the end.
class Progress {
public:
    using Clock = std::chrono::steady_clock;

    Progress(std::ostream& err, bool isTerminal, std::uint64_t total, Clock::time_point now);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // So much of the total is done.
    void update(std::uint64_t done, Clock::time_point now);

private:
    std::ostream& _err;
    const bool _enabled;
    const std::uint64_t _total;
    Clock::time_point _next; // when the bar is drawn next
    bool _drawn = false;
};

// All about one object: values and listings, each under a title for people and as a member for
// programs, in the order in which they were added.
class Report {
public:
    // Values as an object of members and their values.
    void add(const std::string& title, const char* member, Json values);
    void add(const std::string& title, const char* member, Listing listing);

    void print(Context& context) const;

private:
    struct Section {
        std::string title;
        const char* member;
        Json values;
        std::vector<Listing> listings; // one or none
    };

    Json toJson() const;
    static void printForPeople(std::ostream& out, const Section& section);

    std::vector<Section> _sections;
};

} // namespace cli
