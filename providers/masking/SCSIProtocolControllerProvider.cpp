#include "providers/masking/SCSIProtocolControllerProvider.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void SCSIProtocolControllerProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void SCSIProtocolControllerProvider::getInstance(const OperationContext&, const CIMObjectPath&,
                                                 const Boolean, const Boolean,
                                                 const CIMPropertyList&, InstanceResponseHandler&) {
    refuse("SCSIProtocolController::getInstance");
}

void SCSIProtocolControllerProvider::enumerateInstances(const OperationContext&,
                                                        const CIMObjectPath&, const Boolean,
                                                        const Boolean, const CIMPropertyList&,
                                                        InstanceResponseHandler&) {
    refuse("SCSIProtocolController::enumerateInstances");
}

void SCSIProtocolControllerProvider::enumerateInstanceNames(const OperationContext&,
                                                            const CIMObjectPath&,
                                                            ObjectPathResponseHandler&) {
    refuse("SCSIProtocolController::enumerateInstanceNames");
}

} // namespace Pegasus
