#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/NamedList.h>

namespace Pegasus {

class CIMQualifierRep final : public SharedRep {
public:
    CIMQualifierRep(const CIMName& name_, CIMValue value_, const CIMFlavor& flavor_,
                    bool propagated_)
        : value(std::move(value_)), flavor(flavor_), propagated(propagated_) {
        setName(name_);
    }

    void setName(const CIMName& x) {
        if (x.isNull()) {
            throwUninitializedObject();
        }
        name = x;
    }

    CIMName name;
    CIMValue value;
    CIMFlavor flavor;
    bool propagated;
};

CIMQualifier::CIMQualifier(const CIMName& name, CIMValue value, const CIMFlavor& flavor,
                           Boolean propagated)
    : _rep(new CIMQualifierRep(name, std::move(value), flavor, propagated)) {}

const CIMName& CIMQualifier::getName() const {
    return _rep->name;
}

void CIMQualifier::setName(const CIMName& name) {
    _rep->setName(name);
    NamePlaces::somethingRenamed();
}

CIMType CIMQualifier::getType() const {
    return _rep->value.getType();
}

Boolean CIMQualifier::isArray() const {
    return _rep->value.isArray();
}

const CIMValue& CIMQualifier::getValue() const {
    return _rep->value;
}

void CIMQualifier::setValue(const CIMValue& value) {
    _rep->value = value;
}

void CIMQualifier::setFlavor(const CIMFlavor& flavor) {
    _rep->flavor = flavor;
}

void CIMQualifier::unsetFlavor(const CIMFlavor& flavor) {
    _rep->flavor.removeFlavor(flavor);
}

const CIMFlavor& CIMQualifier::getFlavor() const {
    return _rep->flavor;
}

Uint32 CIMQualifier::getPropagated() const {
    return _rep->propagated;
}

void CIMQualifier::setPropagated(Boolean propagated) {
    _rep->propagated = propagated;
}

Boolean CIMQualifier::identical(const CIMConstQualifier& x) const {
    return CIMConstQualifier(*this).identical(x);
}

CIMQualifier CIMQualifier::clone() const {
    return CIMConstQualifier(*this).clone();
}

CIMConstQualifier::CIMConstQualifier(const CIMQualifier& x) : _rep(x._rep) {}

CIMConstQualifier::CIMConstQualifier(const CIMName& name, const CIMValue& value,
                                     const CIMFlavor& flavor, Boolean propagated)
    : _rep(new CIMQualifierRep(name, value, flavor, propagated)) {}

const CIMName& CIMConstQualifier::getName() const {
    return _rep->name;
}

CIMType CIMConstQualifier::getType() const {
    return _rep->value.getType();
}

Boolean CIMConstQualifier::isArray() const {
    return _rep->value.isArray();
}

const CIMValue& CIMConstQualifier::getValue() const {
    return _rep->value;
}

const CIMFlavor& CIMConstQualifier::getFlavor() const {
    return _rep->flavor;
}

Uint32 CIMConstQualifier::getPropagated() const {
    return _rep->propagated;
}

Boolean CIMConstQualifier::identical(const CIMConstQualifier& x) const {
    const CIMQualifierRep &a = *_rep, &b = *x._rep;
    return a.name == b.name && a.value == b.value && a.flavor.equal(b.flavor) &&
           a.propagated == b.propagated;
}

CIMQualifier CIMConstQualifier::clone() const {
    return CIMQualifier(_rep->name, _rep->value, _rep->flavor, _rep->propagated);
}

} // namespace Pegasus
