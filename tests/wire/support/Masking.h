// What clients ask of the masking service.
#pragma once

#include <string>
#include <vector>

#include "tests/wire/support/Client.h"
#include "tests/wire/support/Names.h"

namespace wire {

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
