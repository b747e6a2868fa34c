#include "providers/identity/StorageHardwareIDManagementService.h"

#include "engine/DRAVInitiator.h"
#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Objects.h"
#include "providers/frame/Requests.h"
#include "providers/frame/Services.h"

namespace Pegasus {

namespace {

const CIMName CLASS_Service("CIM_StorageHardwareIDManagementService");
const CIMName METHOD_CreateStorageHardwareID("CreateStorageHardwareID");
const CIMName METHOD_DeleteStorageHardwareID("DeleteStorageHardwareID");

// What the methods return. Wanted: see docs/contract.md, Return values.
constexpr Sint32 done = 0;
constexpr Sint32 refusedByEngine = 4;

// Registers a host and delivers the reference to it, in the request's namespace.
Sint32 createStorageHardwareID(DRAVEngine& engine, const CIMObjectPath& objectReference,
                               const Array<CIMParamValue>& inParameters,
                               MethodResultResponseHandler& handler) {
    // Only the name is used; the others are read for their types. Wanted: see docs/contract.md,
    // Parameters that are read only.
    inParameter<CIMObjectPath>(inParameters, "Setting");
    inParameter<String>(inParameters, "ElementName");
    const String storageID = inParameter<String>(inParameters, "StorageID");
    inParameter<Uint16>(inParameters, "IDType");

    try {
        const Uint32 id = engine.createObject(CLASSID_INITIATOR, DRAVInitiator(storageID));
        CIMObjectPath path = storageHardwareIDPath(id);
        path.setNameSpace(objectReference.getNameSpace());
        handler.deliverParamValue(CIMParamValue("HardwareID", path, true));
        return done;
    } catch (const DRAVOperationFailedException& exception) {
        trace("DRAVException.code: " + std::to_string(exception.code) +
              " DRAVException.message: " + utf8(exception.getMessage()));
        return refusedByEngine;
    }
}

Sint32 deleteStorageHardwareID(DRAVEngine& engine, const Array<CIMParamValue>& inParameters) {
    const auto hardwareID = inParameter<CIMObjectPath>(inParameters, "HardwareID");
    engine.deleteObject(CLASSID_INITIATOR, idFromFirstKey(hardwareID));
    return done;
}

} // namespace

void StorageHardwareIDManagementServiceProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void StorageHardwareIDManagementServiceProvider::getInstance(const OperationContext&,
                                                             const CIMObjectPath&, const Boolean,
                                                             const Boolean, const CIMPropertyList&,
                                                             InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    handler.deliver(_build_instance());
    handler.complete();
}

void StorageHardwareIDManagementServiceProvider::enumerateInstances(
    const OperationContext&, const CIMObjectPath& classReference, const Boolean, const Boolean,
    const CIMPropertyList&, InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    if (classReference.getClassName() == CLASS_Service) {
        handler.deliver(_build_instance());
    }
    handler.complete();
}

void StorageHardwareIDManagementServiceProvider::enumerateInstanceNames(
    const OperationContext&, const CIMObjectPath& classReference,
    ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    if (classReference.getClassName() == CLASS_Service) {
        handler.deliver(_fill_reference());
    }
    handler.complete();
}

void StorageHardwareIDManagementServiceProvider::invokeMethod(
    const OperationContext&, const CIMObjectPath& objectReference, const CIMName& methodName,
    const Array<CIMParamValue>& inParameters, MethodResultResponseHandler& handler) {
    const OperationScope operation;
    // Wanted: see docs/contract.md, Line numbers of events.
    publishInvoked("StorageHardwareIDManagementService", 254, objectReference, methodName);
    trace("StorageHardwareIDManagementServiceProvider::invokeMethod");
    handler.processing();
    if (objectReference.getClassName() == CLASS_Service) {
        if (methodName == METHOD_CreateStorageHardwareID) {
            handler.deliver(
                createStorageHardwareID(*_engine, objectReference, inParameters, handler));
        } else if (methodName == METHOD_DeleteStorageHardwareID) {
            handler.deliver(deleteStorageHardwareID(*_engine, inParameters));
        }
        // Another method gives no value. Wanted: see docs/contract.md, Unknown methods.
    }
    handler.complete();
}

CIMInstance StorageHardwareIDManagementServiceProvider::_build_instance() const {
    return serviceInstance(CLASS_Service);
}

CIMObjectPath StorageHardwareIDManagementServiceProvider::_fill_reference() const {
    return servicePath(CLASS_Service);
}

} // namespace Pegasus
