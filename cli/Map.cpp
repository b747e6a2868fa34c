#include "cli/Map.h"

#include "array/KeyText.h"
#include "cli/Listings.h"
#include "cli/Units.h"

namespace cli {

namespace {

using array::Id;
using array::Snapshot;

Json volumeMap(const Snapshot& array, Id id) {
    const array::Volume& volume = *array.volume(id);
    return {{"key", array::keyText(id)},
            {"name", volume.name},
            {"elementName", volume.elementName},
            {"size", volume.size}};
}

Json targetMap(const Snapshot& array, Id id) {
    const array::Target& target = *array.target(id);
    const auto units = array.associated(id, Pegasus::CLASSID_LOGICAL_UNIT);
    return {{"key", array::keyText(id)},
            {"name", target.name},
            {"secretSet", !target.secret.empty()},
            {"units", unitListing(array, units).toJson()}};
}

Json sessionsMap(const Snapshot& array, Id host, Id target) {
    auto sessions = array.associated(host, Pegasus::CLASSID_ISCSI_SESSION);
    std::erase_if(sessions, [&](Id id) { return array.session(id)->target != target; });
    return sessionListing(array, sessions).toJson();
}

Json hostMap(const Snapshot& array, Id id) {
    const array::Initiator& host = *array.initiator(id);
    Json targets = Json::array();
    array.forEachAssociated(id, Pegasus::CLASSID_TARGET, [&](Id target) {
        Json map = targetMap(array, target);
        map["sessions"] = sessionsMap(array, id, target);
        targets.push_back(std::move(map));
    });
    return {{"key", array::keyText(id)},
            {"name", host.name},
            {"secretSet", !host.secret.empty()},
            {"targets", std::move(targets)}};
}

} // namespace

Json mapOf(const Snapshot& array) {
    Json map = {{"system", array.names().system},       {"host", array.names().host},
                {"endpoints", Json::array()},           {"hosts", Json::array()},
                {"targetsWithoutHosts", Json::array()}, {"volumesWithoutUnits", Json::array()}};
    array.forEach(Pegasus::CLASSID_TCP_ENDPOINT,
                  [&](Id id) { map["endpoints"].push_back(portalText(*array.endpoint(id))); });
    array.forEach(Pegasus::CLASSID_INITIATOR,
                  [&](Id id) { map["hosts"].push_back(hostMap(array, id)); });
    array.forEach(Pegasus::CLASSID_TARGET, [&](Id id) {
        if (array.countAssociated(id, Pegasus::CLASSID_INITIATOR) == 0)
            map["targetsWithoutHosts"].push_back(targetMap(array, id));
    });
    array.forEach(Pegasus::CLASSID_VOLUME, [&](Id id) {
        if (array.countAssociated(id, Pegasus::CLASSID_LOGICAL_UNIT) == 0)
            map["volumesWithoutUnits"].push_back(volumeMap(array, id));
    });
    return map;
}

} // namespace cli
