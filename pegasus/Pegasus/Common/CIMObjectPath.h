#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/SharedRep.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

class CIMValue;
class CIMObjectPathRep;

// A key of an object path: its name, its text without quotes and escapes, and how it is written.
//
// Threads: as String.
class PEGASUS_COMMON_LINKAGE CIMKeyBinding {
public:
    enum Type { BOOLEAN, STRING, NUMERIC, REFERENCE };

    CIMKeyBinding() = default; // no name, "", STRING
    CIMKeyBinding(const CIMName& name, String value, Type type)
        : _name(name), _value(std::move(value)), _type(type) {}
    // The type follows from the value's; an array or an object throws TypeMismatchException.
    CIMKeyBinding(const CIMName& name, const CIMValue& value);

    const CIMName& getName() const { return _name; }
    void setName(const CIMName& name) { _name = name; }
    const String& getValue() const { return _value; }
    void setValue(const String& value) { _value = value; }
    Type getType() const { return _type; }
    void setType(Type type) { _type = type; }

    Boolean equal(CIMValue value);

private:
    CIMName _name;
    String _value;
    Type _type = STRING;
};

// Numbers are equal as integers (10, 0xA), references as paths.
PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMKeyBinding& x, const CIMKeyBinding& y);

// The name of a class or an instance: [//host/][namespace:]Class[.key=value{,key=value}].
//
// Keys are kept in the order of their names, and the text of a reference key in its canonical
// form. Text that is no path, an illegal host and a reference key whose text is no path throw
// MalformedObjectNameException.
//
// Threads: as String.
class PEGASUS_COMMON_LINKAGE CIMObjectPath {
public:
    CIMObjectPath() = default;
    CIMObjectPath(const String& objectName);
    CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
                  Array<CIMKeyBinding> keyBindings = Array<CIMKeyBinding>());
    CIMObjectPath& operator=(const String& objectName);

    void clear();
    void set(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
             Array<CIMKeyBinding> keyBindings = Array<CIMKeyBinding>());
    void set(const String& objectName);

    // The references live until this path is changed or gone.
    const String& getHost() const;
    void setHost(const String& host);
    const CIMNamespaceName& getNameSpace() const;
    void setNameSpace(const CIMNamespaceName& nameSpace);
    const CIMName& getClassName() const;
    void setClassName(const CIMName& className);
    const Array<CIMKeyBinding>& getKeyBindings() const;
    void setKeyBindings(Array<CIMKeyBinding> keyBindings);

    String toString() const;
    Boolean identical(const CIMObjectPath& x) const;
    Uint32 makeHashCode() const;

private:
    Shared<CIMObjectPathRep> _rep; // none: everything empty
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMObjectPath& x, const CIMObjectPath& y);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMObjectPath& x, const CIMObjectPath& y);

} // namespace Pegasus
