#include "array/model/Ids.h"
#include "cli/Codes.h"
#include "cli/Listing.h"
#include "cli/Map.h"
#include "cli/Quantities.h"
#include "cli/TargetReport.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct Show : NoArguments {
    static void run(Context& context) {
        const Json map = mapOf(*context.array().snapshot());
        if (context.json) {
            printJson(context.out, map);
        } else {
            drawMap(context.out, map);
        }
    }
};

} // namespace

void addShowCommand(CLI::App& app, Context& context) {
    add<Show>(app, context, "show", "Draw hosts, their targets and volumes, and sessions");
}

namespace {

using array::Id;
using array::Snapshot;

Json sessionSettings(const Snapshot& array, Id id) {
    const array::SessionParameters& values = *array.sessionSettings(id);
    return {{"key", array::keyText(id)},
            {"maxConnections", values.maxConnections},
            {"initialR2T", values.initialR2T != 0},
            {"immediateData", values.immediateData != 0},
            {"maxOutstandingR2T", values.maxOutstandingR2T},
            {"firstBurstLength", values.firstBurstLength},
            {"maxBurstLength", values.maxBurstLength},
            {"dataSequenceInOrder", values.dataSequenceInOrder != 0},
            {"dataPDUInOrder", values.dataPDUInOrder != 0},
            {"defaultTime2Wait", values.defaultTime2Wait},
            {"defaultTime2Retain", values.defaultTime2Retain},
            {"errorRecoveryLevel", values.errorRecoveryLevel}};
}

Json connectionSettings(const Snapshot& array, Id id) {
    const array::ConnectionParameters& values = *array.connectionSettings(id);
    return {{"key", array::keyText(id)},
            {"maxRecvDataSegmentLength", values.maxRecvDataSegmentLength},
            {"primaryHeaderDigest", digestText(values.primaryHeaderDigest)},
            {"primaryDataDigest", digestText(values.primaryDataDigest)},
            {"secondaryHeaderDigest", digestText(values.secondaryHeaderDigest)},
            {"secondaryDataDigest", digestText(values.secondaryDataDigest)},
            {"markersOnReceive", values.markersOnReceive != 0},
            {"primaryAuthMethod", authText(values.primaryAuthMethod)},
            {"secondaryAuthMethod", authText(values.secondaryAuthMethod)}};
}

Json loginStatistics(const Snapshot& array, Id target) {
    const array::LoginStatistics values = array.loginStatistics(target);
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

Json sessionFailures(const Snapshot& array, Id target) {
    const array::SessionFailures values = array.sessionFailures(target);
    return {{"key", array::keyText(target)},
            {"digestFailures", values.digest},
            {"connectionTimeoutFailures", values.connectionTimeout},
            {"formatErrors", values.format}};
}

Listing sessionStatistics(const Snapshot& array, const std::vector<Id>& sessions) {
    Listing listing({{"KEY", "key"},
                     {"COMMAND PDUS", "commandPDUs"},
                     {"RESPONSE PDUS", "responsePDUs"},
                     {"SENT", "bytesTransmitted", bytesText},
                     {"RECEIVED", "bytesReceived", bytesText},
                     {"DIGEST ERRORS", "digestErrors"},
                     {"TIMEOUTS", "connectionTimeoutErrors"}});
    for (const Id id : sessions) {
        const array::SessionStatistics values = array.sessionStatistics(id);
        listing.add({array::keyText(id), values.commandPDUs, values.responsePDUs,
                     values.bytesTransmitted, values.bytesReceived, values.digestErrors,
                     values.connectionTimeoutErrors});
    }
    return listing;
}

// Of all endpoints: each leads to every target.
Listing endpointStatistics(const Snapshot& array) {
    Listing listing({{"KEY", "key"},
                     {"ENDPOINT", "endpoint"},
                     {"FRAMES SENT", "framesSent"},
                     {"FRAMES RECEIVED", "framesReceived"},
                     {"SENT", "octetsSent", bytesText},
                     {"RECEIVED", "octetsReceived", bytesText}});
    array.forEach(Pegasus::CLASSID_TCP_ENDPOINT, [&](Id id) {
        const array::InterfaceStatistics values = array.interfaceStatistics(id);
        listing.add({array::keyText(id), portalText(*array.endpoint(id)), values.framesSent,
                     values.framesReceived, values.octetsSent, values.octetsReceived});
    });
    return listing;
}

} // namespace

Report targetReport(const Snapshot& array, Id target) {
    const array::Target& record = *array.target(target);
    const auto sessions = array.associated(target, Pegasus::CLASSID_ISCSI_SESSION);
    Report report;
    report.add("Target", "target",
               {{"key", array::keyText(target)},
                {"name", record.name},
                {"secretSet", !record.secret.empty()}});
    report.add("Logical units", "logicalUnits",
               unitListing(array, array.associated(target, Pegasus::CLASSID_LOGICAL_UNIT)));
    report.add("Initiators granted", "initiators",
               initiatorListing(array, array.associated(target, Pegasus::CLASSID_INITIATOR)));
    report.add("Sessions", "sessions", sessionListing(array, sessions));
    report.add("Session login parameters (CIM_iSCSISessionSettings)", "sessionSettings",
               sessionSettings(array, array.sessionSettingsOf(target)));
    report.add("Connection login parameters (CIM_iSCSIConnectionSettings)", "connectionSettings",
               connectionSettings(array, array.connectionSettingsOf(target)));
    report.add("Logins (CIM_iSCSILoginStatistics)", "loginStatistics",
               loginStatistics(array, target));
    report.add("Failed sessions (CIM_iSCSISessionFailures)", "sessionFailures",
               sessionFailures(array, target));
    report.add("Traffic of sessions (CIM_iSCSISessionStatistics)", "sessionStatistics",
               sessionStatistics(array, sessions));
    report.add("Traffic of endpoints (Ovrin_MACStatistics)", "endpointStatistics",
               endpointStatistics(array));
    return report;
}

} // namespace cli
