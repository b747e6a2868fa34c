#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// The CIM objects that providers build by themselves, without the builders of engine/builders.

// Names that several providers use and engine/NameConstants.h lacks.
inline const CIMName CLASS_StorageHardwareID("CIM_StorageHardwareID");
inline const CIMName CLASS_SCSIProtocolController("CIM_SCSIProtocolController");
inline const CIMName PROPERTY_InstanceID("InstanceID");

// The path of an object of ours: the array's host and the namespace "root/snia".
CIMObjectPath modulePath(const CIMName& className, Array<CIMKeyBinding> keys);

// The same for an engine object that is named by one key, the text of its id.
CIMObjectPath modulePath(const CIMName& className, const CIMName& keyName, Uint32 id);

// The one form in which every provider names a host.
CIMObjectPath storageHardwareIDPath(Uint32 initiatorId);

CIMKeyBinding stringKey(const CIMName& name, String value);

// A property that carries the mark of a key: the qualifier "Key", true, no flavor, not propagated.
CIMProperty keyProperty(const CIMName& name, CIMValue value);

// One end of an association.
struct AssociationEnd {
    CIMName role;
    CIMObjectPath path;
    CIMName referenceClass;
};

// The path of the association: the two ends as reference keys, under their roles.
CIMObjectPath associationPath(const CIMName& className, const AssociationEnd& first,
                              const AssociationEnd& second);

// The association with its two references, in this order, and its path. The references carry the
// mark of a key if asked for.
CIMInstance associationInstance(const CIMName& className, const AssociationEnd& first,
                                const AssociationEnd& second, Boolean keyQualifiers);

} // namespace Pegasus
