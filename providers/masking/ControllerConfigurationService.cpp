#include "providers/masking/ControllerConfigurationService.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void ControllerConfigurationServiceProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void ControllerConfigurationServiceProvider::getInstance(const OperationContext&,
                                                         const CIMObjectPath&, const Boolean,
                                                         const Boolean, const CIMPropertyList&,
                                                         InstanceResponseHandler&) {
    refuse("ControllerConfigurationService::getInstance");
}

void ControllerConfigurationServiceProvider::enumerateInstances(const OperationContext&,
                                                                const CIMObjectPath&, const Boolean,
                                                                const Boolean,
                                                                const CIMPropertyList&,
                                                                InstanceResponseHandler&) {
    refuse("ControllerConfigurationService::enumerateInstances");
}

void ControllerConfigurationServiceProvider::enumerateInstanceNames(const OperationContext&,
                                                                    const CIMObjectPath&,
                                                                    ObjectPathResponseHandler&) {
    refuse("ControllerConfigurationService::enumerateInstanceNames");
}

void ControllerConfigurationServiceProvider::invokeMethod(const OperationContext&,
                                                          const CIMObjectPath&, const CIMName&,
                                                          const Array<CIMParamValue>&,
                                                          MethodResultResponseHandler&) {
    refuse("ControllerConfigurationService::invokeMethod");
}

} // namespace Pegasus
