#include "providers/iscsi/iSCSIPipesProvider.h"

#include "providers/frame/Attach.h"

namespace Pegasus {

void iSCSIPipesProvider::initialize(CIMOMHandle& cimom) {
    attach(_engine, _cimom, cimom);
}

void iSCSIPipesProvider::getInstance(const OperationContext&, const CIMObjectPath&, const Boolean,
                                     const Boolean, const CIMPropertyList&,
                                     InstanceResponseHandler&) {
    refuse("iSCSIPipes::getInstance");
}

void iSCSIPipesProvider::enumerateInstances(const OperationContext&, const CIMObjectPath&,
                                            const Boolean, const Boolean, const CIMPropertyList&,
                                            InstanceResponseHandler&) {
    refuse("iSCSIPipes::enumerateInstances");
}

void iSCSIPipesProvider::enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                                ObjectPathResponseHandler&) {
    refuse("iSCSIPipes::enumerateInstanceNames");
}

void iSCSIPipesProvider::associators(const OperationContext&, const CIMObjectPath&, const CIMName&,
                                     const CIMName&, const String&, const String&, const Boolean,
                                     const Boolean, const CIMPropertyList&,
                                     ObjectResponseHandler&) {
    refuse("iSCSIPipes::associators");
}

void iSCSIPipesProvider::associatorNames(const OperationContext&, const CIMObjectPath&,
                                         const CIMName&, const CIMName&, const String&,
                                         const String&, ObjectPathResponseHandler&) {
    refuse("iSCSIPipes::associatorNames");
}

void iSCSIPipesProvider::references(const OperationContext&, const CIMObjectPath&, const CIMName&,
                                    const String&, const Boolean, const Boolean,
                                    const CIMPropertyList&, ObjectResponseHandler&) {
    refuse("iSCSIPipes::references");
}

void iSCSIPipesProvider::referenceNames(const OperationContext&, const CIMObjectPath&,
                                        const CIMName&, const String&, ObjectPathResponseHandler&) {
    refuse("iSCSIPipes::referenceNames");
}

} // namespace Pegasus
