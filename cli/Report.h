#ifndef CLI_REPORT_H
#define CLI_REPORT_H

#include <string>
#include <vector>

#include "cli/Listing.h"

namespace cli {

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

#endif
