// A dispatcher over the test schema and the scripted module, whose host name is "test.host".
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "server/dispatch/ServerDispatcher.h"
#include "tests/server/dispatch/RecordingSink.h"

namespace smisd {

class DispatchTest : public testing::Test {
protected:
    using Lines = std::vector<std::string>;

    // The results as RecordingSink writes them; of an operation that fails, "error CODE TEXT"
    // alone.
    Lines run(const Operation& operation);

    // The same with a sink to look into.
    Lines run(const Operation& operation, RecordingSink& sink);

    static const Repository& repository();

    ServerDispatcher dispatcher{repository(), SCRIPTED_MODULE, Pegasus::String("test.host")};
};

const Pegasus::CIMNamespaceName testNamespace("root/test");
const Pegasus::CIMNamespaceName unknownNamespace("root/unknown");

// A path as an operation has it: class and the key "Id".
Pegasus::CIMObjectPath path(const char* className, const char* id);

// A path without keys.
Pegasus::CIMObjectPath path(const char* className);

Pegasus::CIMPropertyList list(std::initializer_list<const char*> names);

} // namespace smisd
