#include "providers/masking/ProtocolControllerForUnitProvider.h"

#include "engine/DRAVLogicalUnit.h"
#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "engine/builders/StorageVolume.h"
#include "engine/builders/iSCSINode.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Objects.h"
#include "providers/frame/Requests.h"
#include "providers/masking/DeviceAccess.h"

namespace Pegasus {

namespace {

const CIMName CLASS_ProtocolControllerForUnit("CIM_ProtocolControllerForUnit");
const CIMName CLASS_ProtocolController("CIM_ProtocolController");
const CIMName CLASS_LogicalDevice("CIM_LogicalDevice");
const CIMName PROPERTY_DeviceNumber("DeviceNumber");
const CIMName PROPERTY_DeviceAccess("DeviceAccess");

// What a unit's association joins, in the order in which it is built.
struct Ends {
    AssociationEnd first;
    AssociationEnd second;
};

AssociationEnd controllerEnd(Uint32 targetId, const CIMName& className) {
    return {STRING_Antecedent, iSCSINodePath(targetId), className};
}

AssociationEnd volumeEnd(Uint32 volumeId, const CIMName& className) {
    return {STRING_Dependent, StorageVolumePath(volumeId), className};
}

Ends endsOf(Uint32 targetId, const DRAVLogicalUnit& unit) {
    return {volumeEnd(unit.volumeID, CLASS_StorageVolume),
            controllerEnd(targetId, CLASS_SCSIProtocolController)};
}

CIMObjectPath mappingPath(const Ends& ends) {
    return associationPath(CLASS_ProtocolControllerForUnit, ends.first, ends.second);
}

CIMInstance mappingInstance(const Ends& ends, const DRAVLogicalUnit& unit) {
    constexpr Boolean keyQualifiers = true;
    CIMInstance instance = associationInstance(CLASS_ProtocolControllerForUnit, ends.first,
                                               ends.second, keyQualifiers);
    // Wanted: see docs/contract.md, DeviceNumber.
    instance.addProperty(CIMProperty(PROPERTY_DeviceNumber, unit.lun));
    instance.addProperty(CIMProperty(PROPERTY_DeviceAccess, deviceAccess(unit.readOnly)));
    return instance;
}

// Delivers the instance of a unit's volume. That of a volume whose record is gone is built from
// what the unit still knows. Wanted: see docs/contract.md, Zombie volumes.
void deliverVolume(const DRAVLogicalUnit& unit, Boolean includeQualifiers,
                   const CIMPropertyList& propertyList, ObjectResponseHandler& handler) {
    constexpr Uint32 recordGone = 3;
    if (unit.volumeID != 0) {
        handler.deliver(StorageVolumeInstance(includeQualifiers, propertyList, unit.volumeID));
        return;
    }
    DRAVVolume zombie;
    zombie.state = recordGone;
    trace("PCFU: Zombie Volume Name ='" + utf8(unit.volumeName) + "'");
    zombie.name = unit.volumeName;
    handler.deliver(StorageVolumeInstance(includeQualifiers, propertyList, zombie));
}

// Visits the units of a target: visit(targetId, unit).
template<class Visit>
void forEachUnit(DRAVEngine& engine, Uint32 targetId, Visit visit) {
    for (const Uint32 id : engine.enumerateAssociatedObjects(targetId, CLASSID_LOGICAL_UNIT)) {
        visit(targetId, *EngineRecord<DRAVLogicalUnit>(engine, CLASSID_LOGICAL_UNIT, id));
    }
}

// Visits the units of all targets.
template<class Visit>
void forEachUnit(DRAVEngine& engine, Visit visit) {
    for (const Uint32 id : engine.enumerateAssociatedObjects(SYSTEM_OBJECT_ID, CLASSID_TARGET)) {
        forEachUnit(engine, id, visit);
    }
}

// From where an operation walks over the association.
enum class From { Nowhere, Controller, Volume };

bool isController(const CIMName& className) {
    return className == CLASS_ProtocolController || className == CLASS_SCSIProtocolController;
}

bool isVolume(const CIMName& className) {
    return className == CLASS_StorageVolume || className == CLASS_LogicalDevice;
}

From toFarEnds(const CIMName& sourceClass, const CIMName& resultClass) {
    if (isController(sourceClass) && isVolume(resultClass)) {
        return From::Controller;
    }
    if (sourceClass == CLASS_StorageVolume && isController(resultClass)) {
        return From::Volume;
    }
    return From::Nowhere;
}

From toAssociations(bool sourceIsController, const CIMName& sourceClass, const String& role) {
    if (sourceIsController && String::equalNoCase(role, STRING_Antecedent)) {
        return From::Controller;
    }
    if (sourceClass == CLASS_StorageVolume && String::equalNoCase(role, STRING_Dependent)) {
        return From::Volume;
    }
    return From::Nowhere;
}

// Visits the units of the source.
template<class Visit>
void walk(DRAVEngine& engine, From from, const CIMObjectPath& source, Visit visit) {
    const Uint32 sourceId = idFromDeviceID(source);
    if (from == From::Controller) {
        forEachUnit(engine, sourceId, visit);
    } else if (from == From::Volume) {
        forEachUnit(engine, [&](Uint32 targetId, const DRAVLogicalUnit& unit) {
            if (unit.volumeID == sourceId) {
                visit(targetId, unit);
            }
        });
    }
}

// The controller and the volume that the path of an association names.
struct Named {
    explicit Named(const CIMObjectPath& association)
        : controller(keyValue(association, STRING_Antecedent)),
          volume(keyValue(association, STRING_Dependent)), controllerId(idFromDeviceID(controller)),
          volumeId(idFromDeviceID(volume)) {}

