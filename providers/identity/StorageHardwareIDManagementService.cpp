#include "providers/identity/StorageHardwareIDManagementService.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void StorageHardwareIDManagementServiceProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void StorageHardwareIDManagementServiceProvider::getInstance(const OperationContext&,
                                                             const CIMObjectPath&, const Boolean,
                                                             const Boolean, const CIMPropertyList&,
                                                             InstanceResponseHandler&) {
    refuse("StorageHardwareIDManagementService::getInstance");
}

void StorageHardwareIDManagementServiceProvider::enumerateInstances(const OperationContext&,
                                                                    const CIMObjectPath&,
                                                                    const Boolean, const Boolean,
                                                                    const CIMPropertyList&,
                                                                    InstanceResponseHandler&) {
    refuse("StorageHardwareIDManagementService::enumerateInstances");
}

void StorageHardwareIDManagementServiceProvider::enumerateInstanceNames(
    const OperationContext&, const CIMObjectPath&, ObjectPathResponseHandler&) {
    refuse("StorageHardwareIDManagementService::enumerateInstanceNames");
}

void StorageHardwareIDManagementServiceProvider::invokeMethod(const OperationContext&,
                                                              const CIMObjectPath&, const CIMName&,
                                                              const Array<CIMParamValue>&,
                                                              MethodResultResponseHandler&) {
    refuse("StorageHardwareIDManagementService::invokeMethod");
}

} // namespace Pegasus
