#include <Pegasus/Common/CIMPropertyRep.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

CIMPropertyRep::CIMPropertyRep(const CIMName& name_, CIMValue value_, Uint32 arraySize_,
                               const CIMName& referenceClassName_, const CIMName& classOrigin_,
                               bool propagated_)
    : value(std::move(value_)), arraySize(arraySize_), propagated(propagated_),
      referenceClassName(referenceClassName_), classOrigin(classOrigin_) {
    setName(name_);
    const bool reference = value.getType() == CIMTYPE_REFERENCE;
    const bool wrongSize =
        arraySize != 0 && (!value.isArray() || value.getArraySize() != arraySize);
    const bool wrongClass = !referenceClassName.isNull() && !reference;
    if (wrongSize || wrongClass || (reference && value.isArray())) {
        throw TypeMismatchException();
    }
}

CIMPropertyRep::CIMPropertyRep(const CIMPropertyRep& x)
    : SharedRep(x), name(x.name), value(x.value), arraySize(x.arraySize), propagated(x.propagated),
      referenceClassName(x.referenceClassName), classOrigin(x.classOrigin),
      qualifiers(x.qualifiers.clone()) {}

void CIMPropertyRep::setName(const CIMName& x) {
    if (x.isNull()) {
        throwUninitializedObject();
    }
    if (contained.load(std::memory_order_relaxed)) {
        throw Exception("Attempted to change the name of a property already in a container.");
    }
    name = x;
}

void CIMPropertyRep::setValue(const CIMValue& x) {
    if (!value.typeCompatible(x) || (arraySize != 0 && x.getArraySize() != arraySize)) {
        throw TypeMismatchException();
    }
    value = x;
}

bool CIMPropertyRep::identical(const CIMPropertyRep& x) const {
    return name == x.name && value == x.value && arraySize == x.arraySize &&
           referenceClassName == x.referenceClassName && classOrigin == x.classOrigin &&
           propagated == x.propagated && qualifiers.identical(x.qualifiers);
}

} // namespace Pegasus
