#include "providers/iscsi/iSCSIPipesProvider.h"

#include <functional>
#include <string>

#include "engine/DRAVKeys.h"
#include "engine/DRAVTarget.h"
#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "engine/builders/Builders.h"
#include "providers/frame/ArrayRange.h"
#include "providers/frame/Associations.h"
#include "providers/frame/Attach.h"
#include "providers/frame/Keys.h"
#include "providers/frame/Records.h"

namespace Pegasus {

namespace {

using Ids = Array<Uint32>;

const CIMName endpointOfNetworkPipe("CIM_EndpointOfNetworkPipe");
const CIMName networkPipeComposition("CIM_NetworkPipeComposition");
const CIMName iSCSIProtocolEndpoint("CIM_iSCSIProtocolEndpoint");
const CIMName TCPProtocolEndpoint("CIM_TCPProtocolEndpoint");

[[noreturn]] void refuseClass() {
    refuse("IPProtocolEndpoints::associators");
}

// Delivers what an operation comes to: paths if it asks for names, else instances.
class Answer {
public:
    template<class Handler>
    Answer(Handler& handler, Boolean includeQualifiers, const CIMPropertyList& propertyList)
        : _deliver([&handler](const CIMInstance& instance) { handler.deliver(instance); }),
          _qualifiers(includeQualifiers), _properties(propertyList) {}

    explicit Answer(ObjectPathResponseHandler& handler) : _paths(&handler) {}

