#include "cli/Lookup.h"

#include "array/model/ErrorCode.h"
#include "array/model/Ids.h"
#include "array/model/Text.h"
#include "cli/Quantities.h"
#include "engine/DRAVKeys.h"

namespace cli {

namespace {

using array::Id;
using array::Snapshot;

struct Kind {
    const char* noun;
    array::CLASSID_e objectClass;
};

constexpr Kind volumes{"volume", Pegasus::CLASSID_VOLUME};
constexpr Kind targets{"target", Pegasus::CLASSID_TARGET};
constexpr Kind initiators{"initiator", Pegasus::CLASSID_INITIATOR};
constexpr Kind endpoints{"endpoint", Pegasus::CLASSID_TCP_ENDPOINT};
constexpr Kind sessions{"session", Pegasus::CLASSID_ISCSI_SESSION};
constexpr Kind units{"logical unit", Pegasus::CLASSID_LOGICAL_UNIT};

bool isKeyText(const std::string& text) {
    return text.starts_with("Ovrin:");
}

[[noreturn]] void failNoSuch(const Kind& kind, const std::string& text) {
    array::fail(array::ErrorCode::NoSuchObject,
                std::string("There is no ") + kind.noun + " " + array::quoted(text) + ".");
}

Id byKeyText(const Snapshot& snapshot, const Kind& kind, const std::string& text) {
    const Id id = Pegasus::DRAVObjectID(array::fromUtf8(text)).id;
    if (array::classOf(id) != kind.objectClass || !snapshot.exists(id)) {
        failNoSuch(kind, text);
    }
    return id;
}

template<typename ByName>
Id find(const Snapshot& snapshot, const Kind& kind, const std::string& text, ByName byName) {
    if (isKeyText(text)) {
        return byKeyText(snapshot, kind, text);
    }
    const Id id = byName(text);
    if (id == 0) {
        failNoSuch(kind, text);
    }
    return id;
}

Id volumeByElementName(const Snapshot& snapshot, const std::string& text) {
    Id found = 0;
    snapshot.forEach(Pegasus::CLASSID_VOLUME, [&](Id id) {
        if (snapshot.volume(id)->elementName != text) {
            return;
        }
        if (found != 0) {
            array::fail(array::ErrorCode::NoSuchObject,
                        "More than one volume has the element name " + array::quoted(text) +
                            "; use the volume's name.");
        }
        found = id;
    });
    return found;
}

} // namespace

Id findVolume(const Snapshot& snapshot, const std::string& text) {
    return find(snapshot, volumes, text, [&](const std::string& name) {
        const Id id = snapshot.volumeByName(name);
        return id != 0 || name.empty() ? id : volumeByElementName(snapshot, name);
    });
}

Id findTarget(const Snapshot& snapshot, const std::string& text) {
    return find(snapshot, targets, text,
                [&](const std::string& name) { return snapshot.targetByName(name); });
}

Id findInitiator(const Snapshot& snapshot, const std::string& text) {
    return find(snapshot, initiators, text,
                [&](const std::string& name) { return snapshot.initiatorByName(name); });
}

Id findEndpoint(const Snapshot& snapshot, const std::string& text) {
    return find(snapshot, endpoints, text, [&](const std::string& portal) {
        const array::Endpoint endpoint = portalFromText(portal);
        return snapshot.endpointByPortal(endpoint.address, endpoint.port);
    });
}

Id findSession(const Snapshot& snapshot, const std::string& text) {
    return byKeyText(snapshot, sessions, text);
}

Id findUnit(const Snapshot& snapshot, const std::string& keyOrTarget, const std::string& lun) {
    if (lun.empty()) {
        return byKeyText(snapshot, units, keyOrTarget);
    }
    const Id target = findTarget(snapshot, keyOrTarget);
    const Id unit =
        snapshot.unitByLun(target, Pegasus::DRAVObjectIDDecimal(array::fromUtf8(lun)).id);
    if (unit == 0) {
        array::fail(array::ErrorCode::NoSuchObject, "Target " + array::quoted(keyOrTarget) +
                                                        " has no logical unit with LUN " + lun +
                                                        ".");
    }
    return unit;
}

} // namespace cli
