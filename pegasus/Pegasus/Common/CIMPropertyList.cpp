#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>

namespace Pegasus {

CIMPropertyList::CIMPropertyList(const Array<CIMName>& propertyNames) {
    set(propertyNames);
}

void CIMPropertyList::set(const Array<CIMName>& propertyNames) {
    for (Uint32 i = 0; i < propertyNames.size(); ++i) {
        if (propertyNames[i].isNull()) {
            throw UninitializedObjectException();
        }
    }
    _names = propertyNames;
    _isNull = false;
}

void CIMPropertyList::clear() {
    *this = CIMPropertyList();
}

} // namespace Pegasus
