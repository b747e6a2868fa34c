#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMPropertyRep.h>

namespace Pegasus {

CIMProperty::CIMProperty(CIMPropertyRep* rep) : _rep(rep) {}

CIMProperty::CIMProperty(const CIMName& name, CIMValue value, Uint32 arraySize,
                         const CIMName& referenceClassName, const CIMName& classOrigin,
                         Boolean propagated)
    : _rep(new CIMPropertyRep(name, std::move(value), arraySize, referenceClassName, classOrigin,
                              propagated)) {}

const CIMName& CIMProperty::getName() const {
    return _rep->name;
}

void CIMProperty::setName(const CIMName& name) {
    _rep->setName(name);
    NamePlaces::somethingRenamed();
}

const CIMValue& CIMProperty::getValue() const {
    return _rep->value;
}

CIMType CIMProperty::getType() const {
    return _rep->value.getType();
}

Boolean CIMProperty::isArray() const {
    return _rep->value.isArray();
}

void CIMProperty::setValue(const CIMValue& value) {
    _rep->setValue(value);
}

Uint32 CIMProperty::getArraySize() const {
    return _rep->arraySize;
}

const CIMName& CIMProperty::getReferenceClassName() const {
    return _rep->referenceClassName;
}

const CIMName& CIMProperty::getClassOrigin() const {
    return _rep->classOrigin;
}

void CIMProperty::setClassOrigin(const CIMName& classOrigin) {
    _rep->classOrigin = classOrigin;
}

Boolean CIMProperty::getPropagated() const {
    return _rep->propagated;
}

void CIMProperty::setPropagated(Boolean propagated) {
    _rep->propagated = propagated;
}

CIMProperty& CIMProperty::addQualifier(CIMQualifier x) {
    _rep->qualifiers.add(std::move(x), "qualifier");
    return *this;
}

Uint32 CIMProperty::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMQualifier CIMProperty::getQualifier(Uint32 index) {
    return _rep->qualifiers[index];
}

CIMConstQualifier CIMProperty::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

void CIMProperty::removeQualifier(Uint32 index) {
    _rep->qualifiers.remove(index);
}

Uint32 CIMProperty::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Boolean CIMProperty::identical(const CIMConstProperty& x) const {
    return _rep->identical(*x._rep);
}

CIMProperty CIMProperty::clone() const {
    return CIMProperty(new CIMPropertyRep(*_rep));
}

CIMConstProperty::CIMConstProperty(const CIMProperty& x) : _rep(x._rep) {}

CIMConstProperty::CIMConstProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize,
                                   const CIMName& referenceClassName, const CIMName& classOrigin,
                                   Boolean propagated)
    : _rep(new CIMPropertyRep(name, value, arraySize, referenceClassName, classOrigin,
                              propagated)) {}

const CIMName& CIMConstProperty::getName() const {
    return _rep->name;
}

const CIMValue& CIMConstProperty::getValue() const {
    return _rep->value;
}

CIMType CIMConstProperty::getType() const {
    return _rep->value.getType();
}

Boolean CIMConstProperty::isArray() const {
    return _rep->value.isArray();
}

Uint32 CIMConstProperty::getArraySize() const {
    return _rep->arraySize;
}

const CIMName& CIMConstProperty::getReferenceClassName() const {
    return _rep->referenceClassName;
}

const CIMName& CIMConstProperty::getClassOrigin() const {
    return _rep->classOrigin;
}

Boolean CIMConstProperty::getPropagated() const {
    return _rep->propagated;
}

Uint32 CIMConstProperty::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMConstProperty::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMConstProperty::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Boolean CIMConstProperty::identical(const CIMConstProperty& x) const {
    return _rep->identical(*x._rep);
}

CIMProperty CIMConstProperty::clone() const {
    return CIMProperty(new CIMPropertyRep(*_rep));
}

} // namespace Pegasus
