#pragma once

#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMType.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/SharedRep.h>

namespace Pegasus {

class CIMConstQualifier;
class CIMQualifierRep;

// A handle: copies share one qualifier, clone() makes another. The members of a
// default-constructed one throw UninitializedObjectException.
//
// Threads: handles may be copied and read by several at once; a change is seen through every
// handle and needs the qualifier to itself.
class PEGASUS_COMMON_LINKAGE CIMQualifier {
public:
    CIMQualifier() = default;
    // A null name throws UninitializedObjectException.
    CIMQualifier(const CIMName& name, CIMValue value,
                 const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE), Boolean propagated = false);

    const CIMName& getName() const;
    void setName(const CIMName& name);
    CIMType getType() const;
    Boolean isArray() const;
    const CIMValue& getValue() const;
    void setValue(const CIMValue& value);
    void setFlavor(const CIMFlavor& flavor); // adds
    void unsetFlavor(const CIMFlavor& flavor);
    const CIMFlavor& getFlavor() const;
    Uint32 getPropagated() const;
    void setPropagated(Boolean propagated);
    Boolean isUninitialized() const { return !_rep; }
    Boolean identical(const CIMConstQualifier& x) const;
    CIMQualifier clone() const;

private:
    friend class CIMConstQualifier;
    Shared<CIMQualifierRep> _rep;
};

// A handle that only reads.
class PEGASUS_COMMON_LINKAGE CIMConstQualifier {
public:
    CIMConstQualifier() = default;
    CIMConstQualifier(const CIMQualifier& x);
    CIMConstQualifier(const CIMName& name, const CIMValue& value,
                      const CIMFlavor& flavor = CIMFlavor(CIMFlavor::NONE),
                      Boolean propagated = false);

    const CIMName& getName() const;
    CIMType getType() const;
    Boolean isArray() const;
    const CIMValue& getValue() const;
    const CIMFlavor& getFlavor() const;
    Uint32 getPropagated() const;
    Boolean isUninitialized() const { return !_rep; }
    Boolean identical(const CIMConstQualifier& x) const;
    CIMQualifier clone() const;

private:
    friend class CIMQualifier;
    Shared<CIMQualifierRep> _rep;
};

} // namespace Pegasus
