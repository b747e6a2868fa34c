#include "server/dispatch/DeclaredInstances.h"

#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace smisd {
namespace {

const CIMName systemName("SystemName");

void addSystemName(CIMInstance& instance, const CIMClass& cimClass, const String& hostName) {
    if (cimClass.findProperty(systemName) != PEG_NOT_FOUND &&
        instance.findProperty(systemName) == PEG_NOT_FOUND) {
        instance.addProperty(CIMProperty(systemName, hostName));
    }
}

[[noreturn]] void refuseChange() {
    throw CIMException(CIM_ERR_NOT_SUPPORTED, String("The instance stands in the MOF."));
}

} // namespace

DeclaredInstances::DeclaredInstances(const Repository& repository, const String& hostName) {
    for (const auto& [nameSpace, schema] : repository.schemas()) {
        for (const CIMInstance& declared : schema.instances()) {
            const CIMClass& cimClass = *schema.findClass(declared.getClassName());
            CIMInstance instance = declared.clone();
            addSystemName(instance, cimClass, hostName);
            CIMObjectPath path = instance.buildPath(CIMConstClass(cimClass));
            path.setNameSpace(nameSpace);
            instance.setPath(path);
            _instances[nameSpace][cimClass.getClassName()].push_back(instance);
        }
    }
}

const String& DeclaredInstances::name() {
    static const String text("(MOF)");
    return text;
}

bool DeclaredInstances::has(const CIMNamespaceName& nameSpace, const CIMName& className) const {
    return !of(nameSpace, className).empty();
}

const DeclaredInstances::Instances& DeclaredInstances::of(const CIMNamespaceName& nameSpace,
                                                          const CIMName& className) const {
    static const Instances none;
    const auto ofNamespace = _instances.find(nameSpace);
    if (ofNamespace == _instances.end()) {
        return none;
    }
    const auto ofClass = ofNamespace->second.find(className);
    return ofClass == ofNamespace->second.end() ? none : ofClass->second;
}

void DeclaredInstances::getInstance(const OperationContext&, const CIMObjectPath& reference,
                                    const Boolean, const Boolean, const CIMPropertyList&,
                                    InstanceResponseHandler& handler) {
    CIMObjectPath wanted = reference;
    wanted.setHost(String());
    handler.processing();
    for (const CIMInstance& one : of(reference.getNameSpace(), reference.getClassName())) {
        if (one.getPath().identical(wanted)) {
            handler.deliver(one);
            handler.complete();
            return;
        }
    }
    throw CIMException(CIM_ERR_NOT_FOUND, wanted.toString());
}

void DeclaredInstances::enumerateInstances(const OperationContext&, const CIMObjectPath& reference,
                                           const Boolean, const Boolean, const CIMPropertyList&,
                                           InstanceResponseHandler& handler) {
    handler.processing();
    for (const CIMInstance& one : of(reference.getNameSpace(), reference.getClassName())) {
        handler.deliver(one);
    }
    handler.complete();
}

void DeclaredInstances::enumerateInstanceNames(const OperationContext&,
                                               const CIMObjectPath& reference,
                                               ObjectPathResponseHandler& handler) {
    handler.processing();
    for (const CIMInstance& one : of(reference.getNameSpace(), reference.getClassName())) {
        handler.deliver(one.getPath());
    }
    handler.complete();
}

void DeclaredInstances::modifyInstance(const OperationContext&, const CIMObjectPath&,
                                       const CIMInstance&, const Boolean, const CIMPropertyList&,
                                       ResponseHandler&) {
    refuseChange();
}

void DeclaredInstances::createInstance(const OperationContext&, const CIMObjectPath&,
                                       const CIMInstance&, ObjectPathResponseHandler&) {
    refuseChange();
}

void DeclaredInstances::deleteInstance(const OperationContext&, const CIMObjectPath&,
                                       ResponseHandler&) {
    refuseChange();
}

} // namespace smisd
