#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectRep.h>
#include <Pegasus/Common/CIMPropertyRep.h>

namespace Pegasus {

static CIMClassRep* classOf(const Shared<CIMObjectRep>& rep) {
    return static_cast<CIMClassRep*>(rep.operator->());
}

static bool isKey(const CIMProperty& property) {
    return isTrue(PropertyAccess::content(property).qualifiers, "Key");
}

CIMClass::CIMClass(CIMObjectRep* rep) : _rep(rep) {}

CIMClass::CIMClass(const CIMObject& x) : _rep(classRep(x._rep)) {}

CIMClass::CIMClass(const CIMName& className, const CIMName& superClassName)
    : _rep(new CIMClassRep(className, superClassName)) {}

const CIMName& CIMClass::getClassName() const {
    return _rep->path.getClassName();
}

const CIMObjectPath& CIMClass::getPath() const {
    return _rep->path;
}

void CIMClass::setPath(const CIMObjectPath& path) {
    _rep->setPath(path);
}

Boolean CIMClass::isAssociation() const {
    return isTrue(_rep->qualifiers, "Association");
}

Boolean CIMClass::isAbstract() const {
    return isTrue(_rep->qualifiers, "Abstract");
}

const CIMName& CIMClass::getSuperClassName() const {
    return classOf(_rep)->superClassName;
}

void CIMClass::setSuperClassName(const CIMName& superClassName) {
    classOf(_rep)->superClassName = superClassName;
}

CIMClass& CIMClass::addQualifier(const CIMQualifier& x) {
    _rep->qualifiers.add(x, "qualifier");
    return *this;
}

CIMQualifier CIMClass::getQualifier(Uint32 index) {
    return _rep->qualifiers[index];
}

void CIMClass::removeQualifier(Uint32 index) {
    _rep->qualifiers.remove(index);
}

CIMClass& CIMClass::addProperty(const CIMProperty& x) {
    _rep->addProperty(x);
    return *this;
}

CIMProperty CIMClass::getProperty(Uint32 index) {
    return _rep->properties[index];
}

void CIMClass::removeProperty(Uint32 index) {
    _rep->removeProperty(index);
}

CIMClass& CIMClass::addMethod(const CIMMethod& x) {
    classOf(_rep)->methods.add(x, "method");
    return *this;
}

CIMMethod CIMClass::getMethod(Uint32 index) {
    return classOf(_rep)->methods[index];
}

void CIMClass::removeMethod(Uint32 index) {
    classOf(_rep)->methods.remove(index);
}

Uint32 CIMClass::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMClass::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMClass::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Uint32 CIMClass::findProperty(const CIMName& name) const {
    return _rep->properties.find(name);
}

CIMConstProperty CIMClass::getProperty(Uint32 index) const {
    return _rep->properties[index];
}

Uint32 CIMClass::getPropertyCount() const {
    return _rep->properties.size();
}

Uint32 CIMClass::findMethod(const CIMName& name) const {
    return classOf(_rep)->methods.find(name);
}

CIMConstMethod CIMClass::getMethod(Uint32 index) const {
    return classOf(_rep)->methods[index];
}

Uint32 CIMClass::getMethodCount() const {
    return classOf(_rep)->methods.size();
}

void CIMClass::getKeyNames(Array<CIMName>& keyNames) const {
    CIMConstClass(*this).getKeyNames(keyNames);
}

Boolean CIMClass::hasKeys() const {
    return CIMConstClass(*this).hasKeys();
}

Boolean CIMClass::identical(const CIMConstClass& x) const {
    return _rep->identical(*x._rep);
}

CIMClass CIMClass::clone() const {
    return CIMClass(_rep->clone());
}

CIMConstClass::CIMConstClass(const CIMClass& x) : _rep(x._rep) {}

CIMConstClass::CIMConstClass(const CIMObject& x) : _rep(classRep(x._rep)) {}

CIMConstClass::CIMConstClass(const CIMConstObject& x) : _rep(classRep(x._rep)) {}

CIMConstClass::CIMConstClass(const CIMName& className, const CIMName& superClassName)
    : _rep(new CIMClassRep(className, superClassName)) {}

const CIMName& CIMConstClass::getClassName() const {
    return _rep->path.getClassName();
}

const CIMObjectPath& CIMConstClass::getPath() const {
    return _rep->path;
}

Boolean CIMConstClass::isAssociation() const {
    return isTrue(_rep->qualifiers, "Association");
}

Boolean CIMConstClass::isAbstract() const {
    return isTrue(_rep->qualifiers, "Abstract");
}

const CIMName& CIMConstClass::getSuperClassName() const {
    return classOf(_rep)->superClassName;
}

Uint32 CIMConstClass::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMConstClass::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMConstClass::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Uint32 CIMConstClass::findProperty(const CIMName& name) const {
    return _rep->properties.find(name);
}

CIMConstProperty CIMConstClass::getProperty(Uint32 index) const {
    return _rep->properties[index];
}

Uint32 CIMConstClass::getPropertyCount() const {
    return _rep->properties.size();
}

Uint32 CIMConstClass::findMethod(const CIMName& name) const {
    return classOf(_rep)->methods.find(name);
}

CIMConstMethod CIMConstClass::getMethod(Uint32 index) const {
    return classOf(_rep)->methods[index];
}

Uint32 CIMConstClass::getMethodCount() const {
    return classOf(_rep)->methods.size();
}

void CIMConstClass::getKeyNames(Array<CIMName>& keyNames) const {
    keyNames.clear();
    const NamedList<CIMProperty>& properties = _rep->properties;
    for (Uint32 i = 0; i < properties.size(); ++i) {
        if (isKey(properties[i])) {
            keyNames.append(properties[i].getName());
        }
    }
}

Boolean CIMConstClass::hasKeys() const {
    Array<CIMName> keyNames;
    getKeyNames(keyNames);
    return keyNames.size() != 0;
}

Boolean CIMConstClass::identical(const CIMConstClass& x) const {
    return _rep->identical(*x._rep);
}

CIMClass CIMConstClass::clone() const {
    return CIMClass(_rep->clone());
}

} // namespace Pegasus
