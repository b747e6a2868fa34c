#pragma once

#include <string>
#include <vector>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

#include "engine/ManagedObject.h"

namespace scripted {

// Values as texts that tests compare and people read.

std::string text(const Pegasus::String& value);
std::string text(const Pegasus::CIMName& name);
std::string text(const Pegasus::CIMObjectPath& path);
std::string text(bool flag);                                  // "true", "false"
std::string text(const Pegasus::CIMPropertyList& properties); // "all" or "[Name, DeviceID]"
std::string text(const Pegasus::CIMValue& value);             // "uint16 5", "string[] a b "

std::string idText(Pegasus::Uint32 id);  // "0x0D000001"
std::string keyText(Pegasus::Uint32 id); // "Ovrin:0D000001"
std::string quoted(const Pegasus::String& value);

// "DRAVInitiator{0x0D000001, name="iqn...", secret=""}", with all fields in record order; without
// the id in a record that has none.
std::string recordText(const Pegasus::ManagedObject& record);

// A line for each property: "InstanceID: string Ovrin:0D000001 [Key=TRUE]". Marks follow in this
// order, where there are any: "of <reference class>", "from <class origin>", "propagated", and each
// qualifier in brackets with its flavor and "propagated".
std::vector<std::string> properties(const Pegasus::CIMInstance& instance);

} // namespace scripted
