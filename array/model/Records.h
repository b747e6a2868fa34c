#pragma once

#include <cstdint>
#include <string>

#include "array/model/LoginParameters.h"
#include "engine/DRAVCodes.h"
#include "engine/ObjectIds.h"

// What the array knows of each of its objects. Texts are UTF-8. Plain values: how they hang
// together is Snapshot's, what they may be is said by the rules (Rules.h, LoginParameters.h).

namespace array {

using Pegasus::CLASSID_e;
using Id = std::uint32_t; // class << 24 | serial; 0 names no object

// The array's own names.
struct ArrayNames {
    std::string host;   // host of object paths
    std::string system; // name as a computer system
};

// A network portal.
struct Endpoint {
    std::string address; // IPv4 or IPv6 address, as the administrator wrote it
    std::uint16_t port = 3260;
};

struct Volume {
    std::string name; // hexadecimal text of its NAA identifier
    std::string elementName;
    std::uint64_t size = 0;   // bytes
    std::uint32_t status = 0; // as DRAVVolume::state: 0 in service
};

struct Initiator {
    std::string name;   // iSCSI name
    std::string secret; // empty: none
};

struct Target {
    std::string name;   // iSCSI name
    std::string secret; // empty: none
};

struct LogicalUnit {
    Id target = 0;
    std::uint32_t lun = 0;
    std::uint32_t access = 0; // as DRAVLogicalUnit::readOnly
    Id volume = 0;            // 0: the volume is gone
    std::string volumeName;   // of a volume that is gone; empty while it is there
};

// A live session of an initiator with a target.
struct Session {
    Id target = 0;
    Id initiator = 0;
    std::uint16_t tsih = 0;       // target session identifying handle (RFC 7143 section 4.2.3)
    SessionParameters parameters; // agreed at login
};

// A connection of a session, through an endpoint. The primary digests are those agreed.
struct Connection {
    Id session = 0;
    Id endpoint = 0;
    std::uint16_t cid = 0; // connection id, unique in its session
    ConnectionParameters parameters;
    // How the login was authenticated: DRAV_AUTH_CHAP or DRAV_AUTH_NO_AUTHENTICATION.
    std::uint16_t authMethod = Pegasus::DRAV_AUTH_NO_AUTHENTICATION;
    bool mutualAuth = false; // the target proved its secret too
};

// What happened at logins to a target since it was made.
struct LoginStatistics {
    std::uint64_t successfulLogins = 0;
    std::uint64_t negotiationFailures = 0;
    std::uint64_t authenticationFailures = 0;
    std::uint64_t authorizationFailures = 0;
    std::uint64_t redirects = 0;
    std::uint64_t otherFailures = 0;
    std::uint64_t normalLogouts = 0;
    std::uint64_t otherLogouts = 0;

    // Of the last failure; type 0 and empty: there was none.
    std::uint16_t lastFailureType = 0; // value map of LastLoginFailureType: 2 to 5, 1 other
    std::uint64_t lastFailureTime = 0; // microseconds since 1970-01-01 UTC
    std::string lastFailureInitiator;  // iSCSI name

    std::uint64_t failures() const {
        return negotiationFailures + authenticationFailures + authorizationFailures + redirects +
               otherFailures;
    }
};

// Sessions of a target that failed since it was made.
struct SessionFailures {
    std::uint64_t digest = 0;
    std::uint64_t connectionTimeout = 0;
    std::uint64_t format = 0;
    std::uint16_t lastType = 0; // value map of LastSessionFailureType: 2 to 4, 1 other
    std::string lastInitiator;  // iSCSI name

    std::uint64_t failures() const { return digest + connectionTimeout + format; }
};

// Since the session's login; directions as the target sees them.
struct SessionStatistics {
    std::uint64_t commandPDUs = 0;
    std::uint64_t responsePDUs = 0;
    std::uint64_t bytesTransmitted = 0;
    std::uint64_t bytesReceived = 0;
    std::uint64_t digestErrors = 0;
    std::uint64_t connectionTimeoutErrors = 0;
};

// The counters of the network interface behind an endpoint.
struct InterfaceStatistics {
    std::uint64_t framesReceived = 0;
    std::uint64_t framesSent = 0;
    std::uint64_t octetsReceived = 0;
    std::uint64_t octetsSent = 0;
    std::uint64_t receiveErrors = 0;
    std::uint64_t sendErrors = 0;
    std::uint64_t receiveDiscards = 0;
    std::uint64_t sendDiscards = 0;
};

} // namespace array
