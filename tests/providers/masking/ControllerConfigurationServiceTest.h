#pragma once

#include <initializer_list>
#include <string>

#include "providers/masking/ControllerConfigurationService.h"
#include "tests/support/ProviderTest.h"

namespace scripted {

inline const char* const SERVICE_CLASS = "CIM_ControllerConfigurationService";

// Every invocation begins with these.
inline const std::string EVENT_ENTRY =
    "event ControllerConfigurationServiceProvider::invokeMethod()";
inline const std::string TRACE_ENTRY = "trace ControllerConfigurationServiceProvider::invokeMethod";

inline constexpr Pegasus::Uint32 TARGET = 0x0E000002;
inline constexpr Pegasus::Uint32 HOST1 = 0x0D000001;
inline constexpr Pegasus::Uint32 HOST2 = 0x0D000002;
inline constexpr Pegasus::Uint32 VOLUME1 = 0x17000001;
inline constexpr Pegasus::Uint32 VOLUME2 = 0x17000002;
inline constexpr Pegasus::Uint32 UNIT1 = 0x0F000001;
inline constexpr Pegasus::Uint32 UNIT2 = 0x0F000002;

// The service before an array with two hosts, two volumes (named 60A1 and 60A2) and a target.
class ServiceTest : public ProviderTest<Pegasus::ControllerConfigurationServiceProvider> {
protected:
    ServiceTest() {
        using namespace Pegasus;
        setIdByName(CLASSID_INITIATOR, "iqn.host1", HOST1);
        setIdByName(CLASSID_INITIATOR, "iqn.host2", HOST2);
        setIdByKey(CLASSID_VOLUME, ManagedObject::hexToBin("60A1"), VOLUME1);
        setIdByKey(CLASSID_VOLUME, ManagedObject::hexToBin("60A2"), VOLUME2);
    }

    // Puts a unit under the target, beside those that stand there.
    void map(Pegasus::Uint32 unit, Pegasus::Uint32 volume) {
        addRecord(unit, Pegasus::DRAVLogicalUnit(TARGET, 9, 1, volume));
        _units.push_back(unit);
        associate(TARGET, Pegasus::CLASSID_LOGICAL_UNIT, _units);
    }

    void give(const char* name, const Pegasus::CIMValue& value) {
        inParameters.append(Pegasus::CIMParamValue(name, value));
    }

    void giveTexts(const char* name, std::initializer_list<const char*> texts) {
        give(name, strings(texts));
    }

    void giveController(Pegasus::Uint32 target = TARGET) {
        give("ProtocolControllers", references({requestPath("CIM_SCSIProtocolController",
                                                            {{"DeviceID", keyText(target)}})}));
    }

    void giveAccesses(std::initializer_list<int> values) {
        Pegasus::Array<Pegasus::Uint16> accesses;
        for (const int value : values) {
            accesses.append(static_cast<Pegasus::Uint16>(value));
        }
        give("DeviceAccesses", accesses);
    }

    void invoke(const char* method, const char* className = SERVICE_CLASS) {
        provider.invokeMethod(context, requestPath(className), method, inParameters, results);
    }

    static Pegasus::CIMValue strings(std::initializer_list<const char*> texts) {
        Pegasus::Array<Pegasus::String> array;
        for (const char* each : texts) {
            array.append(Pegasus::String(each));
        }
        return array;
    }

    static Pegasus::CIMValue references(std::initializer_list<Pegasus::CIMObjectPath> paths) {
        Pegasus::Array<Pegasus::CIMObjectPath> array;
        for (const Pegasus::CIMObjectPath& path : paths) {
            array.append(path);
        }
        return array;
    }

    Pegasus::Array<Pegasus::CIMParamValue> inParameters;
    MethodResultHandler results;

private:
    std::vector<Pegasus::Uint32> _units;
};

} // namespace scripted
