// Operations for tests.
#pragma once

#include "server/operation/Operation.h"

namespace smisd::test {

inline const Pegasus::CIMNamespaceName nameSpace("root/snia");

// An operation on an object or a class of this namespace.
template<class One>
Operation of(const Pegasus::CIMObjectPath& object) {
    One one;
    one.nameSpace = nameSpace;
    if constexpr (requires { one.instanceName; }) {
        one.instanceName = object;
    } else {
        one.objectName = object;
    }
    return one;
}
template<class One>
Operation of(const Pegasus::CIMName& className) {
    One one;
    one.nameSpace = nameSpace;
    one.className = className;
    return one;
}

} // namespace smisd::test
