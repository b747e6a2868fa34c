#pragma once

#include <Pegasus/Common/Config.h>

namespace Pegasus {

// The class of an engine object. An object id is class << 24 | serial, so the class of an id is
// id >> 24, whether it is one of these or not. Id 0 names no object.
enum CLASSID_e : Uint32 {
    CLASSID_TCP_ENDPOINT = 9,         // network portals of the array
    CLASSID_INITIATOR = 13,           // hosts, one per iSCSI initiator name: DRAVInitiator
    CLASSID_TARGET = 14,              // iSCSI targets: DRAVTarget
    CLASSID_LOGICAL_UNIT = 15,        // a volume under a target, by LUN: DRAVLogicalUnit
    CLASSID_ISCSI_CONNECTION = 16,    // the TCP connections of sessions
    CLASSID_ISCSI_SESSION = 17,       // live iSCSI sessions
    CLASSID_VOLUME = 23,              // storage volumes: DRAVVolume
    CLASSID_CONNECTION_SETTINGS = 34, // proposed login parameters: DRAVConnectionSettings
    CLASSID_SESSION_SETTINGS = 35     // proposed login parameters: DRAVSessionSettings
};

// Under this id the engine lists all initiators, iSCSI sessions and iSCSI connections.
constexpr Uint32 SESSION_ROOT_OBJECT_ID = 0x02000000;

// Under this id the engine lists all targets and TCP endpoints.
constexpr Uint32 SYSTEM_OBJECT_ID = 0x03000000;

} // namespace Pegasus
