#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMQualifier.h>

namespace Pegasus {

// An instance of a class. A new one has a path of the class name alone.
//
// A handle, with the errors and the thread rule of CIMObject.
class PEGASUS_COMMON_LINKAGE CIMInstance {
public:
    CIMInstance() = default;
    explicit CIMInstance(const CIMObject& x); // of a class: DynamicCastFailedException
    CIMInstance(const CIMName& className);    // null: UninitializedObjectException

    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    void setPath(CIMObjectPath path);

    CIMInstance& addQualifier(const CIMQualifier& x);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    CIMInstance& addProperty(CIMProperty x); // shares the property
    Uint32 findProperty(const CIMName& name) const;
    CIMProperty getProperty(Uint32 index);
    CIMConstProperty getProperty(Uint32 index) const;
    void removeProperty(Uint32 index);
    Uint32 getPropertyCount() const;

    // The class and the keys that it names, without host and namespace. A key that is no property
    // of this instance throws Exception.
    CIMObjectPath buildPath(const CIMConstClass& cimClass) const;

    Boolean identical(const CIMConstInstance& x) const; // path, qualifiers, properties in order
    CIMInstance clone() const;
    Boolean isUninitialized() const { return !_rep; }

private:
    friend class CIMConstInstance;
    friend class CIMConstObject;
    friend class CIMObject;
    friend struct ObjectAccess;
    explicit CIMInstance(CIMObjectRep* rep);

    Shared<CIMObjectRep> _rep;
};

// A handle that only reads.
class PEGASUS_COMMON_LINKAGE CIMConstInstance {
public:
    CIMConstInstance() = default;
    CIMConstInstance(const CIMInstance& x);
    explicit CIMConstInstance(const CIMObject& x);
    explicit CIMConstInstance(const CIMConstObject& x);
    CIMConstInstance(const CIMName& className);

    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const;
    CIMObjectPath buildPath(const CIMConstClass& cimClass) const;
    Boolean identical(const CIMConstInstance& x) const;
    CIMInstance clone() const;
    Boolean isUninitialized() const { return !_rep; }

private:
    friend class CIMConstObject;
    friend class CIMInstance;
    Shared<CIMObjectRep> _rep;
};

} // namespace Pegasus
