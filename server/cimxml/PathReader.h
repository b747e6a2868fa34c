// Object paths in a request (DSP0201, "Naming and Location Elements").
//
// Every function reads one element and all that is in it, and throws ElementError when that is no
// such path, or what CIMObjectPath throws for a part that it refuses.
#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include "server/cimxml/XmlDocument.h"

namespace smisd {

// LOCALNAMESPACEPATH
Pegasus::CIMNamespaceName readLocalNamespacePath(Element element);

// CLASSNAME
Pegasus::CIMName readClassName(const Element& element);

// INSTANCENAME: keys as sent; a lone KEYVALUE or VALUE.REFERENCE is a key with a null name
Pegasus::CIMObjectPath readInstanceName(Element element);

// LOCALINSTANCEPATH, LOCALCLASSPATH: with a namespace
Pegasus::CIMObjectPath readLocalInstancePath(Element element);
Pegasus::CIMObjectPath readLocalClassPath(Element element);

// VALUE.REFERENCE: with host and namespace only when they were sent
Pegasus::CIMObjectPath readValueReference(Element element);

} // namespace smisd
