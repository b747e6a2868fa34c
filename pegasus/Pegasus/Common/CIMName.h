#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// The name of a class, property, method, parameter or qualifier, or null. Its spelling is kept;
// equality ignores the case of ASCII letters. A text that is no legal name, the empty one among
// them, throws InvalidNameException.
//
// Threads: as String.
class PEGASUS_COMMON_LINKAGE CIMName {
public:
    CIMName() = default; // null
    CIMName(const String& name);
    CIMName(const char* name);
    CIMName& operator=(const String& name);

    const String& getString() const { return _name; }
    Boolean isNull() const { return _name.size() == 0; }
    void clear() { _name.clear(); }
    Boolean equal(const CIMName& name) const;

    // A letter, '_' or U+0080 to U+FFEF; then these and digits.
    static Boolean legal(const String& name);

private:
    String _name;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMName& name1, const CIMName& name2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMName& name1, const CIMName& name2);

// A namespace, or null: names joined by '/'. One leading '/' is accepted and dropped. An illegal
// text throws InvalidNamespaceNameException.
//
// Threads: as String.
class PEGASUS_COMMON_LINKAGE CIMNamespaceName {
public:
    CIMNamespaceName() = default; // null
    CIMNamespaceName(const String& name);
    CIMNamespaceName(const char* name);
    CIMNamespaceName& operator=(const String& name);

    const String& getString() const { return _name; }
    Boolean isNull() const { return _name.size() == 0; }
    void clear() { _name.clear(); }
    Boolean equal(const CIMNamespaceName& name) const;

    static Boolean legal(const String& name);

private:
    String _name;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMNamespaceName& name1,
                                          const CIMNamespaceName& name2);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMNamespaceName& name1,
                                          const CIMNamespaceName& name2);

} // namespace Pegasus
