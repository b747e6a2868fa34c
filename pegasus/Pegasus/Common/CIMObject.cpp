#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectRep.h>

#include "pegasus/host/XmlWriter.h"

namespace Pegasus {

CIMObject::CIMObject(CIMObjectRep* rep) : _rep(rep) {}

CIMObject::CIMObject(const CIMClass& x) : _rep(x._rep) {}

CIMObject::CIMObject(const CIMInstance& x) : _rep(x._rep) {}

const CIMName& CIMObject::getClassName() const {
    return _rep->path.getClassName();
}

const CIMObjectPath& CIMObject::getPath() const {
    return _rep->path;
}

void CIMObject::setPath(const CIMObjectPath& path) {
    _rep->setPath(path);
}

CIMObject& CIMObject::addQualifier(const CIMQualifier& x) {
    _rep->qualifiers.add(x, "qualifier");
    return *this;
}

CIMQualifier CIMObject::getQualifier(Uint32 index) {
    return _rep->qualifiers[index];
}

void CIMObject::removeQualifier(Uint32 index) {
    _rep->qualifiers.remove(index);
}

CIMObject& CIMObject::addProperty(const CIMProperty& x) {
    _rep->addProperty(x);
    return *this;
}

CIMProperty CIMObject::getProperty(Uint32 index) {
    return _rep->properties[index];
}

void CIMObject::removeProperty(Uint32 index) {
    _rep->removeProperty(index);
}

Uint32 CIMObject::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMObject::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMObject::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Uint32 CIMObject::findProperty(const CIMName& name) const {
    return _rep->properties.find(name);
}

CIMConstProperty CIMObject::getProperty(Uint32 index) const {
    return _rep->properties[index];
}

Uint32 CIMObject::getPropertyCount() const {
    return _rep->properties.size();
}

String CIMObject::toString() const {
    return CIMConstObject(*this).toString();
}

Boolean CIMObject::identical(const CIMConstObject& x) const {
    return _rep->identical(*x._rep);
}

CIMObject CIMObject::clone() const {
    return CIMObject(_rep->clone());
}

Boolean CIMObject::isClass() const {
    return _rep && _rep->isClass();
}

Boolean CIMObject::isInstance() const {
    return _rep && !_rep->isClass();
}

CIMConstObject::CIMConstObject(const CIMObject& x) : _rep(x._rep) {}

CIMConstObject::CIMConstObject(const CIMClass& x) : _rep(x._rep) {}

CIMConstObject::CIMConstObject(const CIMInstance& x) : _rep(x._rep) {}

CIMConstObject::CIMConstObject(const CIMConstClass& x) : _rep(x._rep) {}

CIMConstObject::CIMConstObject(const CIMConstInstance& x) : _rep(x._rep) {}

const CIMName& CIMConstObject::getClassName() const {
    return _rep->path.getClassName();
}

const CIMObjectPath& CIMConstObject::getPath() const {
    return _rep->path;
}

Uint32 CIMConstObject::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMConstObject::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMConstObject::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Uint32 CIMConstObject::findProperty(const CIMName& name) const {
    return _rep->properties.find(name);
}

CIMConstProperty CIMConstObject::getProperty(Uint32 index) const {
    return _rep->properties[index];
}

Uint32 CIMConstObject::getPropertyCount() const {
    return _rep->properties.size();
}

String CIMConstObject::toString() const {
    Text xml;
    Xml::appendObject(xml, *this);
    return String(xml.view().data(), static_cast<Uint32>(xml.size()));
}

Boolean CIMConstObject::identical(const CIMConstObject& x) const {
    return _rep->identical(*x._rep);
}

CIMObject CIMConstObject::clone() const {
    return CIMObject(_rep->clone());
}

Boolean CIMConstObject::isClass() const {
    return _rep && _rep->isClass();
}

Boolean CIMConstObject::isInstance() const {
    return _rep && !_rep->isClass();
}

} // namespace Pegasus
