#include "providers/identity/SharedSecretProvider.h"

#include "engine/DRAVInitiator.h"
#include "engine/DRAVKeys.h"
#include "engine/DRAVTarget.h"
#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Objects.h"
#include "providers/frame/Requests.h"

namespace Pegasus {

namespace {

const CIMName CLASS_SharedSecret("CIM_SharedSecret");
const CIMName PROPERTY_RemoteID("RemoteID");
const CIMName PROPERTY_Secret("Secret");

// The class of the object that owns a secret. An object that is no initiator and no target has
// none, which is no error. Wanted: see docs/contract.md, Secrets.
Uint32 ownerClass(Uint32 id) {
    return id >> 24;
}

template<class Owner>
void changeSecret(DRAVEngine& engine, CLASSID_e objectClass, Uint32 id, const String& secret) {
    const EngineRecord<Owner> owner(engine, objectClass, id);
    owner->secret = secret;
    engine.modifyObject(objectClass, *owner);
}

} // namespace

void SharedSecretProvider::initialize(CIMOMHandle& cimom) {
    trace("SharedSecretProvider::initialize");
    attach(_engine, _cimom, cimom);
}

void SharedSecretProvider::getInstance(const OperationContext&,
                                       const CIMObjectPath& instanceReference, const Boolean,
                                       const Boolean, const CIMPropertyList&,
                                       InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    _getSharedSecret(idFromFirstKey(instanceReference), handler);
    handler.complete();
}

void SharedSecretProvider::modifyInstance(const OperationContext&,
                                          const CIMObjectPath& instanceReference,
                                          const CIMInstance& instanceObject, const Boolean,
                                          const CIMPropertyList&, ResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    if (instanceReference.getClassName() == CLASS_SharedSecret) {
        String secret;
        instanceObject.getProperty(instanceObject.findProperty(PROPERTY_Secret))
            .getValue()
            .get(secret);
        const Uint32 id = idFromFirstKey(instanceReference);
        if (ownerClass(id) == CLASSID_INITIATOR) {
            changeSecret<DRAVInitiator>(*_engine, CLASSID_INITIATOR, id, secret);
        } else if (ownerClass(id) == CLASSID_TARGET) {
            changeSecret<DRAVTarget>(*_engine, CLASSID_TARGET, id, secret);
        }
    }
    handler.complete();
}

void SharedSecretProvider::_getSharedSecret(Uint32 id, InstanceResponseHandler& handler) {
    String secret;
    if (ownerClass(id) == CLASSID_INITIATOR) {
        secret = EngineRecord<DRAVInitiator>(*_engine, CLASSID_INITIATOR, id)->secret;
    } else if (ownerClass(id) == CLASSID_TARGET) {
        secret = EngineRecord<DRAVTarget>(*_engine, CLASSID_TARGET, id)->secret;
    }

    CIMInstance instance(CLASS_SharedSecret);
    instance.addProperty(CIMProperty(PROPERTY_Secret, secret));
    instance.addProperty(keyProperty(PROPERTY_RemoteID, DRAVObjectKey(id)));
    instance.setPath(modulePath(CLASS_SharedSecret, PROPERTY_RemoteID, id));
    handler.deliver(instance);
}

} // namespace Pegasus
