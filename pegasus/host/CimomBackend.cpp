#include "pegasus/host/CimomBackend.h"

#include <Pegasus/Provider/ProviderException.h>

namespace Pegasus {

CimomBackend::CimomBackend() = default;
CimomBackend::~CimomBackend() = default;

void CimomBackend::disallowProviderUnload() {}

void CimomBackend::allowProviderUnload() {}

[[noreturn]] static void refuse(const char* call) {
    throw CIMNotSupportedException(String("CIMOMHandle::") + call);
}

CIMClass CimomBackend::getClass(const OperationContext&, const CIMNamespaceName&, const CIMName&,
                                bool, bool, bool, const CIMPropertyList&) {
    refuse("getClass");
}

Array<CIMClass> CimomBackend::enumerateClasses(const OperationContext&, const CIMNamespaceName&,
                                               const CIMName&, bool, bool, bool, bool) {
    refuse("enumerateClasses");
}

Array<CIMName> CimomBackend::enumerateClassNames(const OperationContext&, const CIMNamespaceName&,
                                                 const CIMName&, bool) {
    refuse("enumerateClassNames");
}

void CimomBackend::createClass(const OperationContext&, const CIMNamespaceName&, const CIMClass&) {
    refuse("createClass");
}

void CimomBackend::modifyClass(const OperationContext&, const CIMNamespaceName&, const CIMClass&) {
    refuse("modifyClass");
}

void CimomBackend::deleteClass(const OperationContext&, const CIMNamespaceName&, const CIMName&) {
    refuse("deleteClass");
}

CIMInstance CimomBackend::getInstance(const OperationContext&, const CIMNamespaceName&,
                                      const CIMObjectPath&, bool, bool, bool,
                                      const CIMPropertyList&) {
    refuse("getInstance");
}

Array<CIMInstance> CimomBackend::enumerateInstances(const OperationContext&,
                                                    const CIMNamespaceName&, const CIMName&, bool,
                                                    bool, bool, bool, const CIMPropertyList&) {
    refuse("enumerateInstances");
}

Array<CIMObjectPath> CimomBackend::enumerateInstanceNames(const OperationContext&,
                                                          const CIMNamespaceName&, const CIMName&) {
    refuse("enumerateInstanceNames");
}

CIMObjectPath CimomBackend::createInstance(const OperationContext&, const CIMNamespaceName&,
                                           const CIMInstance&) {
    refuse("createInstance");
}

void CimomBackend::modifyInstance(const OperationContext&, const CIMNamespaceName&,
                                  const CIMInstance&, bool, const CIMPropertyList&) {
    refuse("modifyInstance");
}

void CimomBackend::deleteInstance(const OperationContext&, const CIMNamespaceName&,
                                  const CIMObjectPath&) {
    refuse("deleteInstance");
}

Array<CIMObject> CimomBackend::execQuery(const OperationContext&, const CIMNamespaceName&,
                                         const String&, const String&) {
    refuse("execQuery");
}

Array<CIMObject> CimomBackend::associators(const OperationContext&, const CIMNamespaceName&,
                                           const CIMObjectPath&, const CIMName&, const CIMName&,
                                           const String&, const String&, bool, bool,
                                           const CIMPropertyList&) {
    refuse("associators");
}

Array<CIMObjectPath> CimomBackend::associatorNames(const OperationContext&, const CIMNamespaceName&,
                                                   const CIMObjectPath&, const CIMName&,
                                                   const CIMName&, const String&, const String&) {
    refuse("associatorNames");
}

Array<CIMObject> CimomBackend::references(const OperationContext&, const CIMNamespaceName&,
                                          const CIMObjectPath&, const CIMName&, const String&, bool,
                                          bool, const CIMPropertyList&) {
    refuse("references");
}

Array<CIMObjectPath> CimomBackend::referenceNames(const OperationContext&, const CIMNamespaceName&,
                                                  const CIMObjectPath&, const CIMName&,
                                                  const String&) {
    refuse("referenceNames");
}

CIMValue CimomBackend::getProperty(const OperationContext&, const CIMNamespaceName&,
                                   const CIMObjectPath&, const CIMName&) {
    refuse("getProperty");
}

void CimomBackend::setProperty(const OperationContext&, const CIMNamespaceName&,
                               const CIMObjectPath&, const CIMName&, const CIMValue&) {
    refuse("setProperty");
}

CIMValue CimomBackend::invokeMethod(const OperationContext&, const CIMNamespaceName&,
                                    const CIMObjectPath&, const CIMName&,
                                    const Array<CIMParamValue>&, Array<CIMParamValue>&) {
    refuse("invokeMethod");
}

} // namespace Pegasus
