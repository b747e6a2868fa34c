#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMMethod.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>

namespace Pegasus {

// A class declaration.
//
// A handle, with the errors and the thread rule of CIMObject; adding a method twice throws
// AlreadyExistsException.
class PEGASUS_COMMON_LINKAGE CIMClass {
public:
    CIMClass() = default;
    explicit CIMClass(const CIMObject& x); // of an instance: DynamicCastFailedException
    CIMClass(const CIMName& className, const CIMName& superClassName = CIMName());

    Boolean isAssociation() const; // has the qualifier Association, TRUE
    Boolean isAbstract() const;    // has the qualifier Abstract, TRUE
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    void setPath(const CIMObjectPath& path);
    const CIMName& getSuperClassName() const;
    void setSuperClassName(const CIMName& superClassName);

    CIMClass& addQualifier(const CIMQualifier& x);
    Uint32 findQualifier(const CIMName& name) const;
    CIMQualifier getQualifier(Uint32 index);
    CIMConstQualifier getQualifier(Uint32 index) const;
    void removeQualifier(Uint32 index);
    Uint32 getQualifierCount() const;

    CIMClass& addProperty(const CIMProperty& x); // shares the property
    Uint32 findProperty(const CIMName& name) const;
    CIMProperty getProperty(Uint32 index);
    CIMConstProperty getProperty(Uint32 index) const;
    void removeProperty(Uint32 index);
    Uint32 getPropertyCount() const;

    CIMClass& addMethod(const CIMMethod& x); // shares the method
    Uint32 findMethod(const CIMName& name) const;
    CIMMethod getMethod(Uint32 index);
    CIMConstMethod getMethod(Uint32 index) const;
    void removeMethod(Uint32 index);
    Uint32 getMethodCount() const;

    // The properties with the qualifier Key, TRUE; replaces the content of keyNames.
    void getKeyNames(Array<CIMName>& keyNames) const;
    Boolean hasKeys() const;

    Boolean identical(const CIMConstClass& x) const;
    CIMClass clone() const;
    Boolean isUninitialized() const { return !_rep; }

private:
    friend class CIMConstClass;
    friend class CIMConstObject;
    friend class CIMObject;
    explicit CIMClass(CIMObjectRep* rep);

    Shared<CIMObjectRep> _rep;
};

// A handle that only reads.
class PEGASUS_COMMON_LINKAGE CIMConstClass {
public:
    CIMConstClass() = default;
    CIMConstClass(const CIMClass& x);
    explicit CIMConstClass(const CIMObject& x);
    explicit CIMConstClass(const CIMConstObject& x);
    CIMConstClass(const CIMName& className, const CIMName& superClassName = CIMName());

    Boolean isAssociation() const;
    Boolean isAbstract() const;
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;
    const CIMName& getSuperClassName() const;
    Uint32 findQualifier(const CIMName& name) const;
    CIMConstQualifier getQualifier(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 findProperty(const CIMName& name) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getPropertyCount() const;
    Uint32 findMethod(const CIMName& name) const;
    CIMConstMethod getMethod(Uint32 index) const;
    Uint32 getMethodCount() const;
    void getKeyNames(Array<CIMName>& keyNames) const;
    Boolean hasKeys() const;
    Boolean identical(const CIMConstClass& x) const;
    CIMClass clone() const;
    Boolean isUninitialized() const { return !_rep; }

private:
    friend class CIMClass;
    friend class CIMConstObject;
    friend struct ObjectAccess;
    Shared<CIMObjectRep> _rep;
};

} // namespace Pegasus
