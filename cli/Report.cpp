#include "cli/Report.h"

#include <ostream>

#include "cli/Aligned.h"

namespace cli {

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
        if (&section != &_sections.front())
            context.out << '\n';
        printForPeople(context.out, section);
    }
}

Json Report::toJson() const {
    Json document = Json::object();
    for (const Section& section : _sections)
        document[section.member] =
            section.listings.empty() ? section.values : section.listings.front().toJson();
    return document;
}

void Report::printForPeople(std::ostream& out, const Section& section) {
    out << section.title << '\n';
    if (!section.listings.empty()) {
        section.listings.front().printTable(out, "  ");
        return;
    }
    std::vector<std::vector<std::string>> lines;
    for (const auto& [name, value] : section.values.items())
        lines.push_back({name, plainText(value)});
    for (const std::string& line : aligned(lines))
        out << "  " << line << '\n';
}

} // namespace cli
