// What clients ask of the two services, in the array of tests/wire/support/Array.h.
#pragma once

#include "tests/wire/support/Client.h"

#include <string>
#include <vector>

namespace wire {

inline const std::string identityService = "CIM_StorageHardwareIDManagementService";
inline const std::string maskingService = "CIM_ControllerConfigurationService";

inline const std::string mailVolume = "60014051A2B3C4D5E6F7A8B9C0D1E2F3"; // unit 1 of the first
inline const std::string logsVolume = "60014051A2B3C4D5E6F7A8B9C0D1E2F4"; // under no target

// The path of the first or second target.
inline Xml controller(int number) {
    return instanceName("CIM_SCSIProtocolController",
                        {{"DeviceID", "Ovrin:0E00000" + std::to_string(number)}});
}

// What ExposePaths and HidePaths are given.
struct Exposure {
    std::vector<std::string> volumes;
    std::vector<std::string> initiators;
    std::vector<std::string> numbers;
    std::vector<std::string> accesses;
    std::vector<Xml> controllers;

    Parameters all() const {
        return {{"LUNames", values(volumes), "string"},
                {"InitiatorPortIDs", values(initiators), "string"},
                {"DeviceNumbers", values(numbers), "string"},
                {"DeviceAccesses", values(accesses), "uint16"},
                {"ProtocolControllers", references(controllers), "reference"}};
    }
    // Without the parameters that HidePaths does not have.
    Parameters hiding() const {
        const Parameters every = all();
        return {every[0], every[1], every[4]};
    }
};

} // namespace wire
