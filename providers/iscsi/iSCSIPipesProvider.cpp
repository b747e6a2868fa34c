#include "providers/iscsi/iSCSIPipesProvider.h"

#include "engine/DRAVKeys.h"
#include "engine/DRAVTarget.h"
#include "engine/NameConstants.h"
#include "engine/builders/Builders.h"
#include "providers/frame/ArrayRange.h"
#include "providers/frame/Associations.h"
#include "providers/frame/Attach.h"
#include "providers/frame/Keys.h"
#include "providers/frame/Records.h"

namespace Pegasus {

namespace {

const CIMName endpointOfNetworkPipe("CIM_EndpointOfNetworkPipe");
const CIMName networkPipeComposition("CIM_NetworkPipeComposition");
const CIMName iSCSIProtocolEndpoint("CIM_iSCSIProtocolEndpoint");
const CIMName TCPProtocolEndpoint("CIM_TCPProtocolEndpoint");

[[noreturn]] void refuseClass() {
    refuse("IPProtocolEndpoints::associators");
}

// What an operation makes of the pipes and links that it comes to.
class Answer {
public:
    Answer() = default;
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;
    virtual ~Answer() = default;

    virtual void session(const CIMName& className, Uint32 id) = 0;
    virtual void connection(const CIMName& className, Uint32 id) = 0;

    // The iSCSI endpoint of a target, known by its name or by its place in the list of targets.
    virtual void targetEndpoint(const String& targetName, const Array<Uint32>& targets,
                                Uint32 position) = 0;
    virtual void TCPEndpoint(Uint32 id) = 0;

    virtual void pipeOfTarget(const String& targetName, Uint32 sessionId) = 0;
    virtual void pipeOfEndpoint(const AssociationEnd& antecedent,
                                const AssociationEnd& dependent) = 0;
    virtual void composition(Uint32 sessionId, Uint32 connectionId) = 0;
};

template<class Handler>
class Instances : public Answer {
public:
    Instances(Boolean includeQualifiers, const CIMPropertyList& propertyList, Handler& handler)
        : _includeQualifiers(includeQualifiers), _propertyList(propertyList), _handler(handler) {}

    void session(const CIMName& className, Uint32 id) override {
        _handler.deliver(iSCSISessionInstance(className, _includeQualifiers, _propertyList, id));
    }
    void connection(const CIMName& className, Uint32 id) override {
        _handler.deliver(iSCSIConnectionInstance(className, _includeQualifiers, _propertyList, id));
    }
    // The endpoint of the target at this position, whatever the name says.
    void targetEndpoint(const String&, const Array<Uint32>& targets, Uint32 position) override {
        _handler.deliver(
            iSCSIProtocolEndpointInstance(_includeQualifiers, _propertyList, targets[position]));
    }
    void TCPEndpoint(Uint32 id) override {
        _handler.deliver(TCPProtocolEndpointInstance(_includeQualifiers, _propertyList, id));
    }
    void pipeOfTarget(const String& targetName, Uint32 sessionId) override {
        _handler.deliver(EndpointOfNetworkPipeInstance(_includeQualifiers, targetName,
                                                       CLASS_iSCSISession, sessionId));
    }
    void pipeOfEndpoint(const AssociationEnd& antecedent,
                        const AssociationEnd& dependent) override {
        _handler.deliver(
            associationInstance(endpointOfNetworkPipe, antecedent, dependent, _includeQualifiers));
    }
    void composition(Uint32 sessionId, Uint32 connectionId) override {
        _handler.deliver(NetworkPipeCompositionInstance(networkPipeComposition, _includeQualifiers,
                                                        sessionId, connectionId));
    }

private:
    const Boolean _includeQualifiers;
    const CIMPropertyList& _propertyList;
    Handler& _handler;
};

class Paths : public Answer {
public:
    explicit Paths(ObjectPathResponseHandler& handler) : _handler(handler) {}

