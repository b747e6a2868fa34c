#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/SharedRep.h>

namespace Pegasus {

class CIMConstParameter;
class CIMParameterRep;

// The declaration of a method's parameter.
//
// A handle: copies share one parameter, clone() makes another. The members of a
// default-constructed one throw UninitializedObjectException.
//
// Threads: as CIMQualifier.
class PEGASUS_COMMON_LINKAGE CIMParameter {
public:
    CIMParameter() = default;
    // A null name throws UninitializedObjectException; an array size of what is no array, and a
    // reference class that is missing or not called for, TypeMismatchException.
    CIMParameter(const CIMName& name, CIMType type, Boolean isArray = false, Uint32 arraySize = 0,
                 const CIMName& referenceClassName = CIMName());

    const CIMName& getName() const;
    void setName(const CIMName& name);
    CIMType getType() const;
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;

    CIMParameter& addQualifier(const CIMQualifier& x);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    Boolean isUninitialized() const { return !_rep; }
    Boolean identical(const CIMConstParameter& x) const;
    CIMParameter clone() const;

private:
    friend class CIMConstParameter;
    explicit CIMParameter(CIMParameterRep* rep);

    Shared<CIMParameterRep> _rep;
};

// A handle that only reads.
class PEGASUS_COMMON_LINKAGE CIMConstParameter {
public:
    CIMConstParameter() = default;
    CIMConstParameter(const CIMParameter& x);
    CIMConstParameter(const CIMName& name, CIMType type, Boolean isArray = false,
                      Uint32 arraySize = 0, const CIMName& referenceClassName = CIMName());

    const CIMName& getName() const;
    CIMType getType() const;
    Boolean isArray() const;
    Uint32 getArraySize() const;
    const CIMName& getReferenceClassName() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Boolean isUninitialized() const { return !_rep; }
    Boolean identical(const CIMConstParameter& x) const;
    CIMParameter clone() const;

private:
    friend class CIMParameter;
    Shared<CIMParameterRep> _rep;
};

} // namespace Pegasus
