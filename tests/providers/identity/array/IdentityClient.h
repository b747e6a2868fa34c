#pragma once

#include <string>

#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/OperationContext.h>

#include "array/Array.h"
#include "providers/identity/AuthorizedAccessProvider.h"
#include "providers/identity/SharedSecretProvider.h"
#include "providers/identity/StorageHardwareIDManagementService.h"
#include "providers/identity/StorageHardwareIDProvider.h"
#include "providers/masking/ControllerConfigurationService.h"
#include "providers/masking/SCSIProtocolControllerProvider.h"
#include "tests/support/Client.h"
#include "tests/support/ServedArray.h"
#include "tests/support/TraceCapture.h"

namespace scripted {

using Parameters = Pegasus::Array<Pegasus::CIMParamValue>;

// The providers of hosts, privileges and secrets before the array of this process, which is emptied
// first, and what a client gets from them. Calls back into the server reach these providers on the
// same thread. Each function expects its operation to be completed.
class IdentityClient {
public:
    IdentityClient();

    // A method of the service: its return value, and what it gave as "HardwareID".
    struct Registered {
        Pegasus::Sint32 result;
        Pegasus::CIMObjectPath host;
    };
    Registered create(const std::string& iSCSIName);
    Pegasus::Sint32 remove(const Pegasus::CIMObjectPath& host);

    Paths hosts();
    Pegasus::CIMInstance host(const Pegasus::CIMObjectPath& path);

    Paths associatorNames(const Pegasus::CIMObjectPath& source, const char* associationClass,
                          const char* resultClass);
    Instances associators(const Pegasus::CIMObjectPath& source, const char* associationClass,
                          const char* resultClass);

    // ExposePaths or HidePaths without volumes: takes and gives only access to a target.
    Pegasus::Uint32 changeAccess(const char* method, const std::string& iSCSIName,
                                 const Pegasus::CIMObjectPath& controller);

    std::string secret(const Pegasus::CIMObjectPath& path);
    void setSecret(const Pegasus::CIMObjectPath& path, const std::string& secret);

    array::Array& array;

private:
    Pegasus::CIMInstance answer(const Pegasus::CIMObjectPath& path);
    template<class Value>
    Value invoke(Pegasus::CIMMethodProvider& service, const char* serviceClass, const char* method,
                 const Parameters& parameters, Parameters* given = nullptr);

    TraceCapture _capture;
    Pegasus::OperationContext _context;
    Pegasus::StorageHardwareIDManagementServiceProvider _registration;
    Pegasus::StorageHardwareIDProvider _hosts;
    Pegasus::AuthorizedAccessProvider _access;
    Pegasus::SharedSecretProvider _secrets;
    Pegasus::SCSIProtocolControllerProvider _controllers;
    Pegasus::ControllerConfigurationServiceProvider _masking;
};

} // namespace scripted
