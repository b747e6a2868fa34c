#pragma once

#include <functional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "array/model/Snapshot.h"
#include "cli/Context.h"

namespace cli {

using Json = nlohmann::ordered_json;

// How a value is shown to people.
using CellText = std::function<std::string(const Json&)>;

// Strings as they are, numbers in decimal, "yes" and "no", lists with commas.
std::string plainText(const Json& value);

// A number of bytes with its unit.
std::string bytesText(const Json& value);

// "set" and "not set".
std::string setText(const Json& value);

struct Column {
    const char* heading; // for people
    const char* member;  // for programs
    CellText text = plainText;
};

// Rows of values that people get as an aligned table and programs as a list of objects.
class Listing {
public:
    explicit Listing(std::vector<Column> columns);

    // One value for each column.
    void add(std::vector<Json> row);

    void print(Context& context) const;

    // The rows as a list of objects.
    Json toJson() const;

    // The rows as a table. A listing without rows says so.
    void printTable(std::ostream& out, const std::string& indent = "") const;

private:
    std::vector<Column> _columns;
    std::vector<std::vector<Json>> _rows;
};

// A JSON document for programs.
void printJson(std::ostream& out, const Json& document);

// The id of an object that was made: its key text, for programs {"key": ...}.
void printCreated(Context& context, array::Id id);

// The listings that more than one command shows; of these objects, in this order.
Listing initiatorListing(const array::Snapshot& snapshot, const std::vector<array::Id>& initiators);
Listing unitListing(const array::Snapshot& snapshot, const std::vector<array::Id>& units);
Listing sessionListing(const array::Snapshot& snapshot, const std::vector<array::Id>& sessions);

// A size of a unit's volume, which is null if the volume is gone.
std::string unitSizeText(const Json& size);

// The portals of a session's connections.
Json portalsOf(const array::Snapshot& snapshot, array::Id session);

} // namespace cli
