#include "providers/identity/AuthorizedAccessProvider.h"

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

const CIMName CLASS_AuthorizedSubject("CIM_AuthorizedSubject");
const CIMName CLASS_AuthorizedTarget("CIM_AuthorizedTarget");
const CIMName CLASS_AuthorizedPrivilege("CIM_AuthorizedPrivilege");
const CIMName CLASS_Privilege("CIM_Privilege");
const CIMName PROPERTY_PrivilegeGranted("PrivilegeGranted");

bool isPrivilege(const CIMName& className) {
    return className == CLASS_AuthorizedPrivilege || className == CLASS_Privilege;
}

CIMObjectPath privilegePath(Uint32 initiatorId) {
    return modulePath(CLASS_AuthorizedPrivilege, PROPERTY_InstanceID, initiatorId);
}

CIMObjectPath controllerPath(Uint32 targetId) {
    return modulePath(CLASS_SCSIProtocolController, PROPERTY_DeviceID, targetId);
}

// "DeviceID" of a controller. Of a path without it the last key counts, or nothing. Wanted: see
// docs/contract.md, Keys by position.
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
struct FarEnds {
    enum Kind { Privileges, StorageHardwareIDs, Controllers };
    Kind kind;
    Array<Uint32> ids;
};

FarEnds traverse(DRAVEngine& engine, const CIMObjectPath& objectName,
                 const CIMName& associationClass, const CIMName& resultClass) {
    const CIMName& sourceClass = objectName.getClassName();
    if (associationClass == CLASS_AuthorizedSubject) {
        const Array<Uint32> id(1, idFromFirstKey(objectName));
        if (sourceClass == CLASS_StorageHardwareID && isPrivilege(resultClass)) {
            return {FarEnds::Privileges, id};
        }
        if (isPrivilege(sourceClass) && resultClass == CLASS_StorageHardwareID) {
            return {FarEnds::StorageHardwareIDs, id};
        }
    } else if (associationClass == CLASS_AuthorizedTarget) {
        if (isPrivilege(sourceClass) && resultClass == CLASS_SCSIProtocolController) {
            return {FarEnds::Controllers,
                    engine.enumerateAssociatedObjects(idFromFirstKey(objectName), CLASSID_TARGET)};
        }
        if (sourceClass == CLASS_SCSIProtocolController && isPrivilege(resultClass)) {
            return {FarEnds::Privileges,
                    engine.enumerateAssociatedObjects(controllerId(objectName), CLASSID_INITIATOR)};
        }
    }
    refuse("AuthorizedAccess::associators"); // wanted: see docs/contract.md, Borrowed refusals
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
    // Other providers serve hosts and controllers: the server asks them.
    const auto deliverFromServer = [&](const CIMObjectPath& path) {
        constexpr Boolean localOnly = false;
        handler.deliver(
            CIMObject(_cimom.getInstance(context, SNIA_NAMESPACE, path, localOnly,
                                         includeQualifiers, includeClassOrigin, propertyList)));
    };

    handler.processing();
    const FarEnds ends = traverse(*_engine, objectName, associationClass, resultClass);
    for (const Uint32 id : ends.ids) {
        switch (ends.kind) {
        case FarEnds::Privileges:
            _deliverAuthorizedPrivilege(id, handler);
            break;
        case FarEnds::StorageHardwareIDs:
            deliverFromServer(storageHardwareIDPath(id));
            break;
        case FarEnds::Controllers:
            deliverFromServer(controllerPath(id));
            break;
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
    const FarEnds ends = traverse(*_engine, objectName, associationClass, resultClass);
    for (const Uint32 id : ends.ids) {
        switch (ends.kind) {
        case FarEnds::Privileges:
            _deliverAuthorizedPrivilegePath(id, handler);
            break;
        case FarEnds::StorageHardwareIDs:
            handler.deliver(storageHardwareIDPath(id));
            break;
        case FarEnds::Controllers:
            handler.deliver(controllerPath(id));
            break;
        }
    }
    handler.complete();
}

// Nothing of the record is used: it is read to let the engine refuse an id that it does not know.
void AuthorizedAccessProvider::_deliverAuthorizedPrivilege(Uint32 initiatorId,
                                                           ObjectResponseHandler& handler) {
    static_cast<void>(EngineRecord<DRAVInitiator>(*_engine, CLASSID_INITIATOR, initiatorId));

    CIMInstance instance(CLASS_AuthorizedPrivilege);
    instance.addProperty(CIMProperty(PROPERTY_PrivilegeGranted, true));
    instance.addProperty(keyProperty(PROPERTY_InstanceID, DRAVObjectKey(initiatorId)));
    instance.setPath(privilegePath(initiatorId));
    handler.deliver(CIMObject(instance));
}

void AuthorizedAccessProvider::_deliverAuthorizedPrivilegePath(Uint32 initiatorId,
                                                               ObjectPathResponseHandler& handler) {
    handler.deliver(privilegePath(initiatorId));
}

} // namespace Pegasus
