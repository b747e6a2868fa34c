#pragma once

#include <atomic>

#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/NamedList.h>

namespace Pegasus {

// The body of a property. Internal.
class CIMPropertyRep final : public SharedRep {
public:
    CIMPropertyRep(const CIMName& name, CIMValue value, Uint32 arraySize,
                   const CIMName& referenceClassName, const CIMName& classOrigin, bool propagated);
    CIMPropertyRep(const CIMPropertyRep& x); // a deep copy that is in no object

    void setName(const CIMName& x);
    void setValue(const CIMValue& x);
    bool identical(const CIMPropertyRep& x) const;

    CIMName name;
    CIMValue value;
    Uint32 arraySize;
    bool propagated;
    // In an instance or class, whose names must stay distinct. Atomic, as one property may be
    // added to several objects at once.
    std::atomic<bool> contained{false};
    CIMName referenceClassName;
    CIMName classOrigin;
    NamedList<CIMQualifier> qualifiers;
};

struct PropertyAccess {
    template<class Handle>
    static const CIMPropertyRep& content(const Handle& property) {
        return *property._rep;
    }
    static void setContained(const CIMProperty& property, bool contained) {
        property._rep->contained.store(contained, std::memory_order_relaxed);
    }
};

} // namespace Pegasus
