#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/SharedRep.h>

namespace Pegasus {

class CIMConstProperty;
class CIMPropertyRep;

// A handle: copies share one property, clone() makes another. The members of a
// default-constructed one throw UninitializedObjectException.
//
// The constructor throws UninitializedObjectException for a null name, and TypeMismatchException
// for an array size that is not the value's, a reference class of a value that is no reference,
// and an array of references. Adding a qualifier twice throws AlreadyExistsException.
//
// Threads: as CIMQualifier.
class PEGASUS_COMMON_LINKAGE CIMProperty {
public:
    CIMProperty() = default;
    CIMProperty(const CIMName& name, CIMValue value, Uint32 arraySize = 0,
                const CIMName& referenceClassName = CIMName(),
                const CIMName& classOrigin = CIMName(), Boolean propagated = false);

    const CIMName& getName() const;
    // Throws Exception once the property is part of an instance or class.
    void setName(const CIMName& name);
    const CIMValue& getValue() const;
    CIMType getType() const;
    Boolean isArray() const;
    // Another type or arrayness than the present one throws TypeMismatchException.
    void setValue(const CIMValue& value);
    Uint32 getArraySize() const; // of a fixed-size array; else 0
    const CIMName& getReferenceClassName() const;
    const CIMName& getClassOrigin() const;
    void setClassOrigin(const CIMName& classOrigin);
    Boolean getPropagated() const;
    void setPropagated(Boolean propagated);

    CIMProperty& addQualifier(CIMQualifier x);
    Uint32 findQualifier(const CIMName& name) const; // PEG_NOT_FOUND if there is none
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    Boolean isUninitialized() const { return !_rep; }
    Boolean identical(const CIMConstProperty& x) const;
    CIMProperty clone() const;

private:
    friend class CIMConstProperty;
    friend struct PropertyAccess;
    explicit CIMProperty(CIMPropertyRep* rep);

    Shared<CIMPropertyRep> _rep;
};

// A handle that only reads.
class PEGASUS_COMMON_LINKAGE CIMConstProperty {
public:
    CIMConstProperty() = default;
    CIMConstProperty(const CIMProperty& x);
    CIMConstProperty(const CIMName& name, const CIMValue& value, Uint32 arraySize = 0,
                     const CIMName& referenceClassName = CIMName(),
                     const CIMName& classOrigin = CIMName(), Boolean propagated = false);

    const CIMName& getName() const;
    const CIMValue& getValue() const;
    CIMType getType() const;
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    const CIMName& getClassOrigin() const;
    Boolean getPropagated() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Boolean isUninitialized() const { return !_rep; }
    Boolean identical(const CIMConstProperty& x) const;
    CIMProperty clone() const;

private:
    friend class CIMProperty;
    friend struct PropertyAccess;
    Shared<CIMPropertyRep> _rep;
};

} // namespace Pegasus
