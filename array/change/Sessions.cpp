#include <algorithm>

#include "array/change/ChangeParts.h"
#include "array/rules/LoginParameters.h"

namespace array {

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
    if (!_next.granted(session.target, session.initiator))
        fail(ErrorCode::LoginNotGranted, "Initiator " + array::quoted(initiator.name) +
                                             " has no grant for target " +
                                             array::quoted(target.name) + '.');
    checkParameters(session.parameters, "a session with target " + array::quoted(target.name));
    Session made = session;
    if (made.tsih == 0)
        made.tsih = handleOf(_next.state().lastSerial(Pegasus::CLASSID_ISCSI_SESSION) + 1);
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
    if (count >= session.parameters.maxConnections)
        fail(ErrorCode::LoginNoPath, "Session " + keyText(connection.session) + " may have " +
                                         std::to_string(session.parameters.maxConnections) +
                                         " connections (MaxConnections, RFC 7143 section 13.2).");
    Connection made = connection;
    if (made.cid == 0)
        made.cid = static_cast<std::uint16_t>(last + 1);
    return make(made);
}

} // namespace array
