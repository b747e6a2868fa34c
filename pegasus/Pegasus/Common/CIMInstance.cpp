#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectRep.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

CIMInstance::CIMInstance(CIMObjectRep* rep) : _rep(rep) {}

CIMInstance::CIMInstance(const CIMObject& x) : _rep(instanceRep(x._rep)) {}

CIMInstance::CIMInstance(const CIMName& className) : _rep(new CIMObjectRep(className)) {}

const CIMName& CIMInstance::getClassName() const {
    return _rep->path.getClassName();
}

const CIMObjectPath& CIMInstance::getPath() const {
    return _rep->path;
}

void CIMInstance::setPath(CIMObjectPath path) {
    _rep->setPath(std::move(path));
}

CIMInstance& CIMInstance::addQualifier(const CIMQualifier& x) {
    _rep->qualifiers.add(x, "qualifier");
    return *this;
}

CIMQualifier CIMInstance::getQualifier(Uint32 index) {
    return _rep->qualifiers[index];
}

void CIMInstance::removeQualifier(Uint32 index) {
    _rep->qualifiers.remove(index);
}

CIMInstance& CIMInstance::addProperty(CIMProperty x) {
    _rep->addProperty(std::move(x));
    return *this;
}

CIMProperty CIMInstance::getProperty(Uint32 index) {
    return _rep->properties[index];
}

void CIMInstance::removeProperty(Uint32 index) {
    _rep->removeProperty(index);
}

Uint32 CIMInstance::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMInstance::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMInstance::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Uint32 CIMInstance::findProperty(const CIMName& name) const {
    return _rep->properties.find(name);
}

CIMConstProperty CIMInstance::getProperty(Uint32 index) const {
    return _rep->properties[index];
}

Uint32 CIMInstance::getPropertyCount() const {
    return _rep->properties.size();
}

CIMObjectPath CIMInstance::buildPath(const CIMConstClass& cimClass) const {
    return CIMConstInstance(*this).buildPath(cimClass);
}

Boolean CIMInstance::identical(const CIMConstInstance& x) const {
    return _rep->identical(*x._rep);
}

CIMInstance CIMInstance::clone() const {
    return CIMInstance(_rep->clone());
}

CIMConstInstance::CIMConstInstance(const CIMInstance& x) : _rep(x._rep) {}

CIMConstInstance::CIMConstInstance(const CIMObject& x) : _rep(instanceRep(x._rep)) {}

CIMConstInstance::CIMConstInstance(const CIMConstObject& x) : _rep(instanceRep(x._rep)) {}

CIMConstInstance::CIMConstInstance(const CIMName& className) : _rep(new CIMObjectRep(className)) {}

const CIMName& CIMConstInstance::getClassName() const {
    return _rep->path.getClassName();
}

const CIMObjectPath& CIMConstInstance::getPath() const {
    return _rep->path;
}

Uint32 CIMConstInstance::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMConstInstance::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMConstInstance::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Uint32 CIMConstInstance::findProperty(const CIMName& name) const {
    return _rep->properties.find(name);
}

CIMConstProperty CIMConstInstance::getProperty(Uint32 index) const {
    return _rep->properties[index];
}

Uint32 CIMConstInstance::getPropertyCount() const {
    return _rep->properties.size();
}

CIMObjectPath CIMConstInstance::buildPath(const CIMConstClass& cimClass) const {
    Array<CIMName> keyNames;
    cimClass.getKeyNames(keyNames);
    Array<CIMKeyBinding> keys;
    for (Uint32 i = 0; i < keyNames.size(); ++i) {
        const Uint32 index = findProperty(keyNames[i]);
        if (index == PEG_NOT_FOUND) {
            throw Exception("no such property: " + keyNames[i].getString());
        }
        keys.append(CIMKeyBinding(keyNames[i], getProperty(index).getValue()));
    }
    return CIMObjectPath(String(), CIMNamespaceName(), getClassName(), keys);
}

Boolean CIMConstInstance::identical(const CIMConstInstance& x) const {
    return _rep->identical(*x._rep);
}

CIMInstance CIMConstInstance::clone() const {
    return CIMInstance(_rep->clone());
}

} // namespace Pegasus
