#include "providers/masking/ControllerConfigurationService.h"

#include <set>

#include "engine/DRAVKeys.h"
#include "engine/DRAVLogicalUnit.h"
#include "engine/NameConstants.h"
#include "engine/OperationScope.h"
#include "providers/frame/Announcements.h"
#include "providers/frame/EngineAccess.h"
#include "providers/frame/Requests.h"
#include "providers/frame/Services.h"
#include "providers/masking/DeviceAccess.h"

namespace Pegasus {

namespace {

const CIMName CLASS_Service("CIM_ControllerConfigurationService");
const CIMName METHOD_ExposePaths("ExposePaths");
const CIMName METHOD_HidePaths("HidePaths");

// What the methods return. Wanted: see docs/contract.md, Return values.
constexpr Uint32 done = 0;
constexpr Uint32 volumeUnknown = 4;

// The id of the target that the first controller names. There may be no such target.
Uint32 targetOf(const Array<CIMObjectPath>& controllers) {
    return idFromDeviceID(controllers[0]);
}

// 0 for an unknown name, which the engine is asked about like any other. Wanted: see
// docs/contract.md, Unknown hosts.
Uint32 findInitiator(DRAVEngine& engine, const String& name) {
    const Uint32 id = engine.getiSCSIObjectIDByName(CLASSID_INITIATOR, name);
    trace("ObjectIDByName is: " + std::to_string(id));
    return id;
}

// 0 for an unknown volume.
Uint32 findVolume(DRAVEngine& engine, const String& name, const std::string& lookup) {
    const Uint32 id = engine.getObjectIDByKey(CLASSID_VOLUME, ManagedObject::hexToBin(name));
    trace(lookup + " is: " + std::to_string(id));
    return id;
}

bool isMapped(DRAVEngine& engine, const Array<Uint32>& units, Uint32 volumeId) {
    for (const Uint32 unitId : units) {
        trace("Searching existing LU's ");
        const EngineRecord<DRAVLogicalUnit> unit(engine, CLASSID_LOGICAL_UNIT, unitId);
        if (unit->volumeID == volumeId) {
            return true;
        }
    }
    return false;
}

std::multiset<Uint32> sorted(const Array<Uint32>& ids) {
    return std::multiset<Uint32>(begin(ids), end(ids));
}

void grantAccess(DRAVEngine& engine, Uint32 targetId, const Array<String>& initiatorNames) {
    const std::multiset<Uint32> granted =
        sorted(engine.enumerateAssociatedObjects(targetId, CLASSID_INITIATOR));
    for (const String& name : initiatorNames) {
        const Uint32 id = findInitiator(engine, name);
        if (granted.count(id) == 0) {
            engine.createAssociation(targetId, id);
        }
    }
}

// A volume that is listed twice has its units removed twice. Wanted: see docs/contract.md, Listed
// twice.
void hideVolumes(DRAVEngine& engine, Uint32 targetId, const Array<Uint32>& volumeIds) {
    const std::multiset<Uint32> hidden = sorted(volumeIds);
    for (const Uint32 unitId : engine.enumerateAssociatedObjects(targetId, CLASSID_LOGICAL_UNIT)) {
        const EngineRecord<DRAVLogicalUnit> unit(engine, CLASSID_LOGICAL_UNIT, unitId);
        const std::size_t times = hidden.empty() ? 0 : hidden.count(unit->volumeID);
        for (std::size_t i = 0; i < times; ++i) {
            engine.deleteObject(CLASSID_LOGICAL_UNIT, unitId);
        }
    }
}

// The units are those from before the call: a volume that is listed twice is mapped twice. Wanted:
// see docs/contract.md, Listed twice.
Uint32 exposePaths(DRAVEngine& engine, const Array<CIMParamValue>& inParameters) {
    const auto volumeNames = inParameter<Array<String>>(inParameters, "LUNames");
    const auto initiatorNames = inParameter<Array<String>>(inParameters, "InitiatorPortIDs");
    const auto numbers = inParameter<Array<String>>(inParameters, "DeviceNumbers");
    const auto accesses = inParameter<Array<Uint16>>(inParameters, "DeviceAccesses");
    const Uint32 targetId =
        targetOf(inParameter<Array<CIMObjectPath>>(inParameters, "ProtocolControllers"));

    grantAccess(engine, targetId, initiatorNames);

    Uint32 result = done;
    const Array<Uint32> units = engine.enumerateAssociatedObjects(targetId, CLASSID_LOGICAL_UNIT);
    for (Uint32 i = 0; i < volumeNames.size(); ++i) {
        const Uint32 volumeId = findVolume(engine, volumeNames[i], "ObjectID");
        if (volumeId == 0) {
            result = volumeUnknown;
        } else if (!isMapped(engine, units, volumeId)) {
            trace(" Adding a new LU ");
            const Uint32 access = accessCode(accesses[i]).value_or(noAccessCode);
            trace("Finished adding a new LU"); // wanted: see docs/contract.md, Trace lines
            const Uint32 lun = DRAVObjectIDDecimal(numbers[i]).id;
            engine.createObject(CLASSID_LOGICAL_UNIT,
                                DRAVLogicalUnit(targetId, lun, access, volumeId));
        }
    }
    return result;
}

Uint32 hidePaths(DRAVEngine& engine, const Array<CIMParamValue>& inParameters) {
    const auto volumeNames = inParameter<Array<String>>(inParameters, "LUNames");
    const auto initiatorNames = inParameter<Array<String>>(inParameters, "InitiatorPortIDs");
    const Uint32 targetId =
        targetOf(inParameter<Array<CIMObjectPath>>(inParameters, "ProtocolControllers"));

    Array<Uint32> initiatorIds;
    for (const String& name : initiatorNames) {
        initiatorIds.append(findInitiator(engine, name));
    }

    Array<Uint32> volumeIds;
    for (const String& name : volumeNames) {
        // Wanted: see docs/contract.md, Trace lines.
        volumeIds.append(findVolume(engine, name, "ObjectIDByName"));
        if (volumeIds[volumeIds.size() - 1] == 0) {
            return volumeUnknown; // wanted: see docs/contract.md, Unknown volumes
        }
    }

    for (const Uint32 id : initiatorIds) {
        engine.deleteAssociation(targetId, id);
    }
    hideVolumes(engine, targetId, volumeIds);
    return done;
}

} // namespace

void ControllerConfigurationServiceProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void ControllerConfigurationServiceProvider::getInstance(const OperationContext&,
                                                         const CIMObjectPath&, const Boolean,
                                                         const Boolean, const CIMPropertyList&,
                                                         InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    handler.deliver(serviceInstance(CLASS_Service));
    handler.complete();
}

void ControllerConfigurationServiceProvider::enumerateInstances(const OperationContext&,
                                                                const CIMObjectPath& classReference,
                                                                const Boolean, const Boolean,
                                                                const CIMPropertyList&,
                                                                InstanceResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    if (classReference.getClassName() == CLASS_Service) {
        handler.deliver(serviceInstance(CLASS_Service));
    }
    handler.complete();
}

void ControllerConfigurationServiceProvider::enumerateInstanceNames(
    const OperationContext&, const CIMObjectPath& classReference,
    ObjectPathResponseHandler& handler) {
    const OperationScope operation;
    handler.processing();
    if (classReference.getClassName() == CLASS_Service) {
        handler.deliver(servicePath(CLASS_Service));
    }
    handler.complete();
}

void ControllerConfigurationServiceProvider::invokeMethod(const OperationContext&,
                                                          const CIMObjectPath& objectReference,
                                                          const CIMName& methodName,
                                                          const Array<CIMParamValue>& inParameters,
                                                          MethodResultResponseHandler& handler) {
    const OperationScope operation;
    publishInvoked("ControllerConfigurationService", __LINE__, objectReference, methodName);
    trace("ControllerConfigurationServiceProvider::invokeMethod");
    handler.processing();
    if (objectReference.getClassName() == CLASS_Service) {
        if (methodName == METHOD_ExposePaths) {
            handler.deliver(exposePaths(*_engine, inParameters));
        } else if (methodName == METHOD_HidePaths) {
            handler.deliver(hidePaths(*_engine, inParameters));
        } else {
            // Wanted: see docs/contract.md, Refusals.
            refuse("ControllerConfigurationService::invodeMethod");
        }
    }
    handler.complete();
}

} // namespace Pegasus
