#include <chrono>
#include <iomanip>
#include <ostream>
#include <thread>

#include "array/database/StateDirectory.h"
#include "cli/EventReader.h"
#include "cli/Listing.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

constexpr auto pollInterval = std::chrono::milliseconds(200);

// An event as people read it; a line that is no event as it is.
void printForPeople(std::ostream& out, const std::string& line) {
    const Json event = Json::parse(line, nullptr, false);
    if (!event.is_object()) {
        out << line << '\n';
        return;
    }
    out << event.value("time", "") << "  " << std::left << std::setw(14) << event.value("type", "")
        << "  " << event.value("text", "");
    if (const std::string keyValues = event.value("keyValues", ""); !keyValues.empty()) {
        out << "  " << keyValues;
    }
    out << '\n';
}

void printAll(Context& context, EventReader& events) {
    for (std::string line; events.next(line);) {
        if (context.json) {
            context.out << line << '\n';
        } else {
            printForPeople(context.out, line);
        }
    }
    context.out.flush();
}

struct Events {
    bool follow = false;

    void arguments(CLI::App& app) {
        app.add_flag("--follow", follow, "Wait for more, until this program is ended");
    }

    void run(Context& context) const {
        const std::filesystem::path file = array::eventsIn(context.array().directory());
        EventReader earlier(file.string() + ".1");
        printAll(context, earlier);
        EventReader events(file);
        printAll(context, events);
        while (follow && context.out) {
            std::this_thread::sleep_for(pollInterval);
            printAll(context, events);
        }
    }
};

} // namespace

void addEventsCommand(CLI::App& app, Context& context) {
    add<Events>(app, context, "events",
                "Show what happened, oldest first; with --json as one object a line");
}

} // namespace cli