    void session(const CIMName& className, Uint32 id) const {
        _paths ? _paths->deliver(iSCSISessionPath(className, id))
               : _deliver(iSCSISessionInstance(className, _qualifiers, _properties, id));
    }
    void connection(const CIMName& className, Uint32 id) const {
        _paths ? _paths->deliver(iSCSIConnectionPath(className, id))
               : _deliver(iSCSIConnectionInstance(className, _qualifiers, _properties, id));
    }
    // The path goes by the target's name, the instance by a position among the targets.
    void targetEndpoint(const String& targetName, const Ids& targets, Uint32 position) const {
        _paths
            ? _paths->deliver(iSCSIProtocolEndpointPath(targetName))
            : _deliver(iSCSIProtocolEndpointInstance(_qualifiers, _properties, targets[position]));
    }
    void TCPEndpoint(Uint32 id) const {
        _paths ? _paths->deliver(TCPProtocolEndpointPath(id))
               : _deliver(TCPProtocolEndpointInstance(_qualifiers, _properties, id));
    }
    void pipeOfTarget(const String& name, Uint32 sessionId) const {
        _paths ? _paths->deliver(EndpointOfNetworkPipePath(name, CLASS_iSCSISession, sessionId))
               : _deliver(EndpointOfNetworkPipeInstance(_qualifiers, name, CLASS_iSCSISession,
                                                        sessionId));
    }
    void composition(Uint32 sessionId, Uint32 connectionId) const {
        const CIMName& name = networkPipeComposition;
        _paths
            ? _paths->deliver(NetworkPipeCompositionPath(name, sessionId, connectionId))
            : _deliver(NetworkPipeCompositionInstance(name, _qualifiers, sessionId, connectionId));
    }
    void link(const CIMName& association, const AssociationEnd& first,
              const AssociationEnd& second) const {
        _paths ? _paths->deliver(associationPath(association, first, second))
               : _deliver(associationInstance(association, first, second, _qualifiers));
    }

private:
    ObjectPathResponseHandler* const _paths = nullptr;
    const std::function<void(const CIMInstance&)> _deliver;
    const Boolean _qualifiers = false;
    const CIMPropertyList _properties;
};

AssociationEnd endpointEnd(Uint32 endpointId) {
    return {STRING_Antecedent, TCPProtocolEndpointPath(endpointId), TCPProtocolEndpoint};
}

AssociationEnd connectionEnd(Uint32 connectionId) {
    return {STRING_Dependent, iSCSIConnectionPath(CLASS_iSCSIConnection, connectionId),
            CLASS_iSCSIConnection};
}

// An end that the client names by its path.
AssociationEnd givenEnd(const String& role, const CIMObjectPath& path) {
    return {role, path, path.getClassName()};
}

// None if the target's record says so, or if there is no record.
Ids sessionsOf(DRAVEngine& engine, Uint32 targetId, const DRAVTarget* target) {
    if (!target || target->sessionPresence == 0) {
        return Ids();
    }
    return engine.enumerateAssociatedObjects(targetId, CLASSID_ISCSI_SESSION);
}

Ids connectionsOf(DRAVEngine& engine, Uint32 id) {
    return engine.enumerateAssociatedObjects(id, CLASSID_ISCSI_CONNECTION);
}

// visit(targets, name of a target, its sessions, position in them), for each session of each.
template<class Visit>
void forEachSession(DRAVEngine& engine, Visit visit) {
    const Ids targets = engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
    for (const Uint32 targetId : targets) {
        const auto target = readRecord<DRAVTarget>(engine, CLASSID_TARGET, targetId);
        const Ids sessions = sessionsOf(engine, targetId, target.get());
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

// Instances: how one is got and all of a class are listed. Here and in the walks below, the other
// end of a pipe is often the one at the pipe's own position j: clients of the array rely on it.

void getSession(const CIMObjectPath& path, const Answer& answer) {
    answer.session(path.getClassName(), idFromFirstKey(path));
}

void getConnection(const CIMObjectPath& path, const Answer& answer) {
    answer.connection(path.getClassName(), idFromFirstKey(path));
}

// The association that the client names by its ends, whether or not there are such objects.
void echo(const CIMName& association, const String& firstRole, const String& secondRole,
          const CIMObjectPath& path, const Answer& answer) {
    const AssociationEnd first = givenEnd(firstRole, keyValue(path, firstRole));
    const AssociationEnd second = givenEnd(secondRole, keyValue(path, secondRole));
    answer.link(association, first, second);
}

void getPipeEnd(const CIMObjectPath& path, const Answer& answer) {
    echo(endpointOfNetworkPipe, STRING_Antecedent, STRING_Dependent, path, answer);
}

void getComposition(const CIMObjectPath& path, const Answer& answer) {
    echo(networkPipeComposition, STRING_GroupComponent, STRING_PartComponent, path, answer);
}

void listSessions(DRAVEngine& engine, const CIMName& className, const Answer& answer) {
    for (const Uint32 id :
         engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_SESSION)) {
        answer.session(className, id);
    }
}

void listConnections(DRAVEngine& engine, const CIMName& className, const Answer& answer) {
    for (const Uint32 id : connectionsOf(engine, SESSION_ROOT_OBJECT_ID)) {
        answer.connection(className, id);
    }
}

void listPipeEnds(DRAVEngine& engine, const CIMName&, const Answer& answer) {
    forEachSession(engine, [&](const Ids&, const String& name, const Ids& sessions, Uint32 j) {
        answer.pipeOfTarget(name, sessions[j]);
    });
    forEachConnection(engine, [&](const Ids& endpoints, const Ids& connections, Uint32 j) {
        const AssociationEnd endpoint = endpointEnd(endpoints[j]);
        answer.link(endpointOfNetworkPipe, endpoint, connectionEnd(connections[j]));
    });
}

void listCompositions(DRAVEngine& engine, const CIMName&, const Answer& answer) {
    forEachSession(engine, [&](const Ids&, const String&, const Ids& sessions, Uint32 i) {
        const Ids connections = connectionsOf(engine, sessions[i]);
        for (Uint32 j = 0; j < connections.size(); ++j) {
            answer.composition(sessions[j], connections[j]);
        }
    });
}

struct Served {
    const CIMName& className;
    void (*get)(const CIMObjectPath&, const Answer&);
    void (*list)(DRAVEngine&, const CIMName&, const Answer&);
};

const Served servedClasses[] = {
    {CLASS_iSCSISession, getSession, listSessions},
    {CLASS_iSCSIConnection, getConnection, listConnections},
    {endpointOfNetworkPipe, getPipeEnd, listPipeEnds},
    {networkPipeComposition, getComposition, listCompositions},
};

// Null if it is not served.
const Served* findServed(const CIMName& className) {
    for (const Served& served : servedClasses) {
        if (served.className == className) {
            return &served;
        }
    }
    return nullptr;
}

void enumerate(DRAVEngine& engine, const CIMName& className, const Answer& answer) {
    const Served* const served = findServed(className);
    if (!served) {
        refuseClass();
    }
    served->list(engine, className, answer);
}

// Walks from an object to what is at the other end of its pipes.

struct Question {
    const CIMObjectPath& source;
    const CIMName& association;
    const CIMName* farEnd; // class of the far ends; null: the associations are wanted
    const char* tag;       // begins the lines of the walk from an iSCSI endpoint
};

// The endpoint's "Name" is the target's and a suffix of nine characters. It is not checked: what is
// shorter is looked up whole.
void sessionsOfTarget(DRAVEngine& engine, const Question& question, const Answer& answer) {
    const String name = keyValue(question.source, PROPERTY_Name);
    const String targetKey = name.subString(0, name.size() - 9);
    const std::string tag = question.tag;
    trace(tag + "Extracted Target Key: " + utf8(targetKey));
    const Uint32 targetId = engine.getiSCSIObjectIDByName(CLASSID_TARGET, targetKey);
    trace(tag + "ObjectIDByName is: " + std::to_string(targetId));
    if (targetId == 0) {
        return;
    }

    const auto target = readRecord<DRAVTarget>(engine, CLASSID_TARGET, targetId);
    for (const Uint32 id : sessionsOf(engine, targetId, target.get())) {
        question.farEnd ? answer.session(*question.farEnd, id) : answer.pipeOfTarget(targetKey, id);
    }
}

void connectionsOfEndpoint(DRAVEngine& engine, const Question& question, const Answer& answer) {
    const AssociationEnd endpoint = givenEnd(STRING_Antecedent, question.source);
    const Uint32 endpointId = DRAVObjectID(keyValue(question.source, PROPERTY_Name)).id;
    for (const Uint32 id : connectionsOf(engine, endpointId)) {
        question.farEnd ? answer.connection(*question.farEnd, id)
                        : answer.link(endpointOfNetworkPipe, endpoint, connectionEnd(id));
    }
}

void targetOfSession(DRAVEngine& engine, const Question& question, const Answer& answer) {
    const Uint32 id = idFromFirstKey(question.source);
    forEachSession(engine,
                   [&](const Ids& targets, const String& name, const Ids& sessions, Uint32 j) {
                       if (sessions[j] == id) {
                           question.farEnd ? answer.targetEndpoint(name, targets, j)
                                           : answer.pipeOfTarget(name, id);
                       }
                   });
}

void endpointOfConnection(DRAVEngine& engine, const Question& question, const Answer& answer) {
    const AssociationEnd connection = givenEnd(STRING_Dependent, question.source);
    const Uint32 id = idFromFirstKey(question.source);
    forEachConnection(engine, [&](const Ids& endpoints, const Ids& connections, Uint32 j) {
        if (connections[j] == id) {
            question.farEnd
                ? answer.TCPEndpoint(endpoints[j])
                : answer.link(endpointOfNetworkPipe, endpointEnd(endpoints[j]), connection);
        }
    });
}

void connectionsOfSession(DRAVEngine& engine, const Question& question, const Answer& answer) {
    const Uint32 sessionId = idFromFirstKey(question.source);
    for (const Uint32 id : connectionsOf(engine, sessionId)) {
        question.farEnd ? answer.connection(*question.farEnd, id)
                        : answer.composition(sessionId, id);
    }
}

struct Walk {
    const CIMName& association;
    const CIMName& source;
    const CIMName& farEnd;
    void (*go)(DRAVEngine&, const Question&, const Answer&);
};

const Walk walks[] = {
    {endpointOfNetworkPipe, iSCSIProtocolEndpoint, CLASS_iSCSISession, sessionsOfTarget},
    {endpointOfNetworkPipe, TCPProtocolEndpoint, CLASS_iSCSIConnection, connectionsOfEndpoint},
    {endpointOfNetworkPipe, CLASS_iSCSISession, iSCSIProtocolEndpoint, targetOfSession},
    {endpointOfNetworkPipe, CLASS_iSCSIConnection, TCPProtocolEndpoint, endpointOfConnection},
    {networkPipeComposition, CLASS_iSCSISession, CLASS_iSCSIConnection, connectionsOfSession},
};

// Where no walk leads, the one association has no results and the other is refused.
void traverse(DRAVEngine& engine, const Question& question, const Answer& answer) {
    for (const Walk& walk : walks) {
        if (walk.association == question.association &&
            walk.source == question.source.getClassName() &&
            (!question.farEnd || walk.farEnd == *question.farEnd)) {
            return walk.go(engine, question, answer);
        }
    }
    if (question.association != endpointOfNetworkPipe) {
        refuseClass();
    }
}

} // namespace

void iSCSIPipesProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void iSCSIPipesProvider::getInstance(const OperationContext&, const CIMObjectPath& path,
                                     const Boolean includeQualifiers, const Boolean,
                                     const CIMPropertyList& propertyList,
                                     InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    static_cast<void>(path.getKeyBindings()[0]); // a path without keys is an error of any class
    if (const Served* const served = findServed(path.getClassName())) {
        served->get(path, Answer(handler, includeQualifiers, propertyList));
    }
    handler.complete();
}

void iSCSIPipesProvider::enumerateInstances(const OperationContext&,
                                            const CIMObjectPath& classReference,
                                            const Boolean includeQualifiers, const Boolean,
                                            const CIMPropertyList& propertyList,
                                            InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes EI ");
    enumerate(*_engine, classReference.getClassName(),
              Answer(handler, includeQualifiers, propertyList));
    handler.complete();
}

void iSCSIPipesProvider::enumerateInstanceNames(const OperationContext&,
                                                const CIMObjectPath& classReference,
                                                ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes EIN ");
    enumerate(*_engine, classReference.getClassName(), Answer(handler));
    handler.complete();
}

void iSCSIPipesProvider::associators(const OperationContext&, const CIMObjectPath& objectName,
                                     const CIMName& associationClass, const CIMName& resultClass,
                                     const String&, const String&, const Boolean includeQualifiers,
                                     const Boolean, const CIMPropertyList& propertyList,
                                     ObjectResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes Associators ");
    traverse(*_engine, {objectName, associationClass, &resultClass, "A:EONP:IPE "},
             Answer(handler, includeQualifiers, propertyList));
    handler.complete();
}

void iSCSIPipesProvider::associatorNames(const OperationContext&, const CIMObjectPath& objectName,
                                         const CIMName& associationClass,
                                         const CIMName& resultClass, const String&, const String&,
                                         ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes Associator Names ");
    traverse(*_engine, {objectName, associationClass, &resultClass, "AN:EONP:IPE "},
             Answer(handler));
    handler.complete();
}

void iSCSIPipesProvider::references(const OperationContext&, const CIMObjectPath& objectName,
                                    const CIMName& resultClass, const String&,
                                    const Boolean includeQualifiers, const Boolean,
                                    const CIMPropertyList& propertyList,
                                    ObjectResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes References ");
    traverse(*_engine, {objectName, resultClass, nullptr, "REF:EONP:IPE "},
             Answer(handler, includeQualifiers, propertyList));
    handler.complete();
}

void iSCSIPipesProvider::referenceNames(const OperationContext&, const CIMObjectPath& objectName,
                                        const CIMName& resultClass, const String&,
                                        ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    trace("Entering Pipes ReferenceNames ");
    traverse(*_engine, {objectName, resultClass, nullptr, "REFN:EONP:IPE "}, Answer(handler));
    handler.complete();
}

} // namespace Pegasus
