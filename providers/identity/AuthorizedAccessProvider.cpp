#include "providers/identity/AuthorizedAccessProvider.h"

#include "engine/DRAVInitiator.h"
#include "engine/DRAVKeys.h"
#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "providers/frame/ArrayRange.h"
#include "providers/frame/Attach.h"
#include "providers/frame/Keys.h"
#include "providers/frame/Records.h"
#include "providers/identity/StorageHardwareIDPath.h"

namespace Pegasus {

namespace {

const CIMName CLASS_AuthorizedSubject("CIM_AuthorizedSubject");
const CIMName CLASS_AuthorizedTarget("CIM_AuthorizedTarget");
const CIMName CLASS_AuthorizedPrivilege("CIM_AuthorizedPrivilege");
const CIMName CLASS_Privilege("CIM_Privilege");

bool isPrivilege(const CIMName& className) {
    return className == CLASS_AuthorizedPrivilege || className == CLASS_Privilege;
}

CIMObjectPath privilegePath(Uint32 initiatorId) {
    return modulePath(CLASS_AuthorizedPrivilege, PROPERTY_InstanceID, initiatorId);
}

CIMObjectPath controllerPath(Uint32 targetId) {
    return modulePath(CLASS_SCSIProtocolController, PROPERTY_DeviceID, targetId);
}

// "DeviceID" of a controller; of a path without it the last key, or nothing.
Uint32 controllerId(const CIMObjectPath& objectName) {
    String value;
    for (const CIMKeyBinding& key : objectName.getKeyBindings()) {
        value = key.getValue();
        if (key.getName() == PROPERTY_DeviceID) {
            break;
        }
    }
    return DRAVObjectID(value).id;
}

// Where a traversal leads: objects of one kind, by their engine ids.
struct FarEnd {
    CIMObjectPath (*path)(Uint32 id);
    Array<Uint32> ids;
};

FarEnd traverse(DRAVEngine& engine, const CIMObjectPath& objectName,
                const CIMName& associationClass, const CIMName& resultClass) {
    const CIMName& sourceClass = objectName.getClassName();
    if (associationClass == CLASS_AuthorizedSubject) {
        const Array<Uint32> id(1, idFromFirstKey(objectName));
        if (sourceClass == CLASS_StorageHardwareID && isPrivilege(resultClass)) {
            return {privilegePath, id};
        }
        if (isPrivilege(sourceClass) && resultClass == CLASS_StorageHardwareID) {
            return {storageHardwareIDPath, id};
        }
    } else if (associationClass == CLASS_AuthorizedTarget) {
        if (isPrivilege(sourceClass) && resultClass == CLASS_SCSIProtocolController) {
            return {controllerPath,
                    engine.enumerateAssociatedObjects(idFromFirstKey(objectName), CLASSID_TARGET)};
        }
        if (sourceClass == CLASS_SCSIProtocolController && isPrivilege(resultClass)) {
            return {privilegePath,
                    engine.enumerateAssociatedObjects(controllerId(objectName), CLASSID_INITIATOR)};
        }
    }
    refuse("AuthorizedAccess::associators");
}

} // namespace

void AuthorizedAccessProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void AuthorizedAccessProvider::associators(
    const OperationContext& context, const CIMObjectPath& objectName,
    const CIMName& associationClass, const CIMName& resultClass, const String&, const String&,
    const Boolean includeQualifiers, const Boolean includeClassOrigin,
    const CIMPropertyList& propertyList, ObjectResponseHandler& handler) {
    const OperationScope operation;
    constexpr Boolean localOnly = false;
    handler.processing();
    const FarEnd end = traverse(*_engine, objectName, associationClass, resultClass);
    for (const Uint32 id : end.ids) {
        if (end.path == privilegePath) {
            _deliverAuthorizedPrivilege(id, handler);
        } else {
            handler.deliver(
                CIMObject(_cimom.getInstance(context, SNIA_NAMESPACE, end.path(id), localOnly,
                                             includeQualifiers, includeClassOrigin, propertyList)));
        }
    }
    handler.complete();
}

void AuthorizedAccessProvider::associatorNames(const OperationContext&,
                                               const CIMObjectPath& objectName,
                                               const CIMName& associationClass,
                                               const CIMName& resultClass, const String&,
                                               const String&, ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const FarEnd end = traverse(*_engine, objectName, associationClass, resultClass);
    for (const Uint32 id : end.ids) {
        if (end.path == privilegePath) {
            _deliverAuthorizedPrivilegePath(id, handler);
        } else {
            handler.deliver(end.path(id));
        }
    }
    handler.complete();
}

// The record is read only so that the engine can refuse an id that it doesn't know.
void AuthorizedAccessProvider::_deliverAuthorizedPrivilege(Uint32 initiatorId,
                                                           ObjectResponseHandler& handler) {
    readRecord<DRAVInitiator>(*_engine, CLASSID_INITIATOR, initiatorId);

    CIMInstance instance(CLASS_AuthorizedPrivilege);
    instance.addProperty(CIMProperty("PrivilegeGranted", true));
    instance.addProperty(keyProperty(PROPERTY_InstanceID, DRAVObjectKey(initiatorId)));
    instance.setPath(privilegePath(initiatorId));
    handler.deliver(CIMObject(instance));
}

void AuthorizedAccessProvider::_deliverAuthorizedPrivilegePath(Uint32 initiatorId,
                                                               ObjectPathResponseHandler& handler) {
    handler.deliver(privilegePath(initiatorId));
}

} // namespace Pegasus
