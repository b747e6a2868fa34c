#pragma once

#include <string>
#include <vector>

#include <Pegasus/Common/OperationContext.h>

#include "array/Array.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "providers/masking/ProtocolControllerForUnitProvider.h"
#include "providers/masking/SCSIProtocolControllerProvider.h"
#include "tests/support/Client.h"
#include "tests/support/ServedArray.h"
#include "tests/support/TraceCapture.h"

namespace scripted {

// What ExposePaths and HidePaths are given.
struct Exposure {
    std::vector<std::string> volumes;
    std::vector<std::string> initiators;
    std::vector<std::string> numbers;
    std::vector<Pegasus::Uint16> accesses;
    Pegasus::CIMObjectPath controller;
};

// The three providers of masking before the array of this process, which is emptied first, and what
// a client gets from them. Each function expects its operation to be completed.
class MaskingClient {
public:
    MaskingClient();

    Paths controllers();
    Instances controllerInstances();
    Pegasus::CIMInstance controller(const Pegasus::CIMObjectPath& path);

    Paths units();
    Instances unitInstances();
    Instances unit(const Pegasus::CIMObjectPath& path);
    void setAccess(const Pegasus::CIMObjectPath& unit, Pegasus::Uint16 deviceAccess);

    Paths associatorNames(const Pegasus::CIMObjectPath& source, const char* resultClass);
    Instances associators(const Pegasus::CIMObjectPath& source, const char* resultClass);
    Paths referenceNames(const Pegasus::CIMObjectPath& source, const char* role);
    Instances references(const Pegasus::CIMObjectPath& source, const char* role);

    // The return value of a method.
    Pegasus::Uint32 expose(const Exposure& exposure) { return invoke("ExposePaths", exposure); }
    Pegasus::Uint32 hide(const Exposure& exposure) { return invoke("HidePaths", exposure); }

    array::Array& array;

private:
    Pegasus::Uint32 invoke(const char* method, const Exposure& exposure);

    TraceCapture _capture;
    Pegasus::OperationContext _context;
    Pegasus::SCSIProtocolControllerProvider _controllers;
    Pegasus::ProtocolControllerForUnitProvider _units;
    Pegasus::ControllerConfigurationServiceProvider _service;
};

} // namespace scripted