    const CIMObjectPath controller;
    const CIMObjectPath volume;
    const Uint32 controllerId;
    const Uint32 volumeId;
};

// Sets a unit's access as the instance asks for it, if it does.
void changeAccess(DRAVLogicalUnit& unit, const CIMInstance& instance) {
    const Uint32 position = instance.findProperty(PROPERTY_DeviceAccess);
    if (position == PEG_NOT_FOUND) {
        return;
    }
    Uint16 access = 0;
    instance.getProperty(position).getValue().get(access);
    unit.readOnly = accessCode(access).value_or(unit.readOnly);
}

} // namespace

void ProtocolControllerForUnitProvider::initialize(CIMOMHandle& cimom) {
    trace("ProtocolControllerForUnitProvider::initialize");
    attach(_engine, _cimom, cimom);
}

void ProtocolControllerForUnitProvider::associators(
    const OperationContext&, const CIMObjectPath& objectName, const CIMName&,
    const CIMName& resultClass, const String&, const String&, const Boolean includeQualifiers,
    const Boolean, const CIMPropertyList& propertyList, ObjectResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const From from = toFarEnds(objectName.getClassName(), resultClass);
    walk(*_engine, from, objectName, [&](Uint32 targetId, const DRAVLogicalUnit& unit) {
        if (from == From::Controller) {
            deliverVolume(unit, includeQualifiers, propertyList, handler);
        } else {
            handler.deliver(iSCSINodeInstance(includeQualifiers, propertyList, targetId));
        }
    });
    handler.complete();
}

void ProtocolControllerForUnitProvider::associatorNames(const OperationContext&,
                                                        const CIMObjectPath& objectName,
                                                        const CIMName&, const CIMName& resultClass,
                                                        const String&, const String&,
                                                        ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const From from = toFarEnds(objectName.getClassName(), resultClass);
    walk(*_engine, from, objectName, [&](Uint32 targetId, const DRAVLogicalUnit& unit) {
        if (from == From::Controller) {
            handler.deliver(StorageVolumePath(unit.volumeID));
        } else {
            handler.deliver(iSCSINodePath(targetId));
        }
    });
    handler.complete();
}

void ProtocolControllerForUnitProvider::references(const OperationContext&,
                                                   const CIMObjectPath& objectName, const CIMName&,
                                                   const String& role, const Boolean, const Boolean,
                                                   const CIMPropertyList&,
                                                   ObjectResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const CIMName& sourceClass = objectName.getClassName();
    const From from = toAssociations(isController(sourceClass), sourceClass, role);
    walk(*_engine, from, objectName, [&](Uint32 targetId, const DRAVLogicalUnit& unit) {
        handler.deliver(mappingInstance(endsOf(targetId, unit), unit));
    });
    handler.complete();
}

// Unlike references, from the SCSI controllers only. Wanted: see docs/contract.md, Classes of a
// controller.
void ProtocolControllerForUnitProvider::referenceNames(const OperationContext&,
                                                       const CIMObjectPath& objectName,
                                                       const CIMName&, const String& role,
                                                       ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const CIMName& sourceClass = objectName.getClassName();
    const From from =
        toAssociations(sourceClass == CLASS_SCSIProtocolController, sourceClass, role);
    walk(*_engine, from, objectName, [&](Uint32 targetId, const DRAVLogicalUnit& unit) {
        handler.deliver(mappingPath(endsOf(targetId, unit)));
    });
    handler.complete();
}

// Unlike everywhere else, the controller is built first, and the references are of the classes that
// the request names. Wanted: see docs/contract.md, Order of the ends.
void ProtocolControllerForUnitProvider::getInstance(const OperationContext&,
                                                    const CIMObjectPath& instanceReference,
                                                    const Boolean, const Boolean,
                                                    const CIMPropertyList&,
                                                    InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const Named named(instanceReference);
    forEachUnit(*_engine, named.controllerId, [&](Uint32 targetId, const DRAVLogicalUnit& unit) {
        if (unit.volumeID == named.volumeId) {
            handler.deliver(
                mappingInstance({controllerEnd(targetId, named.controller.getClassName()),
                                 volumeEnd(unit.volumeID, named.volume.getClassName())},
                                unit));
        }
    });
    handler.complete();
}

void ProtocolControllerForUnitProvider::enumerateInstances(const OperationContext&,
                                                           const CIMObjectPath&, const Boolean,
                                                           const Boolean, const CIMPropertyList&,
                                                           InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    forEachUnit(*_engine, [&](Uint32 targetId, const DRAVLogicalUnit& unit) {
        handler.deliver(mappingInstance(endsOf(targetId, unit), unit));
    });
    handler.complete();
}

void ProtocolControllerForUnitProvider::enumerateInstanceNames(const OperationContext&,
                                                               const CIMObjectPath&,
                                                               ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    forEachUnit(*_engine, [&](Uint32 targetId, const DRAVLogicalUnit& unit) {
        handler.deliver(mappingPath(endsOf(targetId, unit)));
    });
    handler.complete();
}

// Every unit of the controller is stored again, also those that didn't change. Wanted: see
// docs/contract.md, Rewritten units.
void ProtocolControllerForUnitProvider::modifyInstance(const OperationContext&,
                                                       const CIMObjectPath& instanceReference,
                                                       const CIMInstance& instanceObject,
                                                       const Boolean, const CIMPropertyList&,
                                                       ResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    const Named named(instanceReference);
    forEachUnit(*_engine, named.controllerId, [&](Uint32, DRAVLogicalUnit& unit) {
        if (unit.volumeID == named.volumeId) {
            changeAccess(unit, instanceObject);
        }
        _engine->modifyObject(CLASSID_LOGICAL_UNIT, unit);
    });
    handler.complete();
}

} // namespace Pegasus