    void session(const CIMName& className, Uint32 id) override {
        _handler.deliver(iSCSISessionPath(className, id));
    }
    void connection(const CIMName& className, Uint32 id) override {
        _handler.deliver(iSCSIConnectionPath(className, id));
    }
    void targetEndpoint(const String& targetName, const Array<Uint32>&, Uint32) override {
        _handler.deliver(iSCSIProtocolEndpointPath(targetName));
    }
    void TCPEndpoint(Uint32 id) override { _handler.deliver(TCPProtocolEndpointPath(id)); }
    void pipeOfTarget(const String& targetName, Uint32 sessionId) override {
        _handler.deliver(EndpointOfNetworkPipePath(targetName, CLASS_iSCSISession, sessionId));
    }
    void pipeOfEndpoint(const AssociationEnd& antecedent,
                        const AssociationEnd& dependent) override {
        _handler.deliver(associationPath(endpointOfNetworkPipe, antecedent, dependent));
    }
    void composition(Uint32 sessionId, Uint32 connectionId) override {
        _handler.deliver(
            NetworkPipeCompositionPath(networkPipeComposition, sessionId, connectionId));
    }

private:
    ObjectPathResponseHandler& _handler;
};

// Visits the targets that have sessions: visit(targets, name of the target, its sessions).
template<class Visit>
void forEachTarget(DRAVEngine& engine, Visit visit) {
    const Array<Uint32> targets =
        engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
    for (const Uint32 targetId : targets) {
        const auto target = readRecord<DRAVTarget>(engine, CLASSID_TARGET, targetId);
        if (target && target->sessionPresence != 0)
            visit(targets, target->name,
                  engine.enumerateAssociatedObjects(targetId, CLASSID_ISCSI_SESSION));
    }
}

// Visits the TCP endpoints: visit(endpoints, connections of the endpoint).
template<class Visit>
void forEachEndpoint(DRAVEngine& engine, Visit visit) {
    const Array<Uint32> endpoints =
        engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TCP_ENDPOINT);
    for (const Uint32 endpointId : endpoints)
        visit(endpoints, engine.enumerateAssociatedObjects(endpointId, CLASSID_ISCSI_CONNECTION));
}

AssociationEnd endpointEnd(Uint32 endpointId) {
    return {STRING_Antecedent, TCPProtocolEndpointPath(endpointId), TCPProtocolEndpoint};
}

AssociationEnd connectionEnd(Uint32 connectionId) {
    return {STRING_Dependent, iSCSIConnectionPath(CLASS_iSCSIConnection, connectionId),
            CLASS_iSCSIConnection};
}

// An end that the request names by its path.
AssociationEnd givenEnd(const String& role, const CIMObjectPath& path) {
    return {role, path, path.getClassName()};
}

// Enumerations: everything of one class.

void listSessions(DRAVEngine& engine, const CIMName& className, Answer& answer) {
    for (const Uint32 id :
         engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_SESSION))
        answer.session(className, id);
}

void listConnections(DRAVEngine& engine, const CIMName& className, Answer& answer) {
    for (const Uint32 id :
         engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_ISCSI_CONNECTION))
        answer.connection(className, id);
}

// A link is paired by the position j of the connection (here and in the walks below): clients of
// the array rely on it.
void listPipeEnds(DRAVEngine& engine, const CIMName&, Answer& answer) {
    forEachTarget(engine, [&](const auto&, const String& name, const Array<Uint32>& sessions) {
        for (const Uint32 sessionId : sessions)
            answer.pipeOfTarget(name, sessionId);
    });
    forEachEndpoint(engine, [&](const auto& endpoints, const Array<Uint32>& connections) {
        for (Uint32 j = 0; j < connections.size(); ++j) {
            const AssociationEnd endpoint = endpointEnd(endpoints[j]);
            answer.pipeOfEndpoint(endpoint, connectionEnd(connections[j]));
        }
    });
}

void listCompositions(DRAVEngine& engine, const CIMName&, Answer& answer) {
    forEachTarget(engine, [&](const auto&, const String&, const Array<Uint32>& sessions) {
        for (const Uint32 sessionId : sessions) {
            const Array<Uint32> connections =
                engine.enumerateAssociatedObjects(sessionId, CLASSID_ISCSI_CONNECTION);
            for (Uint32 j = 0; j < connections.size(); ++j)
                answer.composition(sessions[j], connections[j]);
        }
    });
}

struct Extent {
    const CIMName& className;
    void (*list)(DRAVEngine&, const CIMName&, Answer&);
};

const Extent extents[] = {
    {CLASS_iSCSISession, listSessions},
    {CLASS_iSCSIConnection, listConnections},
    {endpointOfNetworkPipe, listPipeEnds},
    {networkPipeComposition, listCompositions},
};

void enumerate(DRAVEngine& engine, const CIMName& className, Answer& answer) {
    for (const Extent& extent : extents) {
        if (extent.className == className)
            return extent.list(engine, className, answer);
    }
    refuseClass();
}

// Associations: from an object to the far ends, or to the associations themselves.

