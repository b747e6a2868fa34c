#include "providers/masking/ProtocolControllerForUnitProvider.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void ProtocolControllerForUnitProvider::initialize(CIMOMHandle& cimom) {
    trace("ProtocolControllerForUnitProvider::initialize");
    attach(_engine, _cimom, cimom);
}

void ProtocolControllerForUnitProvider::associators(const OperationContext&, const CIMObjectPath&,
                                                    const CIMName&, const CIMName&, const String&,
                                                    const String&, const Boolean, const Boolean,
                                                    const CIMPropertyList&,
                                                    ObjectResponseHandler&) {
    refuse("ProtocolControllerForUnit::associators");
}

void ProtocolControllerForUnitProvider::associatorNames(const OperationContext&,
                                                        const CIMObjectPath&, const CIMName&,
                                                        const CIMName&, const String&,
                                                        const String&, ObjectPathResponseHandler&) {
    refuse("ProtocolControllerForUnit::associatorNames");
}

void ProtocolControllerForUnitProvider::references(const OperationContext&, const CIMObjectPath&,
                                                   const CIMName&, const String&, const Boolean,
                                                   const Boolean, const CIMPropertyList&,
                                                   ObjectResponseHandler&) {
    refuse("ProtocolControllerForUnit::references");
}

void ProtocolControllerForUnitProvider::referenceNames(const OperationContext&,
                                                       const CIMObjectPath&, const CIMName&,
                                                       const String&, ObjectPathResponseHandler&) {
    refuse("ProtocolControllerForUnit::referenceNames");
}

void ProtocolControllerForUnitProvider::getInstance(const OperationContext&, const CIMObjectPath&,
                                                    const Boolean, const Boolean,
                                                    const CIMPropertyList&,
                                                    InstanceResponseHandler&) {
    refuse("ProtocolControllerForUnit::getInstance");
}

void ProtocolControllerForUnitProvider::enumerateInstances(const OperationContext&,
                                                           const CIMObjectPath&, const Boolean,
                                                           const Boolean, const CIMPropertyList&,
                                                           InstanceResponseHandler&) {
    refuse("ProtocolControllerForUnit::enumerateInstances");
}

void ProtocolControllerForUnitProvider::enumerateInstanceNames(const OperationContext&,
                                                               const CIMObjectPath&,
                                                               ObjectPathResponseHandler&) {
    refuse("ProtocolControllerForUnit::enumerateInstanceNames");
}

void ProtocolControllerForUnitProvider::modifyInstance(const OperationContext&,
                                                       const CIMObjectPath&, const CIMInstance&,
                                                       const Boolean, const CIMPropertyList&,
                                                       ResponseHandler&) {
    refuse("ProtocolControllerForUnit::modifyInstance");
}

} // namespace Pegasus
