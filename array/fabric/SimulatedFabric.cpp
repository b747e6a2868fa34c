#include "array/fabric/SimulatedFabric.h"

#include <chrono>

#include "array/model/Ids.h"
#include "array/model/Snapshot.h"
#include "array/model/Text.h"

namespace array {

namespace {

// The value map of CIM_iSCSILoginStatistics.LastLoginFailureType.
constexpr std::uint16_t negotiationFailed = 2;
constexpr std::uint16_t authenticationFailed = 3;
constexpr std::uint16_t authorizationFailed = 4;

// What one exchange of a login sends each way: a PDU with its header of 48 bytes (RFC 7143 section
// 11.2.1) and no more, in a frame of its own.
constexpr std::uint64_t headerBytes = 48;

std::uint64_t now() {
    const auto since = std::chrono::system_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(
        std::chrono::duration_cast<std::chrono::microseconds>(since).count());
}

void count(Change& change, Id target, std::uint64_t LoginStatistics::*counter) {
    LoginStatistics logins = change.snapshot().loginStatistics(target);
    ++(logins.*counter);
    change.setStatistics(target, logins);
}

struct Refusal {
    std::uint16_t failureType;
    std::uint64_t LoginStatistics::*counter;
    ErrorCode code;
    std::string message;
};

LoginResult refuse(Change& change, const LoginRequest& request, const Refusal& refusal) {
    LoginStatistics logins = change.snapshot().loginStatistics(request.target);
    ++(logins.*refusal.counter);
    logins.lastFailureType = refusal.failureType;
    logins.lastFailureTime = now();
    logins.lastFailureInitiator = change.snapshot().initiator(request.initiator)->name;
    change.setStatistics(request.target, logins);
    return {0, refusal.code, refusal.message};
}

// The counters of an endpoint and a session after some exchanges of a login or logout.
void countExchanges(Change& change, Id endpoint, Id session, std::uint64_t exchanges) {
    InterfaceStatistics interface = change.snapshot().interfaceStatistics(endpoint);
    interface.framesReceived += exchanges;
    interface.framesSent += exchanges;
    interface.octetsReceived += exchanges * headerBytes;
    interface.octetsSent += exchanges * headerBytes;
    change.setStatistics(endpoint, interface);

    SessionStatistics statistics = change.snapshot().sessionStatistics(session);
    statistics.commandPDUs += exchanges;
    statistics.responsePDUs += exchanges;
    statistics.bytesReceived += exchanges * headerBytes;
    statistics.bytesTransmitted += exchanges * headerBytes;
    change.setStatistics(session, statistics);
}

void addConnections(Change& change, const LoginRequest& request, Id session) {
    const Snapshot& snapshot = change.snapshot();
    const bool usesChap = !snapshot.initiator(request.initiator)->secret.empty();
    Connection connection;
    connection.session = session;
    connection.parameters =
        *snapshot.connectionSettings(snapshot.connectionSettingsOf(request.target));
    connection.authMethod =
        usesChap ? Pegasus::DRAV_AUTH_CHAP : Pegasus::DRAV_AUTH_NO_AUTHENTICATION;
    connection.mutualAuth = usesChap && !snapshot.target(request.target)->secret.empty();
    for (const Id endpoint : request.endpoints) {
        connection.endpoint = endpoint;
        change.create(connection);
        // CHAP takes two exchanges before the one that agrees on the parameters.
        countExchanges(change, endpoint, session, usesChap ? 3 : 1);
    }
}

void endSession(Change& change, Id session, std::uint64_t LoginStatistics::*counter) {
    count(change, change.snapshot().session(session)->target, counter);
    change.remove(session);
}

template<class Record>
const Record& need(const Snapshot& snapshot, const Record* record, Id id, CLASSID_e wanted) {
    if (!record) {
        failNoSuchObject(snapshot, id, wanted);
    }
    return *record;
}

} // namespace

LoginResult SimulatedFabric::login(Change& change, const LoginRequest& request) {
    const Snapshot& snapshot = change.snapshot();
    const Target& target =
        need(snapshot, snapshot.target(request.target), request.target, Pegasus::CLASSID_TARGET);
    const Initiator& initiator = need(snapshot, snapshot.initiator(request.initiator),
                                      request.initiator, Pegasus::CLASSID_INITIATOR);
    for (const Id endpoint : request.endpoints) {
        need(snapshot, snapshot.endpoint(endpoint), endpoint, Pegasus::CLASSID_TCP_ENDPOINT);
    }

    const std::string who = "Initiator " + array::quoted(initiator.name);
    const std::string to = " to target " + array::quoted(target.name);
    const SessionParameters parameters =
        *snapshot.sessionSettings(snapshot.sessionSettingsOf(request.target));
    if (!snapshot.granted(request.target, request.initiator)) {
        return refuse(change, request,
                      {authorizationFailed, &LoginStatistics::authorizationFailures,
                       ErrorCode::LoginNotGranted, who + " has no grant" + to + '.'});
    }
    if (!initiator.secret.empty() && request.secret != initiator.secret) {
        return refuse(change, request,
                      {authenticationFailed, &LoginStatistics::authenticationFailures,
                       ErrorCode::LoginFailed, who + " did not prove its secret" + to + '.'});
    }
    if (request.endpoints.empty() || request.endpoints.size() > parameters.maxConnections) {
        return refuse(
            change, request,
            {negotiationFailed, &LoginStatistics::negotiationFailures, ErrorCode::LoginNoPath,
             who + " asked for " + std::to_string(request.endpoints.size()) + " connections" + to +
                 ", which takes from 1 to " + std::to_string(parameters.maxConnections) +
                 " (MaxConnections, RFC 7143 section 13.2)."});
    }

    Session session;
    session.target = request.target;
    session.initiator = request.initiator;
    session.parameters = parameters;
    const Id made = change.create(session);
    addConnections(change, request, made);
    count(change, request.target, &LoginStatistics::successfulLogins);
    return {made, {}, {}};
}

void SimulatedFabric::logout(Change& change, Id session) {
    need(change.snapshot(), change.snapshot().session(session), session,
         Pegasus::CLASSID_ISCSI_SESSION);
    for (const Id connection :
         change.snapshot().associated(session, Pegasus::CLASSID_ISCSI_CONNECTION)) {
        countExchanges(change, change.snapshot().connection(connection)->endpoint, session, 1);
    }
    endSession(change, session, &LoginStatistics::normalLogouts);
}

void SimulatedFabric::grantChanged(Change& change, Id target, Id initiator) {
    if (change.snapshot().granted(target, initiator)) {
        return;
    }
    for (const Id session :
         change.snapshot().associated(initiator, Pegasus::CLASSID_ISCSI_SESSION)) {
        if (change.snapshot().session(session)->target == target) {
            endSession(change, session, &LoginStatistics::otherLogouts);
        }
    }
}

// No initiator reads or writes here, and a secret counts at the next login.
void SimulatedFabric::targetChanged(Change&, Id) {}
void SimulatedFabric::unitChanged(Change&, Id) {}
void SimulatedFabric::secretChanged(Change&, Id) {}

} // namespace array