struct Question {
    const CIMObjectPath& source;
    const CIMName& association;
    const CIMName* farEnd; // class of the far ends; null: the associations are wanted
    const char* tag;       // begins the lines of the walk from an iSCSI endpoint
};

// From a target's iSCSI endpoint, whose "Name" is the target's and nine characters, to its
// sessions.
void sessionsOfTarget(DRAVEngine& engine, const Question& question, Answer& answer) {
    const String name = keyValue(question.source, PROPERTY_Name);
    const String targetKey = name.subString(0, name.size() - 9);
    const std::string tag = question.tag;
    trace(tag + ":EONP:IPE Extracted Target Key: " + utf8(targetKey));
    const Uint32 targetId = engine.getiSCSIObjectIDByName(CLASSID_TARGET, targetKey);
    trace(tag + ":EONP:IPE ObjectIDByName is: " + std::to_string(targetId));

    const auto target = readRecord<DRAVTarget>(engine, CLASSID_TARGET, targetId);
    if (!target || target->sessionPresence == 0)
        return;
    for (const Uint32 id : engine.enumerateAssociatedObjects(targetId, CLASSID_ISCSI_SESSION)) {
        if (question.farEnd)
            answer.session(*question.farEnd, id);
        else
            answer.pipeOfTarget(targetKey, id);
    }
}

void connectionsOfEndpoint(DRAVEngine& engine, const Question& question, Answer& answer) {
    const Uint32 endpointId = DRAVObjectID(keyValue(question.source, PROPERTY_Name)).id;
    for (const Uint32 id :
         engine.enumerateAssociatedObjects(endpointId, CLASSID_ISCSI_CONNECTION)) {
        if (question.farEnd)
            answer.connection(*question.farEnd, id);
        else
            answer.pipeOfEndpoint(givenEnd(STRING_Antecedent, question.source), connectionEnd(id));
    }
}

void targetOfSession(DRAVEngine& engine, const Question& question, Answer& answer) {
    const Uint32 sessionId = idFromFirstKey(question.source);
    forEachTarget(engine, [&](const Array<Uint32>& targets, const String& name,
                              const Array<Uint32>& sessions) {
        for (Uint32 j = 0; j < sessions.size(); ++j) {
            if (sessions[j] != sessionId)
                continue;
            if (question.farEnd)
                answer.targetEndpoint(name, targets, j);
            else
                answer.pipeOfTarget(name, sessionId);
        }
    });
}

void endpointOfConnection(DRAVEngine& engine, const Question& question, Answer& answer) {
    const Uint32 connectionId = idFromFirstKey(question.source);
    forEachEndpoint(engine, [&](const auto& endpoints, const Array<Uint32>& connections) {
        for (Uint32 j = 0; j < connections.size(); ++j) {
            if (connections[j] != connectionId)
                continue;
            if (question.farEnd)
                answer.TCPEndpoint(endpoints[j]);
            else
                answer.pipeOfEndpoint(endpointEnd(endpoints[j]),
                                      givenEnd(STRING_Dependent, question.source));
        }
    });
}

void connectionsOfSession(DRAVEngine& engine, const Question& question, Answer& answer) {
    const Uint32 sessionId = idFromFirstKey(question.source);
    for (const Uint32 id : engine.enumerateAssociatedObjects(sessionId, CLASSID_ISCSI_CONNECTION)) {
        if (question.farEnd)
            answer.connection(*question.farEnd, id);
        else
            answer.composition(sessionId, id);
    }
}

struct Walk {
    const CIMName& association;
    const CIMName& source;
    const CIMName& farEnd;
    void (*go)(DRAVEngine&, const Question&, Answer&);
};

const Walk walks[] = {
    {endpointOfNetworkPipe, iSCSIProtocolEndpoint, CLASS_iSCSISession, sessionsOfTarget},
    {endpointOfNetworkPipe, TCPProtocolEndpoint, CLASS_iSCSIConnection, connectionsOfEndpoint},
    {endpointOfNetworkPipe, CLASS_iSCSISession, iSCSIProtocolEndpoint, targetOfSession},
    {endpointOfNetworkPipe, CLASS_iSCSIConnection, TCPProtocolEndpoint, endpointOfConnection},
    {networkPipeComposition, CLASS_iSCSISession, CLASS_iSCSIConnection, connectionsOfSession},
};

bool serves(const Walk& walk, const Question& question) {
    return walk.association == question.association &&
           walk.source == question.source.getClassName() &&
           (!question.farEnd || walk.farEnd == *question.farEnd);
}

