#pragma once

#include <memory>
#include <vector>

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>

namespace Pegasus {

// The properties that a request wants. Null means all of them, an empty list none.
//
// Threads: as String.
class PEGASUS_COMMON_LINKAGE CIMPropertyList {
public:
    CIMPropertyList() = default; // null
    // A null name in the list throws UninitializedObjectException.
    CIMPropertyList(const Array<CIMName>& propertyNames);

    void set(const Array<CIMName>& propertyNames);
    void clear(); // to null
    Boolean isNull() const { return _isNull; }
    Uint32 size() const { return _names.size(); }
    const CIMName& operator[](Uint32 index) const { return _names[index]; }
    Array<CIMName> getPropertyNameArray() const { return _names; }

private:
    friend struct PropertyListAccess;

    Array<CIMName> _names;
    std::shared_ptr<const std::vector<Uint32>> _sorted; // places in a long list, by their names
    Boolean _isNull = true;
};

} // namespace Pegasus
