#include <Pegasus/Common/CIMParameter.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/NamedList.h>

namespace Pegasus {

class CIMParameterRep final : public SharedRep {
public:
    CIMParameterRep(const CIMName& name_, CIMType type_, bool isArray_, Uint32 arraySize_,
                    const CIMName& referenceClassName_)
        : type(type_), isArray(isArray_), arraySize(arraySize_),
          referenceClassName(referenceClassName_) {
        setName(name_);
        const bool reference = type == CIMTYPE_REFERENCE;
        if ((arraySize != 0 && !isArray) || reference == referenceClassName.isNull()) {
            throw TypeMismatchException();
        }
    }

    CIMParameterRep(const CIMParameterRep& x) // a deep copy
        : SharedRep(x), name(x.name), type(x.type), isArray(x.isArray), arraySize(x.arraySize),
          referenceClassName(x.referenceClassName), qualifiers(x.qualifiers.clone()) {}

    void setName(const CIMName& x) {
        if (x.isNull()) {
            throwUninitializedObject();
        }
        name = x;
    }

    bool identical(const CIMParameterRep& x) const {
        return name == x.name && type == x.type && isArray == x.isArray &&
               arraySize == x.arraySize && referenceClassName == x.referenceClassName &&
               qualifiers.identical(x.qualifiers);
    }

    CIMName name;
    CIMType type;
    bool isArray;
    Uint32 arraySize;
    CIMName referenceClassName;
    NamedList<CIMQualifier> qualifiers;
};

CIMParameter::CIMParameter(CIMParameterRep* rep) : _rep(rep) {}

CIMParameter::CIMParameter(const CIMName& name, CIMType type, Boolean isArray, Uint32 arraySize,
                           const CIMName& referenceClassName)
    : _rep(new CIMParameterRep(name, type, isArray, arraySize, referenceClassName)) {}

const CIMName& CIMParameter::getName() const {
    return _rep->name;
}

CIMType CIMParameter::getType() const {
    return _rep->type;
}

void CIMParameter::setName(const CIMName& name) {
    _rep->setName(name);
    NamePlaces::somethingRenamed();
}

Boolean CIMParameter::isArray() const {
    return _rep->isArray;
}

Uint32 CIMParameter::getArraySize() const {
    return _rep->arraySize;
}

const CIMName& CIMParameter::getReferenceClassName() const {
    return _rep->referenceClassName;
}

CIMParameter& CIMParameter::addQualifier(const CIMQualifier& x) {
    _rep->qualifiers.add(x, "qualifier");
    return *this;
}

CIMQualifier CIMParameter::getQualifier(Uint32 index) {
    return _rep->qualifiers[index];
}

void CIMParameter::removeQualifier(Uint32 index) {
    _rep->qualifiers.remove(index);
}

Uint32 CIMParameter::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMParameter::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMParameter::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Boolean CIMParameter::identical(const CIMConstParameter& x) const {
    return _rep->identical(*x._rep);
}

CIMParameter CIMParameter::clone() const {
    return CIMParameter(new CIMParameterRep(*_rep));
}

CIMConstParameter::CIMConstParameter(const CIMParameter& x) : _rep(x._rep) {}

CIMConstParameter::CIMConstParameter(const CIMName& name, CIMType type, Boolean isArray,
                                     Uint32 arraySize, const CIMName& referenceClassName)
    : _rep(new CIMParameterRep(name, type, isArray, arraySize, referenceClassName)) {}

const CIMName& CIMConstParameter::getName() const {
    return _rep->name;
}

CIMType CIMConstParameter::getType() const {
    return _rep->type;
}

Boolean CIMConstParameter::isArray() const {
    return _rep->isArray;
}

Uint32 CIMConstParameter::getArraySize() const {
    return _rep->arraySize;
}

const CIMName& CIMConstParameter::getReferenceClassName() const {
    return _rep->referenceClassName;
}

Uint32 CIMConstParameter::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMConstParameter::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMConstParameter::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Boolean CIMConstParameter::identical(const CIMConstParameter& x) const {
    return _rep->identical(*x._rep);
}

CIMParameter CIMConstParameter::clone() const {
    return CIMParameter(new CIMParameterRep(*_rep));
}

} // namespace Pegasus
