#include "providers/iscsi/PipeWalks.h"

#include <string>

#include "engine/DRAVKeys.h"
#include "engine/DRAVTarget.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Requests.h"

namespace Pegasus {

namespace {

using Ids = Array<Uint32>;

// Wanted: see docs/contract.md, Borrowed refusals.
[[noreturn]] void refuseClass() {
    refuse("IPProtocolEndpoints::associators");
}

AssociationEnd endpointEnd(Uint32 endpointId) {
    return {STRING_Antecedent, TCPProtocolEndpointPath(endpointId), CLASS_TCPProtocolEndpoint};
}

AssociationEnd connectionEnd(Uint32 connectionId) {
    return {STRING_Dependent, iSCSIConnectionPath(CLASS_iSCSIConnection, connectionId),
            CLASS_iSCSIConnection};
}

// None if the target's record says so, or if there is no record.
Ids sessionsOf(DRAVEngine& engine, Uint32 targetId, const EngineRecord<DRAVTarget>& target) {
    if (!target || target->sessionPresence == 0) {
        return Ids();
    }
    return engine.enumerateAssociatedObjects(targetId, CLASSID_ISCSI_SESSION);
}

// Of a session, of a TCP endpoint, or of the session root.
Ids connectionsOf(DRAVEngine& engine, Uint32 id) {
    return engine.enumerateAssociatedObjects(id, CLASSID_ISCSI_CONNECTION);
}

// The two functions below tell their visitors the position j of an object in its own list. Visitors
// also use j as an index into another list, as in endpoints[j] for connection j. Wanted: see
// docs/contract.md, Positions as indexes.

// visit(targets, name of a target, its sessions, position in them), for each session of each
// target.
template<class Visit>
void forEachSession(DRAVEngine& engine, Visit visit) {
    const Ids targets = engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
    for (const Uint32 targetId : targets) {
        const EngineRecord<DRAVTarget> target(engine, CLASSID_TARGET, targetId);
        const Ids sessions = sessionsOf(engine, targetId, target);
        for (Uint32 j = 0; j < sessions.size(); ++j) {
            visit(targets, target->name, sessions, j);
        }
    }
}

// visit(endpoints, connections of one of them, position in those), for each connection of each.
template<class Visit>
void forEachConnection(DRAVEngine& engine, Visit visit) {
    const Ids endpoints = engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TCP_ENDPOINT);
    for (const Uint32 endpointId : endpoints) {
        const Ids connections = connectionsOf(engine, endpointId);
        for (Uint32 j = 0; j < connections.size(); ++j) {
            visit(endpoints, connections, j);
        }
    }
}

// All objects of a class.

void listSessions(DRAVEngine& engine, const CIMName& className, PipeAnswer& answer) {
    for (const Uint32 id :
         engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_SESSION)) {
        answer.session(className, id);
    }
}

void listConnections(DRAVEngine& engine, const CIMName& className, PipeAnswer& answer) {
    for (const Uint32 id : connectionsOf(engine, SESSION_ROOT_OBJECT_ID)) {
        answer.connection(className, id);
    }
}

void listEndpointsOfPipes(DRAVEngine& engine, const CIMName&, PipeAnswer& answer) {
    forEachSession(engine, [&](const Ids&, const String& name, const Ids& sessions, Uint32 j) {
        answer.sessionEnd(name, sessions[j]);
    });
    forEachConnection(engine, [&](const Ids& endpoints, const Ids& connections, Uint32 j) {
        const AssociationEnd endpoint = endpointEnd(endpoints[j]);
        answer.association(CLASS_EndpointOfNetworkPipe, endpoint, connectionEnd(connections[j]));
    });
}

void listCompositions(DRAVEngine& engine, const CIMName&, PipeAnswer& answer) {
    forEachSession(engine, [&](const Ids&, const String&, const Ids& sessions, Uint32 i) {
        const Ids connections = connectionsOf(engine, sessions[i]);
        for (Uint32 j = 0; j < connections.size(); ++j) {
            answer.composition(sessions[j], connections[j]);
        }
    });
}

struct List {
    const CIMName& className;
    void (*list)(DRAVEngine&, const CIMName&, PipeAnswer&);
};

const List lists[] = {
    {CLASS_iSCSISession, listSessions},
    {CLASS_iSCSIConnection, listConnections},
    {CLASS_EndpointOfNetworkPipe, listEndpointsOfPipes},
    {CLASS_NetworkPipeComposition, listCompositions},
};

// What an object is joined to.

