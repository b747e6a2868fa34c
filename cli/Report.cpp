#include "cli/Report.h"

#include <algorithm>
#include <ostream>
#include <string>

#include "cli/Tree.h"

namespace cli {

namespace {

constexpr auto patience = std::chrono::seconds(1);
constexpr auto interval = std::chrono::milliseconds(100);
constexpr std::uint64_t barWidth = 50;

} // namespace

Progress::Progress(std::ostream& err, bool isTerminal, std::uint64_t total, Clock::time_point now)
    : _err(err), _enabled(isTerminal && total > 0), _total(total), _next(now + patience) {}

Progress::~Progress() {
    if (_drawn) {
        _err << "\r\033[K" << std::flush;
    }
}

void Progress::update(std::uint64_t done, Clock::time_point now) {
    if (!_enabled || now < _next) {
        return;
    }
    _next = now + interval;
    _drawn = true;
    const double part = static_cast<double>(std::min(done, _total)) / static_cast<double>(_total);
    std::string bar(static_cast<std::size_t>(part * barWidth), '#');
    bar.resize(barWidth, ' ');
    _err << "\r[" << bar << "] " << static_cast<int>(part * 100) << " %" << std::flush;
}

void Report::add(const std::string& title, const char* member, Json values) {
    _sections.push_back({title, member, std::move(values), {}});
}

void Report::add(const std::string& title, const char* member, Listing listing) {
    _sections.push_back({title, member, Json(), {std::move(listing)}});
}

void Report::print(Context& context) const {
    if (context.json) {
        printJson(context.out, toJson());
        return;
    }
    for (const Section& section : _sections) {
        if (&section != &_sections.front()) {
            context.out << '\n';
        }
        printForPeople(context.out, section);
    }
}

Json Report::toJson() const {
    Json document = Json::object();
    for (const Section& section : _sections) {
        document[section.member] =
            section.listings.empty() ? section.values : section.listings.front().toJson();
    }
    return document;
}

void Report::printForPeople(std::ostream& out, const Section& section) {
    out << section.title << '\n';
    if (!section.listings.empty()) {
        section.listings.front().printTable(out, "  ");
        return;
    }
    std::vector<std::vector<std::string>> lines;
    for (const auto& [name, value] : section.values.items()) {
        lines.push_back({name, plainText(value)});
    }
    for (const std::string& line : aligned(lines)) {
        out << "  " << line << '\n';
    }
}

} // namespace cli
