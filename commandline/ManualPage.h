#pragma once

#include <iosfwd>
#include <span>

namespace CLI {
class App;
}

namespace commandline {

struct ExitStatus {
    int value;
    const char* meaning;
};

// What a manual page says beside the definitions of the command line.
struct ManualPage {
    const char* purpose;     // in one line, such as "administers a storage array"
    const char* description; // sentences that follow the program's own
    std::span<const ExitStatus> exitStatuses;
};

// Writes the manual page of a program as source of troff, for section 8.
void writeManualPage(std::ostream& out, const CLI::App& program, const ManualPage& page);

} // namespace commandline
