#include "cli/TargetReport.h"

#include <algorithm>
#include <iterator>

#include "array/model/Ids.h"
#include "array/model/LoginParameters.h"
#include "cli/Listing.h"
#include "cli/Quantities.h"
#include "engine/DRAVCodes.h"

namespace cli {

namespace {

using array::Id;
using array::Snapshot;

// The names of the engine's codes: DRAVDigest_e and DRAVAuth_e.
struct Code {
    std::uint16_t code;
    const char* text;
};

constexpr Code digests[] = {
    {Pegasus::DRAV_DIGEST_NONE, "None"},
    {Pegasus::DRAV_DIGEST_CRC32C, "CRC32C"},
    {Pegasus::DRAV_DIGEST_NO_PREFERENCE, "NoPreference"},
    {Pegasus::DRAV_DIGEST_OTHER, "Other"},
};

constexpr Code authMethods[] = {
    {Pegasus::DRAV_AUTH_NO_AUTHENTICATION, "NoAuthentication"},
    {Pegasus::DRAV_AUTH_CHAP, "CHAP"},
    {Pegasus::DRAV_AUTH_SRP, "SRP"},
    {Pegasus::DRAV_AUTH_KERBEROS, "Kerberos"},
    {Pegasus::DRAV_AUTH_NONE, "None"},
};

template<std::size_t count>
const char* textOf(const Code (&codes)[count], std::uint32_t code) {
    const auto found = std::ranges::find(codes, code, &Code::code);
    return found == std::end(codes) ? "Unknown" : found->text;
}

Json shownValue(array::ParameterValues::Kind kind, std::uint32_t value) {
    switch (kind) {
    case array::ParameterValues::Kind::Flag:
        return value != 0;
    case array::ParameterValues::Kind::Digest:
        return textOf(digests, value);
    case array::ParameterValues::Kind::AuthMethod:
        return textOf(authMethods, value);
    case array::ParameterValues::Kind::Number:
        break;
    }
    return value;
}

template<class Parameters>
Json loginParameters(Id id, const Parameters& parameters) {
    Json values = {{"key", array::keyText(id)}};
    array::forEachLoginParameter<Parameters>([&](const auto& row) {
        values[row.member] = shownValue(row.values.kind, parameters.*row.field);
    });
    return values;
}

Json loginStatistics(const Snapshot& snapshot, Id target) {
    const array::LoginStatistics values = snapshot.loginStatistics(target);
    return {{"key", array::keyText(target)},
            {"successfulLogins", values.successfulLogins},
            {"negotiationFailures", values.negotiationFailures},
            {"authenticationFailures", values.authenticationFailures},
            {"authorizationFailures", values.authorizationFailures},
            {"redirects", values.redirects},
            {"otherFailures", values.otherFailures},
            {"normalLogouts", values.normalLogouts},
            {"otherLogouts", values.otherLogouts}};
}

Json sessionFailures(const Snapshot& snapshot, Id target) {
    const array::SessionFailures values = snapshot.sessionFailures(target);
    return {{"key", array::keyText(target)},
            {"digestFailures", values.digest},
            {"connectionTimeoutFailures", values.connectionTimeout},
            {"formatErrors", values.format}};
}

Listing sessionStatistics(const Snapshot& snapshot, const std::vector<Id>& sessions) {
    Listing listing({{"KEY", "key"},
                     {"COMMAND PDUS", "commandPDUs"},
                     {"RESPONSE PDUS", "responsePDUs"},
                     {"SENT", "bytesTransmitted", bytesText},
                     {"RECEIVED", "bytesReceived", bytesText},
                     {"DIGEST ERRORS", "digestErrors"},
                     {"TIMEOUTS", "connectionTimeoutErrors"}});
    for (const Id id : sessions) {
        const array::SessionStatistics values = snapshot.sessionStatistics(id);
        listing.add({array::keyText(id), values.commandPDUs, values.responsePDUs,
                     values.bytesTransmitted, values.bytesReceived, values.digestErrors,
                     values.connectionTimeoutErrors});
    }
    return listing;
}

// Of all endpoints: each leads to every target.
Listing endpointStatistics(const Snapshot& snapshot) {
    Listing listing({{"KEY", "key"},
                     {"ENDPOINT", "endpoint"},
                     {"FRAMES SENT", "framesSent"},
                     {"FRAMES RECEIVED", "framesReceived"},
                     {"SENT", "octetsSent", bytesText},
                     {"RECEIVED", "octetsReceived", bytesText}});
    snapshot.forEach(Pegasus::CLASSID_TCP_ENDPOINT, [&](Id id) {
        const array::InterfaceStatistics values = snapshot.interfaceStatistics(id);
        listing.add({array::keyText(id), portalText(*snapshot.endpoint(id)), values.framesSent,
                     values.framesReceived, values.octetsSent, values.octetsReceived});
    });
    return listing;
}

} // namespace

Report targetReport(const Snapshot& snapshot, Id target) {
    const array::Target& record = *snapshot.target(target);
    const auto sessions = snapshot.associated(target, Pegasus::CLASSID_ISCSI_SESSION);
    const Id session = snapshot.sessionSettingsOf(target);
    const Id connection = snapshot.connectionSettingsOf(target);
    Report report;
    report.add("Target", "target",
               {{"key", array::keyText(target)},
                {"name", record.name},
                {"secretSet", !record.secret.empty()}});
    report.add("Logical units", "logicalUnits",
               unitListing(snapshot, snapshot.associated(target, Pegasus::CLASSID_LOGICAL_UNIT)));
    report.add("Initiators granted", "initiators",
               initiatorListing(snapshot, snapshot.associated(target, Pegasus::CLASSID_INITIATOR)));
    report.add("Sessions", "sessions", sessionListing(snapshot, sessions));
    report.add("Session login parameters (CIM_iSCSISessionSettings)", "sessionSettings",
               loginParameters(session, *snapshot.sessionSettings(session)));
    report.add("Connection login parameters (CIM_iSCSIConnectionSettings)", "connectionSettings",
               loginParameters(connection, *snapshot.connectionSettings(connection)));
    report.add("Logins (CIM_iSCSILoginStatistics)", "loginStatistics",
               loginStatistics(snapshot, target));
    report.add("Failed sessions (CIM_iSCSISessionFailures)", "sessionFailures",
               sessionFailures(snapshot, target));
    report.add("Traffic of sessions (CIM_iSCSISessionStatistics)", "sessionStatistics",
               sessionStatistics(snapshot, sessions));
    report.add("Traffic of endpoints (Ovrin_MACStatistics)", "endpointStatistics",
               endpointStatistics(snapshot));
    return report;
}

} // namespace cli
