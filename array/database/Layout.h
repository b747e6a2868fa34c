#pragma once

#include "array/model/LoginParameters.h"
#include "array/model/Records.h"

namespace array {

// How each record type is kept: its table, and the columns behind the column "id". columns() shows
// each column's name and field to a visitor; the record may be const.
template<class Record>
struct Layout;

// An id that is NULL in the table while it is 0, because 0 names no row of another table.
template<class IdField>
struct Nullable {
    IdField& id;
};
template<class IdField>
Nullable(IdField&) -> Nullable<IdField>;

template<>
struct Layout<Endpoint> {
    static constexpr const char* table = "endpoint";
    template<class Self, class Visit>
    static void columns(Self& endpoint, Visit&& visit) {
        visit("address", endpoint.address);
        visit("port", endpoint.port);
    }
};

template<>
struct Layout<Volume> {
    static constexpr const char* table = "volume";
    template<class Self, class Visit>
    static void columns(Self& volume, Visit&& visit) {
        visit("name", volume.name);
        visit("element_name", volume.elementName);
        visit("size", volume.size);
        visit("state", volume.status);
    }
};

template<>
struct Layout<Initiator> {
    static constexpr const char* table = "initiator";
    template<class Self, class Visit>
    static void columns(Self& initiator, Visit&& visit) {
        visit("name", initiator.name);
        visit("secret", initiator.secret);
    }
};

template<>
struct Layout<Target> {
    static constexpr const char* table = "target";
    template<class Self, class Visit>
    static void columns(Self& target, Visit&& visit) {
        visit("name", target.name);
        visit("secret", target.secret);
    }
};

template<>
struct Layout<LogicalUnit> {
    static constexpr const char* table = "unit";
    template<class Self, class Visit>
    static void columns(Self& unit, Visit&& visit) {
        visit("target", unit.target);
        visit("lun", unit.lun);
        visit("access", unit.access);
        visit("volume", Nullable{unit.volume});
        visit("volume_name", unit.volumeName);
    }
};

template<>
struct Layout<SessionParameters> {
    static constexpr const char* table = "session_settings";
    template<class Self, class Visit>
    static void columns(Self& parameters, Visit&& visit) {
        forEachLoginParameter<SessionParameters>(
            [&](const auto& row) { visit(row.column, parameters.*row.field); });
    }
};

template<>
struct Layout<ConnectionParameters> {
    static constexpr const char* table = "connection_settings";
    template<class Self, class Visit>
    static void columns(Self& parameters, Visit&& visit) {
        forEachLoginParameter<ConnectionParameters>(
            [&](const auto& row) { visit(row.column, parameters.*row.field); });
    }
};

template<>
struct Layout<Session> {
    static constexpr const char* table = "session";
    template<class Self, class Visit>
    static void columns(Self& session, Visit&& visit) {
        visit("target", session.target);
        visit("initiator", session.initiator);
        visit("tsih", session.tsih);
        Layout<SessionParameters>::columns(session.parameters, visit);
    }
};

template<>
struct Layout<Connection> {
    static constexpr const char* table = "connection";
    template<class Self, class Visit>
    static void columns(Self& connection, Visit&& visit) {
        visit("session", connection.session);
        visit("endpoint", connection.endpoint);
        visit("cid", connection.cid);
        Layout<ConnectionParameters>::columns(connection.parameters, visit);
        visit("auth_method", connection.authMethod);
        visit("mutual_auth", connection.mutualAuth);
    }
};

template<>
struct Layout<LoginStatistics> {
    static constexpr const char* table = "login_statistics";
    template<class Self, class Visit>
    static void columns(Self& logins, Visit&& visit) {
        visit("successful_logins", logins.successfulLogins);
        visit("negotiation_failures", logins.negotiationFailures);
        visit("authentication_failures", logins.authenticationFailures);
        visit("authorization_failures", logins.authorizationFailures);
        visit("redirects", logins.redirects);
        visit("other_failures", logins.otherFailures);
        visit("normal_logouts", logins.normalLogouts);
        visit("other_logouts", logins.otherLogouts);
        visit("last_failure_type", logins.lastFailureType);
        visit("last_failure_time", logins.lastFailureTime);
        visit("last_failure_initiator", logins.lastFailureInitiator);
    }
};

template<>
struct Layout<SessionFailures> {
    static constexpr const char* table = "session_failures";
    template<class Self, class Visit>
    static void columns(Self& failures, Visit&& visit) {
        visit("digest", failures.digest);
        visit("connection_timeout", failures.connectionTimeout);
        visit("format", failures.format);
        visit("last_type", failures.lastType);
        visit("last_initiator", failures.lastInitiator);
    }
};

template<>
struct Layout<SessionStatistics> {
    static constexpr const char* table = "session_statistics";
    template<class Self, class Visit>
    static void columns(Self& statistics, Visit&& visit) {
        visit("command_pdus", statistics.commandPDUs);
        visit("response_pdus", statistics.responsePDUs);
        visit("bytes_transmitted", statistics.bytesTransmitted);
        visit("bytes_received", statistics.bytesReceived);
        visit("digest_errors", statistics.digestErrors);
        visit("connection_timeout_errors", statistics.connectionTimeoutErrors);
    }
};

template<>
struct Layout<InterfaceStatistics> {
    static constexpr const char* table = "interface_statistics";
    template<class Self, class Visit>
    static void columns(Self& statistics, Visit&& visit) {
        visit("frames_received", statistics.framesReceived);
        visit("frames_sent", statistics.framesSent);
        visit("octets_received", statistics.octetsReceived);
        visit("octets_sent", statistics.octetsSent);
        visit("receive_errors", statistics.receiveErrors);
        visit("send_errors", statistics.sendErrors);
        visit("receive_discards", statistics.receiveDiscards);
        visit("send_discards", statistics.sendDiscards);
    }
};

} // namespace array
