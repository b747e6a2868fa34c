#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// The path of an object of ours: the array's host and the namespace "root/snia".
CIMObjectPath modulePath(const CIMName& className, Array<CIMKeyBinding> keys);

// The same for an engine object that is named by one key, the text of its id.
CIMObjectPath modulePath(const CIMName& className, const CIMName& keyName, Uint32 id);

CIMKeyBinding stringKey(const CIMName& name, String value);

// The mark of a key property: "Key", true, no flavor, not propagated.
CIMQualifier keyQualifier();

// A property that carries it.
CIMProperty keyProperty(const CIMName& name, CIMValue value);

} // namespace Pegasus
