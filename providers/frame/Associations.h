#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Config.h>

namespace Pegasus {

// One end of an association that a provider builds by itself.
struct AssociationEnd {
    CIMName role;
    CIMObjectPath path;
    CIMName referenceClass;
};

// The path of the association: the two ends as reference keys, under their roles.
CIMObjectPath associationPath(const CIMName& className, const AssociationEnd& first,
                              const AssociationEnd& second);

// The association with its two references, in this order, and its path. The references carry the
// "Key" qualifier if asked for.
CIMInstance associationInstance(const CIMName& className, const AssociationEnd& first,
                                const AssociationEnd& second, Boolean keyQualifiers);

} // namespace Pegasus
