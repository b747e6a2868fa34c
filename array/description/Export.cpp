#include "array/description/Export.h"

#include <algorithm>

#include "array/description/Entries.h"

namespace array::description {

namespace {

class Exporter {
public:
    Exporter(Receiver& receiver, const Snapshot& snapshot, const std::function<void()>& afterEach)
        : _receiver(receiver), _snapshot(snapshot), _afterEach(afterEach),
          _endpoints(snapshot.ids(Pegasus::CLASSID_TCP_ENDPOINT)) {}

    std::size_t run() {
        _receiver.setHost(_snapshot.names().host);
        _receiver.setSystem(_snapshot.names().system);
        each(Pegasus::CLASSID_TCP_ENDPOINT, &Exporter::endpoint);
        each(Pegasus::CLASSID_VOLUME, &Exporter::volume);
        each(Pegasus::CLASSID_TARGET, &Exporter::target);
        each(Pegasus::CLASSID_INITIATOR, &Exporter::initiator);
        each(Pegasus::CLASSID_TARGET, &Exporter::grantsOf);
        each(Pegasus::CLASSID_LOGICAL_UNIT, &Exporter::logicalUnit);
        each(Pegasus::CLASSID_ISCSI_SESSION, &Exporter::session);
        return _leftOut;
    }

private:
    void each(CLASSID_e objectClass, void (Exporter::*entryOf)(Id)) {
        _snapshot.forEach(objectClass, [&](Id id) { (this->*entryOf)(id); });
    }

    template<typename Entry>
    void give(const Entry& entry) {
        _receiver.add(entry);
        _afterEach();
    }

    void endpoint(Id id) {
        const Endpoint& endpoint = *_snapshot.endpoint(id);
        give(EndpointEntry{endpoint.address, endpoint.port});
    }

    void volume(Id id) {
        const Volume& volume = *_snapshot.volume(id);
        give(VolumeEntry{volume.name, volume.elementName, volume.size});
    }

    void target(Id id) {
        const Target& target = *_snapshot.target(id);
        give(TargetEntry{target.name, target.secret});
    }

    void initiator(Id id) {
        const Initiator& initiator = *_snapshot.initiator(id);
        give(InitiatorEntry{initiator.name, initiator.secret});
    }

    void grantsOf(Id target) {
        _snapshot.forEachAssociated(target, Pegasus::CLASSID_INITIATOR, [&](Id initiator) {
            give(GrantEntry{_snapshot.target(target)->name, _snapshot.initiator(initiator)->name});
        });
    }

    void logicalUnit(Id id) {
        const LogicalUnit& unit = *_snapshot.logicalUnit(id);
        const Volume* volume = _snapshot.volume(unit.volume);
        if (volume == nullptr) {
            ++_leftOut;
        } else {
            give(LogicalUnitEntry{_snapshot.target(unit.target)->name, volume->name, unit.lun,
                                  std::string(accessText(unit.access))});
        }
    }

    void session(Id id) {
        const Session& session = *_snapshot.session(id);
        SessionEntry entry{_snapshot.target(session.target)->name,
                           _snapshot.initiator(session.initiator)->name,
                           {}};
        _snapshot.forEachAssociated(id, Pegasus::CLASSID_ISCSI_CONNECTION, [&](Id connection) {
            entry.connections.push_back({indexOf(_snapshot.connection(connection)->endpoint)});
        });
        give(entry);
    }

    std::uint64_t indexOf(Id endpoint) const {
        const auto place = std::ranges::lower_bound(_endpoints, endpoint);
        return static_cast<std::uint64_t>(place - _endpoints.begin());
    }

    Receiver& _receiver;
    const Snapshot& _snapshot;
    const std::function<void()>& _afterEach;
    const std::vector<Id> _endpoints; // in ascending order
    std::size_t _leftOut = 0;
};

} // namespace

std::size_t exportTo(Receiver& receiver, const Snapshot& snapshot,
                     const std::function<void()>& afterEach) {
    return Exporter(receiver, snapshot, afterEach).run();
}

std::size_t countEntries(const Snapshot& snapshot) {
    std::size_t count = 0;
    for (const CLASSID_e objectClass :
         {Pegasus::CLASSID_TCP_ENDPOINT, Pegasus::CLASSID_VOLUME, Pegasus::CLASSID_TARGET,
          Pegasus::CLASSID_INITIATOR, Pegasus::CLASSID_LOGICAL_UNIT,
          Pegasus::CLASSID_ISCSI_SESSION}) {
        count += snapshot.count(objectClass);
    }
    snapshot.forEach(Pegasus::CLASSID_TARGET, [&](Id target) {
        count += snapshot.countAssociated(target, Pegasus::CLASSID_INITIATOR);
    });
    return count;
}

} // namespace array::description
