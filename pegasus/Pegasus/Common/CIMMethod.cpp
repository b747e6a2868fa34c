#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/NamedList.h>

namespace Pegasus {

class CIMMethodRep final : public SharedRep {
public:
    CIMMethodRep(const CIMName& name_, CIMType type_, const CIMName& classOrigin_, bool propagated_)
        : type(type_), classOrigin(classOrigin_), propagated(propagated_) {
        setName(name_);
    }

    CIMMethodRep(const CIMMethodRep& x) // a deep copy
        : SharedRep(x), name(x.name), type(x.type), classOrigin(x.classOrigin),
          propagated(x.propagated), qualifiers(x.qualifiers.clone()),
          parameters(x.parameters.clone()) {}

    void setName(const CIMName& x) {
        if (x.isNull()) {
            throwUninitializedObject();
        }
        name = x;
    }

    bool identical(const CIMMethodRep& x) const {
        return name == x.name && type == x.type && classOrigin == x.classOrigin &&
               propagated == x.propagated && qualifiers.identical(x.qualifiers) &&
               parameters.identical(x.parameters);
    }

    CIMName name;
    CIMType type;
    CIMName classOrigin;
    bool propagated;
    NamedList<CIMQualifier> qualifiers;
    NamedList<CIMParameter> parameters;
};

CIMMethod::CIMMethod(CIMMethodRep* rep) : _rep(rep) {}

CIMMethod::CIMMethod(const CIMName& name, CIMType type, const CIMName& classOrigin,
                     Boolean propagated)
    : _rep(new CIMMethodRep(name, type, classOrigin, propagated)) {}

const CIMName& CIMMethod::getName() const {
    return _rep->name;
}

CIMType CIMMethod::getType() const {
    return _rep->type;
}

const CIMName& CIMMethod::getClassOrigin() const {
    return _rep->classOrigin;
}

Boolean CIMMethod::getPropagated() const {
    return _rep->propagated;
}

void CIMMethod::setName(const CIMName& name) {
    _rep->setName(name);
    NamePlaces::somethingRenamed();
}

void CIMMethod::setType(CIMType type) {
    _rep->type = type;
}

void CIMMethod::setClassOrigin(const CIMName& classOrigin) {
    _rep->classOrigin = classOrigin;
}

void CIMMethod::setPropagated(Boolean propagated) {
    _rep->propagated = propagated;
}

CIMMethod& CIMMethod::addQualifier(const CIMQualifier& x) {
    _rep->qualifiers.add(x, "qualifier");
    return *this;
}

CIMQualifier CIMMethod::getQualifier(Uint32 index) {
    return _rep->qualifiers[index];
}

void CIMMethod::removeQualifier(Uint32 index) {
    _rep->qualifiers.remove(index);
}

CIMMethod& CIMMethod::addParameter(const CIMParameter& x) {
    _rep->parameters.add(x, "parameter");
    return *this;
}

CIMParameter CIMMethod::getParameter(Uint32 index) {
    return _rep->parameters[index];
}

void CIMMethod::removeParameter(Uint32 index) {
    _rep->parameters.remove(index);
}

Uint32 CIMMethod::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMMethod::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMMethod::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Uint32 CIMMethod::findParameter(const CIMName& name) const {
    return _rep->parameters.find(name);
}

CIMConstParameter CIMMethod::getParameter(Uint32 index) const {
    return _rep->parameters[index];
}

Uint32 CIMMethod::getParameterCount() const {
    return _rep->parameters.size();
}

Boolean CIMMethod::identical(const CIMConstMethod& x) const {
    return _rep->identical(*x._rep);
}

CIMMethod CIMMethod::clone() const {
    return CIMMethod(new CIMMethodRep(*_rep));
}

CIMConstMethod::CIMConstMethod(const CIMMethod& x) : _rep(x._rep) {}

CIMConstMethod::CIMConstMethod(const CIMName& name, CIMType type, const CIMName& classOrigin,
                               Boolean propagated)
    : _rep(new CIMMethodRep(name, type, classOrigin, propagated)) {}

const CIMName& CIMConstMethod::getName() const {
    return _rep->name;
}

CIMType CIMConstMethod::getType() const {
    return _rep->type;
}

const CIMName& CIMConstMethod::getClassOrigin() const {
    return _rep->classOrigin;
}

Boolean CIMConstMethod::getPropagated() const {
    return _rep->propagated;
}

Uint32 CIMConstMethod::findQualifier(const CIMName& name) const {
    return _rep->qualifiers.find(name);
}

CIMConstQualifier CIMConstMethod::getQualifier(Uint32 index) const {
    return _rep->qualifiers[index];
}

Uint32 CIMConstMethod::getQualifierCount() const {
    return _rep->qualifiers.size();
}

Uint32 CIMConstMethod::findParameter(const CIMName& name) const {
    return _rep->parameters.find(name);
}

CIMConstParameter CIMConstMethod::getParameter(Uint32 index) const {
    return _rep->parameters[index];
}

Uint32 CIMConstMethod::getParameterCount() const {
    return _rep->parameters.size();
}

Boolean CIMConstMethod::identical(const CIMConstMethod& x) const {
    return _rep->identical(*x._rep);
}

CIMMethod CIMConstMethod::clone() const {
    return CIMMethod(new CIMMethodRep(*_rep));
}

} // namespace Pegasus
