#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/ResponseHandler.h>

#include "engine/NameConstants.h"
#include "engine/builders/Builders.h"
#include "providers/frame/Objects.h"

namespace Pegasus {

inline const CIMName CLASS_EndpointOfNetworkPipe("CIM_EndpointOfNetworkPipe");
inline const CIMName CLASS_NetworkPipeComposition("CIM_NetworkPipeComposition");
inline const CIMName CLASS_iSCSIProtocolEndpoint("CIM_iSCSIProtocolEndpoint");
inline const CIMName CLASS_TCPProtocolEndpoint("CIM_TCPProtocolEndpoint");

// The id at a position of a list. The list is read when the id is used: a position past its end
// throws IndexOutOfBoundsException then.
struct IdAt {
    operator Uint32() const { return ids[position]; }

    const Array<Uint32>& ids;
    Uint32 position;
};

// What an operation on pipes delivers, one object after the other: paths if it asks for names, else
// instances.
class PipeAnswer {
public:
    virtual ~PipeAnswer() = default;

    virtual void session(const CIMName& className, Uint32 id) = 0;
    virtual void connection(const CIMName& className, Uint32 id) = 0;

    // The iSCSI endpoint of a target: its path is built from the target's name, its instance from
    // the target's id.
    virtual void iSCSIEndpoint(const String& targetName, const IdAt& targetId) = 0;
    virtual void tcpEndpoint(Uint32 id) = 0;

    // What joins a target's iSCSI endpoint and a session.
    virtual void sessionEnd(const String& targetName, Uint32 sessionId) = 0;
    // What joins a session and a connection.
    virtual void composition(Uint32 sessionId, Uint32 connectionId) = 0;
    // An association that the provider builds by itself.
    virtual void association(const CIMName& className, const AssociationEnd& first,
                             const AssociationEnd& second) = 0;

protected:
    PipeAnswer() = default;
    PipeAnswer(const PipeAnswer&) = delete;
    PipeAnswer& operator=(const PipeAnswer&) = delete;
};

class PipeNames final : public PipeAnswer {
public:
    explicit PipeNames(ObjectPathResponseHandler& handler) : _handler(handler) {}

    void session(const CIMName& className, Uint32 id) override {
        _handler.deliver(iSCSISessionPath(className, id));
    }

    void connection(const CIMName& className, Uint32 id) override {
        _handler.deliver(iSCSIConnectionPath(className, id));
    }

    void iSCSIEndpoint(const String& targetName, const IdAt&) override {
        _handler.deliver(iSCSIProtocolEndpointPath(targetName));
    }

    void tcpEndpoint(Uint32 id) override { _handler.deliver(TCPProtocolEndpointPath(id)); }

    void sessionEnd(const String& targetName, Uint32 sessionId) override {
        _handler.deliver(EndpointOfNetworkPipePath(targetName, CLASS_iSCSISession, sessionId));
    }

    void composition(Uint32 sessionId, Uint32 connectionId) override {
        _handler.deliver(
            NetworkPipeCompositionPath(CLASS_NetworkPipeComposition, sessionId, connectionId));
    }

    void association(const CIMName& className, const AssociationEnd& first,
                     const AssociationEnd& second) override {
        _handler.deliver(associationPath(className, first, second));
    }

private:
    ObjectPathResponseHandler& _handler;
};

// The handler takes instances, or objects.
template<class Handler>
class PipeInstances final : public PipeAnswer {
public:
    PipeInstances(Handler& handler, Boolean includeQualifiers, const CIMPropertyList& properties)
        : _handler(handler), _qualifiers(includeQualifiers), _properties(properties) {}

    void session(const CIMName& className, Uint32 id) override {
        deliver(iSCSISessionInstance(className, _qualifiers, _properties, id));
    }

    void connection(const CIMName& className, Uint32 id) override {
        deliver(iSCSIConnectionInstance(className, _qualifiers, _properties, id));
    }

    void iSCSIEndpoint(const String&, const IdAt& targetId) override {
        deliver(iSCSIProtocolEndpointInstance(_qualifiers, _properties, targetId));
    }

    void tcpEndpoint(Uint32 id) override {
        deliver(TCPProtocolEndpointInstance(_qualifiers, _properties, id));
    }

    void sessionEnd(const String& targetName, Uint32 sessionId) override {
        deliver(
            EndpointOfNetworkPipeInstance(_qualifiers, targetName, CLASS_iSCSISession, sessionId));
    }

    void composition(Uint32 sessionId, Uint32 connectionId) override {
        deliver(NetworkPipeCompositionInstance(CLASS_NetworkPipeComposition, _qualifiers, sessionId,
                                               connectionId));
    }

    void association(const CIMName& className, const AssociationEnd& first,
                     const AssociationEnd& second) override {
        deliver(associationInstance(className, first, second, _qualifiers));
    }

private:
    void deliver(const CIMInstance& instance) { _handler.deliver(instance); }

    Handler& _handler;
    const Boolean _qualifiers;
    const CIMPropertyList& _properties;
};

} // namespace Pegasus
