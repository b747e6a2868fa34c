#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/SharedRep.h>

namespace Pegasus {

class CIMClass;
class CIMConstClass;
class CIMConstInstance;
class CIMConstObject;
class CIMInstance;
class CIMObjectRep;

// A class or an instance.
//
// A handle: copies, and the CIMInstance or CIMClass that it was made from, share one object;
// clone() makes another. The members of a default-constructed one throw
// UninitializedObjectException. Adding a property or a qualifier twice throws
// AlreadyExistsException; an index beyond the end IndexOutOfBoundsException.
//
// Threads: as CIMQualifier.
class PEGASUS_COMMON_LINKAGE CIMObject {
public:
    CIMObject() = default;
    CIMObject(const CIMClass& x);
    CIMObject(const CIMInstance& x);

    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    // A path of another class throws TypeMismatchException, one without a class
    // UninitializedObjectException.
    void setPath(const CIMObjectPath& path);

    CIMObject& addQualifier(const CIMQualifier& x);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    CIMObject& addProperty(const CIMProperty& x); // shares the property
    Uint32 findProperty(const CIMName& name) const;
    CIMProperty getProperty(Uint32 index);
    CIMConstProperty getProperty(Uint32 index) const;
    void removeProperty(Uint32 index);
    Uint32 getPropertyCount() const;

    String toString() const; // CIM-XML
    Boolean identical(const CIMConstObject& x) const;
    CIMObject clone() const;
    Boolean isUninitialized() const { return !_rep; }
    Boolean isClass() const;
    Boolean isInstance() const;

private:
    friend class CIMClass;
    friend class CIMConstClass;
    friend class CIMConstInstance;
    friend class CIMConstObject;
    friend class CIMInstance;
    explicit CIMObject(CIMObjectRep* rep);

    Shared<CIMObjectRep> _rep;
};

// A handle that only reads.
class PEGASUS_COMMON_LINKAGE CIMConstObject {
public:
    CIMConstObject() = default;
    CIMConstObject(const CIMObject& x);
    CIMConstObject(const CIMClass& x);
    CIMConstObject(const CIMInstance& x);
    CIMConstObject(const CIMConstClass& x);
    CIMConstObject(const CIMConstInstance& x);

    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const;
    String toString() const;
    Boolean identical(const CIMConstObject& x) const;
    CIMObject clone() const;
    Boolean isUninitialized() const { return !_rep; }
    Boolean isClass() const;
    Boolean isInstance() const;

private:
    friend class CIMConstClass;
    friend class CIMConstInstance;
    friend class CIMObject;
    friend struct ObjectAccess;
    Shared<CIMObjectRep> _rep;
};

} // namespace Pegasus
