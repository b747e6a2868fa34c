#include "providers/identity/StorageHardwareIDProvider.h"

#include "engine/DRAVInitiator.h"
#include "engine/DRAVKeys.h"
#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Objects.h"
#include "providers/frame/Requests.h"

namespace Pegasus {

namespace {

const CIMName PROPERTY_StorageID("StorageID");
const CIMName PROPERTY_IDType("IDType");
const CIMName PROPERTY_CurrentlyAuthenticated("CurrentlyAuthenticated");

// All hosts, if theirs is the class asked for. Wanted: see docs/contract.md, Superclasses.
Array<Uint32> initiators(DRAVEngine& engine, const CIMObjectPath& classReference) {
    if (classReference.getClassName() != CLASS_StorageHardwareID) {
        return Array<Uint32>();
    }
    return engine.enumerateAssociatedObjects(SESSION_ROOT_OBJECT_ID, CLASSID_INITIATOR);
}

} // namespace

void StorageHardwareIDProvider::initialize(CIMOMHandle& cimom) {
    trace("StorageHardwareIDProvider::initialize");
    attach(_engine, _cimom, cimom);
}

void StorageHardwareIDProvider::getInstance(const OperationContext&,
                                            const CIMObjectPath& instanceReference, const Boolean,
                                            const Boolean, const CIMPropertyList&,
                                            InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    _getStorageHardwareID(idFromFirstKey(instanceReference), handler);
    handler.complete();
}

void StorageHardwareIDProvider::enumerateInstances(const OperationContext&,
                                                   const CIMObjectPath& classReference,
                                                   const Boolean, const Boolean,
                                                   const CIMPropertyList&,
                                                   InstanceResponseHandler& handler) {
    const OperationScope operation;
    trace("StorageHardwareIDProvider::enumerateInstances");
    handler.processing();
    for (const Uint32 id : initiators(*_engine, classReference)) {
        _getStorageHardwareID(id, handler);
    }
    handler.complete();
}

void StorageHardwareIDProvider::enumerateInstanceNames(const OperationContext&,
                                                       const CIMObjectPath& classReference,
                                                       ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    for (const Uint32 id : initiators(*_engine, classReference)) {
        handler.deliver(storageHardwareIDPath(id));
    }
    handler.complete();
}

void StorageHardwareIDProvider::_getStorageHardwareID(Uint32 initiatorId,
                                                      InstanceResponseHandler& handler) {
    constexpr Uint16 iSCSIName = 5; // of IDType's values

    const String name = EngineRecord<DRAVInitiator>(*_engine, CLASSID_INITIATOR, initiatorId)->name;
    CIMInstance instance(CLASS_StorageHardwareID);
    instance.addProperty(CIMProperty(PROPERTY_StorageID, name));
    instance.addProperty(CIMProperty(PROPERTY_IDType, iSCSIName));
    instance.addProperty(CIMProperty(PROPERTY_CurrentlyAuthenticated, false));
    instance.addProperty(keyProperty(PROPERTY_InstanceID, DRAVObjectKey(initiatorId)));
    instance.setPath(storageHardwareIDPath(initiatorId));
    handler.deliver(instance);
}

} // namespace Pegasus