// A source or far end that no walk serves has no results over the one association, and is refused
// over the other.
void traverse(DRAVEngine& engine, const Question& question, Answer& answer) {
    for (const Walk& walk : walks) {
        if (serves(walk, question))
            return walk.go(engine, question, answer);
    }
    if (question.association != endpointOfNetworkPipe)
        refuseClass();
}

} // namespace

void iSCSIPipesProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void iSCSIPipesProvider::getInstance(const OperationContext&, const CIMObjectPath& path,
                                     const Boolean includeQualifiers, const Boolean,
                                     const CIMPropertyList& propertyList,
                                     InstanceResponseHandler& handler) {
    handler.processing();
    const CIMName className = path.getClassName();
    const Uint32 id = idFromFirstKey(path);
    Instances answer(includeQualifiers, propertyList, handler);

    const auto echo = [&](const CIMName& association, const String& first, const String& second) {
        const AssociationEnd firstEnd = givenEnd(first, CIMObjectPath(keyValue(path, first)));
        const AssociationEnd secondEnd = givenEnd(second, CIMObjectPath(keyValue(path, second)));
        handler.deliver(associationInstance(association, firstEnd, secondEnd, includeQualifiers));
    };

    if (className == CLASS_iSCSISession)
        answer.session(className, id);
    else if (className == CLASS_iSCSIConnection)
        answer.connection(className, id);
    else if (className == endpointOfNetworkPipe)
        echo(endpointOfNetworkPipe, STRING_Antecedent, STRING_Dependent);
    else if (className == networkPipeComposition)
        echo(networkPipeComposition, STRING_GroupComponent, STRING_PartComponent);
    handler.complete();
}

void iSCSIPipesProvider::enumerateInstances(const OperationContext&,
                                            const CIMObjectPath& classReference,
                                            const Boolean includeQualifiers, const Boolean,
                                            const CIMPropertyList& propertyList,
                                            InstanceResponseHandler& handler) {
    handler.processing();
    trace("Entering Pipes EI ");
    Instances answer(includeQualifiers, propertyList, handler);
    enumerate(*_engine, classReference.getClassName(), answer);
    handler.complete();
}

void iSCSIPipesProvider::enumerateInstanceNames(const OperationContext&,
                                                const CIMObjectPath& classReference,
                                                ObjectPathResponseHandler& handler) {
    handler.processing();
    trace("Entering Pipes EIN ");
    Paths answer(handler);
    enumerate(*_engine, classReference.getClassName(), answer);
    handler.complete();
}

void iSCSIPipesProvider::associators(const OperationContext&, const CIMObjectPath& objectName,
                                     const CIMName& associationClass, const CIMName& resultClass,
                                     const String&, const String&, const Boolean includeQualifiers,
                                     const Boolean, const CIMPropertyList& propertyList,
                                     ObjectResponseHandler& handler) {
    handler.processing();
    trace("Entering Pipes Associators ");
    Instances answer(includeQualifiers, propertyList, handler);
    traverse(*_engine, {objectName, associationClass, &resultClass, "A"}, answer);
    handler.complete();
}

void iSCSIPipesProvider::associatorNames(const OperationContext&, const CIMObjectPath& objectName,
                                         const CIMName& associationClass,
                                         const CIMName& resultClass, const String&, const String&,
                                         ObjectPathResponseHandler& handler) {
    handler.processing();
    trace("Entering Pipes Associator Names ");
    Paths answer(handler);
    traverse(*_engine, {objectName, associationClass, &resultClass, "AN"}, answer);
    handler.complete();
}

void iSCSIPipesProvider::references(const OperationContext&, const CIMObjectPath& objectName,
                                    const CIMName& resultClass, const String&,
                                    const Boolean includeQualifiers, const Boolean,
                                    const CIMPropertyList& propertyList,
                                    ObjectResponseHandler& handler) {
    handler.processing();
    trace("Entering Pipes References ");
    Instances answer(includeQualifiers, propertyList, handler);
    traverse(*_engine, {objectName, resultClass, nullptr, "REF"}, answer);
    handler.complete();
}

void iSCSIPipesProvider::referenceNames(const OperationContext&, const CIMObjectPath& objectName,
                                        const CIMName& resultClass, const String&,
                                        ObjectPathResponseHandler& handler) {
    handler.processing();
    trace("Entering Pipes ReferenceNames ");
    Paths answer(handler);
    traverse(*_engine, {objectName, resultClass, nullptr, "REFN"}, answer);
    handler.complete();
}

} // namespace Pegasus
