#include "providers/iscsi/iSCSISettingsProvider.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void iSCSISettingsProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void iSCSISettingsProvider::getInstance(const OperationContext&, const CIMObjectPath&,
                                        const Boolean, const Boolean, const CIMPropertyList&,
                                        InstanceResponseHandler&) {
    refuse("iSCSISettings::getInstance");
}

void iSCSISettingsProvider::enumerateInstances(const OperationContext&, const CIMObjectPath&,
                                               const Boolean, const Boolean, const CIMPropertyList&,
                                               InstanceResponseHandler&) {}

void iSCSISettingsProvider::modifyInstance(const OperationContext&, const CIMObjectPath&,
                                           const CIMInstance&, const Boolean,
                                           const CIMPropertyList&, ResponseHandler&) {
    refuse("iSCSISettings::modifyInstance");
}

} // namespace Pegasus
