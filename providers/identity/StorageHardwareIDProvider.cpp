#include "providers/identity/StorageHardwareIDProvider.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void StorageHardwareIDProvider::initialize(CIMOMHandle& cimom) {
    trace("StorageHardwareIDProvider::initialize");
    attach(_engine, _cimom, cimom);
}

void StorageHardwareIDProvider::getInstance(const OperationContext&, const CIMObjectPath&,
                                            const Boolean, const Boolean, const CIMPropertyList&,
                                            InstanceResponseHandler&) {
    refuse("StorageHardwareID::getInstance");
}

void StorageHardwareIDProvider::enumerateInstances(const OperationContext&, const CIMObjectPath&,
                                                   const Boolean, const Boolean,
                                                   const CIMPropertyList&,
                                                   InstanceResponseHandler&) {
    refuse("StorageHardwareID::enumerateInstances");
}

void StorageHardwareIDProvider::enumerateInstanceNames(const OperationContext&,
                                                       const CIMObjectPath&,
                                                       ObjectPathResponseHandler&) {
    refuse("StorageHardwareID::enumerateInstanceNames");
}

} // namespace Pegasus
