#include "cli/Listing.h"

#include <ostream>

#include "array/description/Entries.h"
#include "array/model/Ids.h"
#include "cli/Quantities.h"
#include "cli/Tree.h"

namespace cli {

std::string plainText(const Json& value) {
    if (value.is_boolean()) {
        return value.get<bool>() ? "yes" : "no";
    }
    if (value.is_array()) {
        std::string text;
        for (const Json& element : value) {
            text += (text.empty() ? "" : ", ") + plainText(element);
        }
        return text;
    }
    return value.is_string() ? value.get<std::string>() : value.dump();
}

std::string bytesText(const Json& value) {
    return sizeText(value.get<std::uint64_t>());
}

std::string setText(const Json& value) {
    return value.get<bool>() ? "set" : "not set";
}

Listing::Listing(std::vector<Column> columns) : _columns(std::move(columns)) {}

void Listing::add(std::vector<Json> row) {
    _rows.push_back(std::move(row));
}

void Listing::print(Context& context) const {
    if (context.json) {
        printJson(context.out, toJson());
    } else {
        printTable(context.out);
    }
}

Json Listing::toJson() const {
    Json list = Json::array();
    for (const auto& row : _rows) {
        Json object = Json::object();
        for (std::size_t i = 0; i < _columns.size(); ++i) {
            object[_columns[i].member] = row[i];
        }
        list.push_back(std::move(object));
    }
    return list;
}

void Listing::printTable(std::ostream& out, const std::string& indent) const {
    if (_rows.empty()) {
        out << indent << "none\n";
        return;
    }
    std::vector<std::vector<std::string>> lines(1);
    for (const Column& column : _columns) {
        lines.front().emplace_back(column.heading);
    }
    for (const auto& row : _rows) {
        auto& line = lines.emplace_back();
        for (std::size_t i = 0; i < _columns.size(); ++i) {
            line.push_back(_columns[i].text(row[i]));
        }
    }
    for (const std::string& line : aligned(lines)) {
        out << indent << line << '\n';
    }
}

void printJson(std::ostream& out, const Json& document) {
    out << document.dump(2) << '\n';
}

void printCreated(Context& context, array::Id id) {
    if (context.json) {
        printJson(context.out, {{"key", array::keyText(id)}});
    } else {
        context.out << array::keyText(id) << '\n';
    }
}

using array::Id;
using array::Snapshot;

Listing initiatorListing(const Snapshot& snapshot, const std::vector<Id>& initiators) {
    Listing listing({{"KEY", "key"},
                     {"NAME", "name"},
                     {"SECRET", "secretSet", setText},
                     {"GRANTS", "grants"},
                     {"SESSIONS", "sessions"}});
    for (const Id id : initiators) {
        const array::Initiator& initiator = *snapshot.initiator(id);
        listing.add({array::keyText(id), initiator.name, !initiator.secret.empty(),
                     snapshot.countAssociated(id, Pegasus::CLASSID_TARGET),
                     snapshot.countAssociated(id, Pegasus::CLASSID_ISCSI_SESSION)});
    }
    return listing;
}

Listing unitListing(const Snapshot& snapshot, const std::vector<Id>& units) {
    Listing listing({{"KEY", "key"},
                     {"TARGET", "target"},
                     {"LUN", "lun"},
                     {"ACCESS", "access"},
                     {"VOLUME", "volume"},
                     {"ELEMENT NAME", "elementName"},
                     {"SIZE", "size", unitSizeText}});
    for (const Id id : units) {
        const array::LogicalUnit& unit = *snapshot.logicalUnit(id);
        const array::Volume* volume = snapshot.volume(unit.volume);
        listing.add({array::keyText(id), snapshot.target(unit.target)->name, unit.lun,
                     array::description::accessText(unit.access), snapshot.volumeNameOf(id),
                     volume != nullptr ? volume->elementName : "",
                     volume != nullptr ? Json(volume->size) : Json()});
    }
    return listing;
}

std::string unitSizeText(const Json& size) {
    return size.is_null() ? "volume is gone" : bytesText(size);
}

Listing sessionListing(const Snapshot& snapshot, const std::vector<Id>& sessions) {
    Listing listing({{"KEY", "key"},
                     {"INITIATOR", "initiator"},
                     {"TARGET", "target"},
                     {"TSIH", "tsih"},
                     {"CONNECTIONS", "connections"}});
    for (const Id id : sessions) {
        const array::Session& session = *snapshot.session(id);
        listing.add({array::keyText(id), snapshot.initiator(session.initiator)->name,
                     snapshot.target(session.target)->name, session.tsih, portalsOf(snapshot, id)});
    }
    return listing;
}

Json portalsOf(const Snapshot& snapshot, Id session) {
    Json portals = Json::array();
    snapshot.forEachAssociated(session, Pegasus::CLASSID_ISCSI_CONNECTION, [&](Id connection) {
        portals.push_back(
            portalText(*snapshot.endpoint(snapshot.connection(connection)->endpoint)));
    });
    return portals;
}

} // namespace cli
