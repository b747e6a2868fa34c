#pragma once

#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/NamedList.h>

namespace Pegasus {

// The body of an instance, and what a class has in common with it. Internal.
class CIMObjectRep : public SharedRep {
public:
    explicit CIMObjectRep(const CIMName& className); // null: UninitializedObjectException

    void setPath(CIMObjectPath x);
    void addProperty(CIMProperty x);
    void removeProperty(Uint32 index);

    virtual bool isClass() const { return false; }
    virtual bool identical(const CIMObjectRep& x) const;
    virtual CIMObjectRep* clone() const { return new CIMObjectRep(*this); }

    CIMObjectPath path; // never without a class
    NamedList<CIMQualifier> qualifiers;
    NamedList<CIMProperty> properties;

protected:
    CIMObjectRep(const CIMObjectRep& x); // a deep copy
};

class CIMClassRep final : public CIMObjectRep {
public:
    CIMClassRep(const CIMName& className, const CIMName& superClassName_)
        : CIMObjectRep(className), superClassName(superClassName_) {}

    bool isClass() const override { return true; }
    bool identical(const CIMObjectRep& x) const override;
    CIMObjectRep* clone() const override { return new CIMClassRep(*this); }

    CIMName superClassName;
    NamedList<CIMMethod> methods;

private:
    CIMClassRep(const CIMClassRep& x);
};

// The body if it is an instance's, or a class's; else DynamicCastFailedException.
// What handles hide. Going through their functions costs a handle for each property.
struct ObjectAccess {
    template<class Handle>
    static const CIMObjectRep& content(const Handle& handle) {
        return *handle._rep;
    }
};

const Shared<CIMObjectRep>& instanceRep(const Shared<CIMObjectRep>& rep);
const Shared<CIMObjectRep>& classRep(const Shared<CIMObjectRep>& rep);

// Whether the qualifier is there and TRUE.
bool isTrue(const NamedList<CIMQualifier>& qualifiers, const char* name);

} // namespace Pegasus
