#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMParameter.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/SharedRep.h>

namespace Pegasus {

class CIMConstMethod;
class CIMMethodRep;

// The declaration of a class's method.
//
// A handle: copies share one method, clone() makes another. The members of a default-constructed
// one throw UninitializedObjectException. Adding a parameter or a qualifier twice throws
// AlreadyExistsException.
//
// Threads: as CIMQualifier.
class PEGASUS_COMMON_LINKAGE CIMMethod {
public:
    CIMMethod() = default;
    CIMMethod(const CIMName& name, CIMType type, const CIMName& classOrigin = CIMName(),
              Boolean propagated = false);

    const CIMName& getName() const;
    void setName(const CIMName& name);
    CIMType getType() const; // of the return value
    void setType(CIMType type);
    const CIMName& getClassOrigin() const;
    void setClassOrigin(const CIMName& classOrigin);
    Boolean getPropagated() const;
    void setPropagated(Boolean propagated);

    CIMMethod& addQualifier(const CIMQualifier& x);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    CIMMethod& addParameter(const CIMParameter& x);
    Uint32 findParameter(const CIMName& name) const;
    CIMParameter getParameter(Uint32 index);
    CIMConstParameter getParameter(Uint32 index) const;
    void removeParameter(Uint32 index);
    Uint32 getParameterCount() const;

    Boolean isUninitialized() const { return !_rep; }
    Boolean identical(const CIMConstMethod& x) const;
    CIMMethod clone() const;

private:
    friend class CIMConstMethod;
    explicit CIMMethod(CIMMethodRep* rep);

    Shared<CIMMethodRep> _rep;
};

// A handle that only reads.
class PEGASUS_COMMON_LINKAGE CIMConstMethod {
public:
    CIMConstMethod() = default;
    CIMConstMethod(const CIMMethod& x);
    CIMConstMethod(const CIMName& name, CIMType type, const CIMName& classOrigin = CIMName(),
                   Boolean propagated = false);

    const CIMName& getName() const;
    CIMType getType() const;
    const CIMName& getClassOrigin() const;
    Boolean getPropagated() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 findParameter(const CIMName& name) const;
    CIMConstParameter getParameter(Uint32 index) const;
    Uint32 getParameterCount() const;
    Boolean isUninitialized() const { return !_rep; }
    Boolean identical(const CIMConstMethod& x) const;
    CIMMethod clone() const;

private:
    friend class CIMMethod;
    Shared<CIMMethodRep> _rep;
};

} // namespace Pegasus
