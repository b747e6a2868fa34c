// CIM names as keys of ordered containers: their case does not count.
#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/String.h>

namespace smisd {

// For CIMName and CIMNamespaceName.
struct NameOrder {
    template<class Name>
    bool operator()(const Name& left, const Name& right) const {
        return Pegasus::String::compareNoCase(left.getString(), right.getString()) < 0;
    }
};

} // namespace smisd
