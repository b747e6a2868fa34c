#include <algorithm>
#include <numeric>

#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/PropertyListAccess.h>

namespace Pegasus {

static constexpr Uint32 quickToSearch = 8;

CIMPropertyList::CIMPropertyList(const Array<CIMName>& propertyNames) {
    set(propertyNames);
}

void CIMPropertyList::set(const Array<CIMName>& propertyNames) {
    for (Uint32 i = 0; i < propertyNames.size(); ++i) {
        if (propertyNames[i].isNull()) {
            throw UninitializedObjectException();
        }
    }
    std::shared_ptr<std::vector<Uint32>> sorted;
    if (propertyNames.size() > quickToSearch) {
        sorted = std::make_shared<std::vector<Uint32>>(propertyNames.size());
        std::iota(sorted->begin(), sorted->end(), Uint32(0));
        std::stable_sort(sorted->begin(), sorted->end(),
                         PropertyListAccess::Before{propertyNames.getData()});
    }
    _names = propertyNames;
    _sorted = std::move(sorted);
    _isNull = false;
}

void CIMPropertyList::clear() {
    *this = CIMPropertyList();
}

} // namespace Pegasus
