#pragma once

#include <string>
#include <vector>

#include "providers/masking/ProtocolControllerForUnitProvider.h"
#include "tests/support/ProviderTest.h"

namespace scripted {

inline const char* const UNIT_CLASS = "CIM_ProtocolControllerForUnit";

inline constexpr Pegasus::Uint32 TARGET1 = 0x0E000001;
inline constexpr Pegasus::Uint32 TARGET2 = 0x0E000002;
inline constexpr Pegasus::Uint32 VOLUME1 = 0x17000001;
inline constexpr Pegasus::Uint32 VOLUME2 = 0x17000002;
inline constexpr Pegasus::Uint32 UNIT1 = 0x0F000001; // VOLUME1 under TARGET1
inline constexpr Pegasus::Uint32 UNIT2 = 0x0F000002; // VOLUME2 under TARGET1
inline constexpr Pegasus::Uint32 UNIT3 = 0x0F000003; // VOLUME1 under TARGET2

inline const std::string LIST_TARGETS = "enumerateAssociatedObjects(0x03000000, 14)";
inline const std::string LIST_UNITS1 = "enumerateAssociatedObjects(0x0E000001, 15)";
inline const std::string LIST_UNITS2 = "enumerateAssociatedObjects(0x0E000002, 15)";
inline const std::string READ_UNIT1 = "getObject(15, 0x0F000001)";
inline const std::string READ_UNIT2 = "getObject(15, 0x0F000002)";
inline const std::string READ_UNIT3 = "getObject(15, 0x0F000003)";

// The texts of what the module delivers.
inline std::string controllerText(Pegasus::Uint32 target) {
    return objectText("CIM_SCSIProtocolController", "DeviceID", target);
}

inline std::string volumeText(Pegasus::Uint32 volume) {
    return objectText("CIM_StorageVolume", "DeviceID", volume);
}

inline std::string unitText(Pegasus::Uint32 target, Pegasus::Uint32 volume) {
    const auto asKey = [](const std::string& path) {
        std::string escaped;
        for (const char each : path) {
            escaped += each == '"' ? std::string("\\\"") : std::string(1, each);
        }
        return '"' + escaped + '"';
    };
    return "//array1.example.com/root/snia:CIM_ProtocolControllerForUnit.Antecedent=" +
           asKey(controllerText(target)) + ",Dependent=" + asKey(volumeText(volume));
}

// The provider before an array with three units under two targets. The engine lists targets and
// units in descending order, which a provider keeps.
class ProtocolControllerForUnitTest
    : public ProviderTest<Pegasus::ProtocolControllerForUnitProvider> {
protected:
    ProtocolControllerForUnitTest() {
        using namespace Pegasus;
        associate(SYSTEM_OBJECT_ID, CLASSID_TARGET, {TARGET2, TARGET1});
        associate(TARGET1, CLASSID_LOGICAL_UNIT, {UNIT2, UNIT1});
        associate(TARGET2, CLASSID_LOGICAL_UNIT, {UNIT3});
        addRecord(UNIT1, unit(TARGET1, 7, 0, VOLUME1));
        addRecord(UNIT2, unit(TARGET1, 8, 1, VOLUME2));
        addRecord(UNIT3, unit(TARGET2, 9, 3, VOLUME1));
    }

    static Pegasus::DRAVLogicalUnit unit(Pegasus::Uint32 target, Pegasus::Uint32 lun,
                                         Pegasus::Uint32 readOnly, Pegasus::Uint32 volume,
                                         const char* volumeName = "60A1") {
        Pegasus::DRAVLogicalUnit record(target, lun, readOnly, volume);
        record.volumeName = volumeName;
        return record;
    }

    // Leaves UNIT2 without its volume.
    void loseVolume2() { addRecord(UNIT2, unit(TARGET1, 8, 1, 0, "60A2")); }

    static Pegasus::CIMObjectPath controllerPath(Pegasus::Uint32 target) {
        return requestPath("CIM_SCSIProtocolController", {{"DeviceID", keyText(target)}});
    }

    static Pegasus::CIMObjectPath volumePath(Pegasus::Uint32 volume) {
        return requestPath("CIM_StorageVolume", {{"DeviceID", keyText(volume)}});
    }

    // The path of an association, as a client names it by two paths.
    static Pegasus::CIMObjectPath unitPath(const Pegasus::CIMObjectPath& controller,
                                           const Pegasus::CIMObjectPath& volume) {
        using namespace Pegasus;
        Array<CIMKeyBinding> keys;
        keys.append(CIMKeyBinding(CIMName("Antecedent"), CIMValue(controller)));
        keys.append(CIMKeyBinding(CIMName("Dependent"), CIMValue(volume)));
        return CIMObjectPath("client.example.com", CIMNamespaceName("root/snia"), UNIT_CLASS, keys);
    }

    Pegasus::CIMPropertyList all;
    InstanceHandler instances;
    ObjectPathHandler paths;
    ObjectHandler objects;
};

} // namespace scripted
