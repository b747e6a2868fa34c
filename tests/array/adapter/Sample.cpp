#include "tests/array/adapter/Sample.h"

#include <stdlib.h>

#include "array/adapter/ThisArray.h"
#include "tests/array/ArrayFixture.h"

namespace array {

namespace {

SessionParameters richSession() {
    SessionParameters parameters;
    parameters.maxConnections = 4;
    parameters.initialR2T = 0;
    parameters.immediateData = 1;
    parameters.maxOutstandingR2T = 5;
    parameters.firstBurstLength = 600;
    parameters.maxBurstLength = 700;
    parameters.dataSequenceInOrder = 0;
    parameters.dataPDUInOrder = 1;
    parameters.defaultTime2Wait = 8;
    parameters.defaultTime2Retain = 9;
    parameters.errorRecoveryLevel = 1;
    return parameters;
}

ConnectionParameters richConnection() {
    ConnectionParameters parameters;
    parameters.maxRecvDataSegmentLength = 1024;
    parameters.primaryHeaderDigest = Pegasus::DRAV_DIGEST_NONE;
    parameters.primaryDataDigest = Pegasus::DRAV_DIGEST_CRC32C;
    parameters.secondaryHeaderDigest = Pegasus::DRAV_DIGEST_NO_PREFERENCE;
    parameters.secondaryDataDigest = Pegasus::DRAV_DIGEST_OTHER;
    parameters.markersOnReceive = 1;
    parameters.primaryAuthMethod = Pegasus::DRAV_AUTH_KERBEROS;
    parameters.secondaryAuthMethod = Pegasus::DRAV_AUTH_SRP;
    return parameters;
}

void countThings(Change& change, const Sample::Ids& ids) {
    LoginStatistics logins;
    logins.successfulLogins = 11;
    logins.negotiationFailures = 12;
    logins.authenticationFailures = 13;
    logins.authorizationFailures = 14;
    logins.redirects = 15;
    logins.otherFailures = 16;
    logins.normalLogouts = 17;
    logins.otherLogouts = 18;
    logins.lastFailureType = 3;
    logins.lastFailureTime = 1785542400123456; // 2026-08-01 00:00:00.123456 UTC
    logins.lastFailureInitiator = "iqn.2026-01.com.example:stranger";
    change.setStatistics(ids.target, logins);

    SessionFailures failures;
    failures.digest = 21;
    failures.connectionTimeout = 22;
    failures.format = 23;
    failures.lastType = 4;
    failures.lastInitiator = "iqn.2026-01.com.example:broken";
    change.setStatistics(ids.target, failures);

    SessionStatistics traffic;
    traffic.commandPDUs = 31;
    traffic.responsePDUs = 32;
    traffic.bytesTransmitted = 0xFFFFFFFFFFFFFFFF;
    traffic.bytesReceived = 34;
    traffic.digestErrors = 35;
    traffic.connectionTimeoutErrors = 36;
    change.setStatistics(ids.session, traffic);

    InterfaceStatistics interface;
    interface.framesReceived = 41;
    interface.framesSent = 42;
    interface.octetsReceived = 43;
    interface.octetsSent = 44;
    interface.receiveErrors = 45;
    interface.sendErrors = 46;
    interface.receiveDiscards = 47;
    interface.sendDiscards = 48;
    change.setStatistics(ids.endpoint, interface);
}

// The target with its settings, granted to the initiator.
void addTarget(Change& change, Sample::Ids& ids, const std::string& name) {
    ids.target = change.create(Target{"iqn.2026-01.com.example:target-" + name, ""});
    ids.sessionSettings = change.snapshot().sessionSettingsOf(ids.target);
    ids.connectionSettings = change.snapshot().connectionSettingsOf(ids.target);
    ids.initiator = change.create(Initiator{"iqn.2026-01.com.example:host-" + name, ""});
    change.grant(ids.target, ids.initiator);
}

void fillRich(Change& change, Sample& made) {
    Sample::Ids& ids = made.rich;
    ids.endpoint = change.create(Endpoint{"2001:db8::10", 3261});
    ids.volume = change.create(
        Volume{"60014051A2B3C4D5E6F7A8B9C0D1E2F3", "m\xC3\xA4il", 1'000'000'000'000, 0});
    addTarget(change, ids, "rich");
    change.modify(ids.sessionSettings, made.parameters);
    change.modify(ids.connectionSettings, made.connectionParameters);

    ids.session = change.create(Session{ids.target, ids.initiator, 65535, made.parameters});
    ids.connection = change.create(Connection{
        ids.session, ids.endpoint, 7, made.connectionParameters, Pegasus::DRAV_AUTH_CHAP, true});
    change.create(Connection{ids.session, ids.endpoint, 8, made.connectionParameters});
    countThings(change, ids);
}

void fillPlain(Change& change, Sample::Ids& ids) {
    ids.endpoint = change.create(Endpoint{"192.0.2.10"});
    ids.volume = change.create(Volume{"60014051A2B3C4D5E6F7A8B9C0D1E2F4", "", 512, 0});
    addTarget(change, ids, "plain");
    ids.session = change.create(Session{ids.target, ids.initiator, 0, {}});
    ids.connection = change.create(Connection{ids.session, ids.endpoint, 0, {}});
}

Sample make() {
    static const TemporaryDirectory directory;
    setenv("DRAV_STATE_DIR", directory.path().c_str(), 1);
    Array::openOrCreate(directory.path());

    Sample made{};
    made.parameters = richSession();
    made.connectionParameters = richConnection();
    theArray().change([&](Change& change) {
        change.setNames({"array1.example.com", "array1"});
        fillRich(change, made);
        fillPlain(change, made.plain);
    });
    return made;
}

} // namespace

const Sample& sample() {
    static const Sample made = make();
    return made;
}

} // namespace array
