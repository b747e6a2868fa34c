#include "array/change/ChangeParts.h"

namespace array {

void Change::remove(Id id) {
    struct Removal {
        CLASSID_e objectClass;
        void (Change::*remove)(Id);
    };
    static constexpr Removal removals[] = {
        {Pegasus::CLASSID_TCP_ENDPOINT, &Change::removeEndpoint},
        {Pegasus::CLASSID_INITIATOR, &Change::removeInitiator},
        {Pegasus::CLASSID_TARGET, &Change::removeTarget},
        {Pegasus::CLASSID_LOGICAL_UNIT, &Change::removeUnit},
        {Pegasus::CLASSID_ISCSI_CONNECTION, &Change::erase<Connection>},
        {Pegasus::CLASSID_ISCSI_SESSION, &Change::removeSession},
        {Pegasus::CLASSID_VOLUME, &Change::removeVolume},
    };
    if (!_next.exists(id)) {
        fail(ErrorCode::NoSuchObject, keyText(id) + " names no object.");
    }
    for (const Removal& row : removals) {
        if (row.objectClass == classOf(id)) {
            return (this->*row.remove)(id);
        }
    }
    fail(ErrorCode::NoRecord, keyText(id) + ", a " + className(classOf(id)) +
                                  ", goes with its target and cannot be removed by itself.");
}

void Change::removeEndpoint(Id id) {
    if (const std::size_t used = _next.countAssociated(id, Pegasus::CLASSID_ISCSI_CONNECTION)) {
        fail(ErrorCode::InUse,
             "Endpoint " + array::quoted(need<Endpoint>(id).address) +
                 " cannot be removed while it has connections: " + std::to_string(used) + '.');
    }
    erase<Endpoint>(id);
}

void Change::removeVolume(Id id) {
    const std::string name = need<Volume>(id).name;
    for (const Id unit : _next.associated(id, Pegasus::CLASSID_LOGICAL_UNIT)) {
        LogicalUnit left = need<LogicalUnit>(unit);
        left.volume = 0;
        left.volumeName = name;
        put(unit, left);
        _fabric.unitChanged(*this, unit);
    }
    erase<Volume>(id);
}

void Change::removeInitiator(Id id) {
    for (const Id target : _next.associated(id, Pegasus::CLASSID_TARGET)) {
        revoke(target, id);
    }
    if (_next.countAssociated(id, Pegasus::CLASSID_ISCSI_SESSION) != 0) {
        fail(ErrorCode::InUse, "Initiator " + array::quoted(need<Initiator>(id).name) +
                                   " cannot be removed while it has sessions.");
    }
    _clearsSecret = _clearsSecret || !need<Initiator>(id).secret.empty();
    erase<Initiator>(id);
}

void Change::removeTarget(Id id) {
    const std::string name = need<Target>(id).name;
    for (const auto& [needed, what] : {std::pair(Pegasus::CLASSID_LOGICAL_UNIT, "logical units"),
                                       std::pair(Pegasus::CLASSID_ISCSI_SESSION, "sessions")}) {
        if (const std::size_t count = _next.countAssociated(id, needed)) {
            fail(ErrorCode::InUse, "Target " + array::quoted(name) +
                                       " cannot be removed while it has " + what + ": " +
                                       std::to_string(count) + '.');
        }
    }
    for (const Id initiator : _next.associated(id, Pegasus::CLASSID_INITIATOR)) {
        revoke(id, initiator);
    }
    erase<SessionParameters>(_next.sessionSettingsOf(id));
    erase<ConnectionParameters>(_next.connectionSettingsOf(id));
    _clearsSecret = _clearsSecret || !need<Target>(id).secret.empty();
    erase<Target>(id);
    _fabric.targetChanged(*this, id);
}

void Change::removeUnit(Id id) {
    erase<LogicalUnit>(id);
    _fabric.unitChanged(*this, id);
}

void Change::removeSession(Id id) {
    for (const Id connection : _next.associated(id, Pegasus::CLASSID_ISCSI_CONNECTION)) {
        erase<Connection>(connection);
    }
    erase<Session>(id);
}

} // namespace array
