#include "providers/masking/SCSIProtocolControllerProvider.h"

#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "engine/builders/iSCSINode.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Objects.h"
#include "providers/frame/Requests.h"

namespace Pegasus {

namespace {

// All targets, if controllers are what is asked for. Wanted: see docs/contract.md, Superclasses.
Array<Uint32> targets(DRAVEngine& engine, const CIMObjectPath& classReference) {
    if (classReference.getClassName() != CLASS_SCSIProtocolController) {
        return Array<Uint32>();
    }
    return engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET);
}

} // namespace

void SCSIProtocolControllerProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void SCSIProtocolControllerProvider::getInstance(const OperationContext&,
                                                 const CIMObjectPath& instanceReference,
                                                 const Boolean includeQualifiers, const Boolean,
                                                 const CIMPropertyList& propertyList,
                                                 InstanceResponseHandler& handler) {
    const OperationScope operation;
    trace("SCSIProtocolControllerProvider::getInstance");
    handler.processing();
    handler.deliver(
        iSCSINodeInstance(includeQualifiers, propertyList, idFromDeviceID(instanceReference)));
    handler.complete();
}

void SCSIProtocolControllerProvider::enumerateInstances(
    const OperationContext&, const CIMObjectPath& classReference, const Boolean includeQualifiers,
    const Boolean, const CIMPropertyList& propertyList, InstanceResponseHandler& handler) {
    const OperationScope operation;
    trace("SCSIProtocolControllerProvider::enumerateInstances");
    handler.processing();
    for (const Uint32 id : targets(*_engine, classReference)) {
        handler.deliver(iSCSINodeInstance(includeQualifiers, propertyList, id));
    }
    handler.complete();
}

void SCSIProtocolControllerProvider::enumerateInstanceNames(const OperationContext&,
                                                            const CIMObjectPath& classReference,
                                                            ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    trace("SCSIProtocolControllerProvider::enumerateInstanceNames");
    handler.processing();
    for (const Uint32 id : targets(*_engine, classReference)) {
        handler.deliver(iSCSINodePath(id));
    }
    handler.complete();
}

} // namespace Pegasus
