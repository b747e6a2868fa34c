#include "cli/Listings.h"

#include "array/KeyText.h"
#include "array/description/Access.h"
#include "cli/Units.h"

namespace cli {

using array::Id;
using array::Snapshot;

Listing initiatorListing(const Snapshot& array, const std::vector<Id>& initiators) {
    Listing listing({{"KEY", "key"},
                     {"NAME", "name"},
                     {"SECRET", "secretSet", setText},
                     {"GRANTS", "grants"},
                     {"SESSIONS", "sessions"}});
    for (const Id id : initiators) {
        const array::Initiator& initiator = *array.initiator(id);
        listing.add({array::keyText(id), initiator.name, !initiator.secret.empty(),
                     array.countAssociated(id, Pegasus::CLASSID_TARGET),
                     array.countAssociated(id, Pegasus::CLASSID_ISCSI_SESSION)});
    }
    return listing;
}

Listing unitListing(const Snapshot& array, const std::vector<Id>& units) {
    Listing listing({{"KEY", "key"},
                     {"TARGET", "target"},
                     {"LUN", "lun"},
                     {"ACCESS", "access"},
                     {"VOLUME", "volume"},
                     {"ELEMENT NAME", "elementName"},
                     {"SIZE", "size", unitSizeText}});
    for (const Id id : units) {
        const array::LogicalUnit& unit = *array.logicalUnit(id);
        const array::Volume* volume = array.volume(unit.volume);
        listing.add({array::keyText(id), array.target(unit.target)->name, unit.lun,
                     array::description::accessText(unit.access), array.volumeNameOf(id),
                     volume != nullptr ? volume->elementName : "",
                     volume != nullptr ? Json(volume->size) : Json()});
    }
    return listing;
}

std::string unitSizeText(const Json& size) {
    return size.is_null() ? "volume is gone" : bytesText(size);
}

Listing sessionListing(const Snapshot& array, const std::vector<Id>& sessions) {
    Listing listing({{"KEY", "key"},
                     {"INITIATOR", "initiator"},
                     {"TARGET", "target"},
                     {"TSIH", "tsih"},
                     {"CONNECTIONS", "connections"}});
    for (const Id id : sessions) {
        const array::Session& session = *array.session(id);
        listing.add({array::keyText(id), array.initiator(session.initiator)->name,
                     array.target(session.target)->name, session.tsih, portalsOf(array, id)});
    }
    return listing;
}

Json portalsOf(const Snapshot& array, Id session) {
    Json portals = Json::array();
    array.forEachAssociated(session, Pegasus::CLASSID_ISCSI_CONNECTION, [&](Id connection) {
        portals.push_back(portalText(*array.endpoint(array.connection(connection)->endpoint)));
    });
    return portals;
}

} // namespace cli
