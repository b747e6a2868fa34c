#include <algorithm>

#include "array/change/ChangeParts.h"
#include "array/model/LoginParameters.h"

namespace array {

void Change::remove(Id id) {
    struct Row {
        CLASSID_e objectClass;
        void (Change::*remove)(Id);
    };
    static constexpr Row ROWS[] = {
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
    for (const Row& row : ROWS) {
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

namespace {

// TSIHs have 16 bits and are not 0. Consecutive sessions differ, as long as there are no more of
// them.
std::uint16_t handleOf(std::uint32_t serial) {
    return static_cast<std::uint16_t>((serial - 1) % 0xFFFF + 1);
}

} // namespace

Id Change::create(const Session& session) {
    const Target& target = need<Target>(session.target);
    const Initiator& initiator = need<Initiator>(session.initiator);
    if (!_next.granted(session.target, session.initiator)) {
        fail(ErrorCode::LoginNotGranted, "Initiator " + array::quoted(initiator.name) +
                                             " has no grant for target " +
                                             array::quoted(target.name) + '.');
    }
    checkParameters(session.parameters, "a session with target " + array::quoted(target.name));
    Session made = session;
    if (made.tsih == 0) {
        made.tsih = handleOf(_next.contents().lastSerial(Pegasus::CLASSID_ISCSI_SESSION) + 1);
    }
    return make(made);
}

Id Change::create(const Connection& connection) {
    const Session& session = need<Session>(connection.session);
    need<Endpoint>(connection.endpoint);
    checkParameters(connection.parameters, "a connection of " + keyText(connection.session));
    std::size_t count = 0;
    std::uint16_t last = 0;
    _next.forEachAssociated(connection.session, Pegasus::CLASSID_ISCSI_CONNECTION, [&](Id id) {
        ++count;
        last = std::max(last, _next.connection(id)->cid);
    });
    if (count >= session.parameters.maxConnections) {
        fail(ErrorCode::LoginNoPath, "Session " + keyText(connection.session) + " may have " +
                                         std::to_string(session.parameters.maxConnections) +
                                         " connections (MaxConnections, RFC 7143 section 13.2).");
    }
    Connection made = connection;
    if (made.cid == 0) {
        made.cid = static_cast<std::uint16_t>(last + 1);
    }
    return make(made);
}

} // namespace array