// The endpoint's "Name" is the target's and a suffix of nine characters. A shorter one is looked up
// whole. Wanted: see docs/contract.md, Short endpoint names.
void walkToSessions(DRAVEngine& engine, const PipeWalk& walk, PipeAnswer& answer) {
    const String name = keyValue(walk.source, PROPERTY_Name);
    const String targetKey = name.subString(0, name.size() - 9);
    const std::string tag = walk.tag;
    trace(tag + "Extracted Target Key: " + utf8(targetKey));
    const Uint32 targetId = engine.getiSCSIObjectIDByName(CLASSID_TARGET, targetKey);
    trace(tag + "ObjectIDByName is: " + std::to_string(targetId));
    if (targetId == 0) {
        return;
    }

    const EngineRecord<DRAVTarget> target(engine, CLASSID_TARGET, targetId);
    for (const Uint32 id : sessionsOf(engine, targetId, target)) {
        if (walk.farEnd) {
            answer.session(*walk.farEnd, id);
        } else {
            answer.sessionEnd(targetKey, id);
        }
    }
}

void walkToConnections(DRAVEngine& engine, const PipeWalk& walk, PipeAnswer& answer) {
    const AssociationEnd endpoint = givenEnd(STRING_Antecedent, walk.source);
    const Uint32 endpointId = DRAVObjectID(keyValue(walk.source, PROPERTY_Name)).id;
    for (const Uint32 id : connectionsOf(engine, endpointId)) {
        if (walk.farEnd) {
            answer.connection(*walk.farEnd, id);
        } else {
            answer.association(CLASS_EndpointOfNetworkPipe, endpoint, connectionEnd(id));
        }
    }
}

void walkToTarget(DRAVEngine& engine, const PipeWalk& walk, PipeAnswer& answer) {
    const Uint32 id = idFromFirstKey(walk.source);
    forEachSession(engine,
                   [&](const Ids& targets, const String& name, const Ids& sessions, Uint32 j) {
                       if (sessions[j] != id) {
                           return;
                       }
                       if (walk.farEnd) {
                           answer.iSCSIEndpoint(name, IdAt{targets, j});
                       } else {
                           answer.sessionEnd(name, id);
                       }
                   });
}

void walkToTCPEndpoint(DRAVEngine& engine, const PipeWalk& walk, PipeAnswer& answer) {
    const AssociationEnd connection = givenEnd(STRING_Dependent, walk.source);
    const Uint32 id = idFromFirstKey(walk.source);
    forEachConnection(engine, [&](const Ids& endpoints, const Ids& connections, Uint32 j) {
        if (connections[j] != id) {
            return;
        }
        if (walk.farEnd) {
            answer.tcpEndpoint(endpoints[j]);
        } else {
            answer.association(CLASS_EndpointOfNetworkPipe, endpointEnd(endpoints[j]), connection);
        }
    });
}

void walkToConnectionsOfSession(DRAVEngine& engine, const PipeWalk& walk, PipeAnswer& answer) {
    const Uint32 sessionId = idFromFirstKey(walk.source);
    for (const Uint32 id : connectionsOf(engine, sessionId)) {
        if (walk.farEnd) {
            answer.connection(*walk.farEnd, id);
        } else {
            answer.composition(sessionId, id);
        }
    }
}

struct Way {
    const CIMName& association;
    const CIMName& source;
    const CIMName& farEnd;
    void (*go)(DRAVEngine&, const PipeWalk&, PipeAnswer&);
};

const Way ways[] = {
    {CLASS_EndpointOfNetworkPipe, CLASS_iSCSIProtocolEndpoint, CLASS_iSCSISession, walkToSessions},
    {CLASS_EndpointOfNetworkPipe, CLASS_TCPProtocolEndpoint, CLASS_iSCSIConnection,
     walkToConnections},
    {CLASS_EndpointOfNetworkPipe, CLASS_iSCSISession, CLASS_iSCSIProtocolEndpoint, walkToTarget},
    {CLASS_EndpointOfNetworkPipe, CLASS_iSCSIConnection, CLASS_TCPProtocolEndpoint,
     walkToTCPEndpoint},
    {CLASS_NetworkPipeComposition, CLASS_iSCSISession, CLASS_iSCSIConnection,
     walkToConnectionsOfSession},
};

} // namespace

void listPipes(DRAVEngine& engine, const CIMName& className, PipeAnswer& answer) {
    for (const List& row : lists) {
        if (row.className == className) {
            return row.list(engine, className, answer);
        }
    }
    refuseClass();
}

void walkPipes(DRAVEngine& engine, const PipeWalk& walk, PipeAnswer& answer) {
    for (const Way& way : ways) {
        if (way.association == walk.association && way.source == walk.source.getClassName() &&
            (!walk.farEnd || way.farEnd == *walk.farEnd)) {
            return way.go(engine, walk, answer);
        }
    }
    if (walk.association != CLASS_EndpointOfNetworkPipe) {
        refuseClass();
    }
}

AssociationEnd givenEnd(const String& role, const CIMObjectPath& path) {
    return {role, path, path.getClassName()};
}

} // namespace Pegasus
