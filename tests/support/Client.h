#pragma once

#include <vector>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <gtest/gtest.h>

#include "tests/support/Log.h"

namespace scripted {

// What clients are made of that call providers over a real array.

using Paths = std::vector<Pegasus::CIMObjectPath>;
using Instances = std::vector<Pegasus::CIMInstance>;

inline const Pegasus::CIMPropertyList ALL_PROPERTIES;

inline Pegasus::CIMObjectPath classPath(const char* className) {
    return Pegasus::CIMObjectPath("", Pegasus::CIMNamespaceName("root/snia"), className);
}

// The operation that was called last must have been completed.
inline void expectCompleted() {
    EXPECT_EQ(log().back(), "complete");
}

// What it delivered.
template<class Handler>
auto delivered(const Handler& handler) {
    expectCompleted();
    return handler.delivered;
}

inline Instances asInstances(const std::vector<Pegasus::CIMObject>& objects) {
    Instances instances;
    for (const Pegasus::CIMObject& object : objects) {
        instances.push_back(Pegasus::CIMInstance(object));
    }
    return instances;
}

} // namespace scripted
