// CIM-XML (DSP0201) of values, paths, instances and classes, appended to a text.
//
// Nothing here throws but std::bad_alloc, UninitializedObjectException for an uninitialized handle,
// and MalformedObjectNameException for a REFERENCE key whose text is no path. What was appended
// before an exception stays.
//
// Threads: the functions keep no state.

#pragma once

#include <string_view>

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/CIMValue.h>

#include "pegasus/host/Text.h"

namespace Pegasus::Xml {

// What of an instance or class goes out.
struct Parts {
    bool qualifiers = true;
    bool classOrigin = true;
    // Null: all properties, as they stand. Else those named, in the order of the list; a name that
    // the instance lacks is passed over.
    CIMPropertyList properties = {};
};

// Text with the characters replaced that XML or its white-space rules would change. Fit for
// content and for attributes in double quotes.
PEGASUS_EXPORT void appendEscaped(Text& out, const String& text);
PEGASUS_EXPORT void appendEscaped(Text& out, std::string_view utf8);

// VALUE, VALUE.ARRAY, VALUE.REFERENCE or VALUE.REFARRAY; nothing for a null.
PEGASUS_EXPORT void appendValue(Text& out, const CIMValue& value);

PEGASUS_EXPORT void appendQualifier(Text& out, const CIMConstQualifier& qualifier);
// PROPERTY, PROPERTY.ARRAY or PROPERTY.REFERENCE
PEGASUS_EXPORT void appendProperty(Text& out, const CIMConstProperty& property,
                                   const Parts& parts = {});
// INSTANCE: without its path
PEGASUS_EXPORT void appendInstance(Text& out, const CIMInstance& instance, const Parts& parts = {});
PEGASUS_EXPORT void appendClass(Text& out, const CIMConstClass& cimClass, const Parts& parts = {});
// INSTANCE or CLASS
PEGASUS_EXPORT void appendObject(Text& out, const CIMConstObject& object, const Parts& parts = {});

// INSTANCENAME: class and keys
PEGASUS_EXPORT void appendInstanceName(Text& out, const CIMObjectPath& path);
// LOCALNAMESPACEPATH
PEGASUS_EXPORT void appendLocalNamespacePath(Text& out, const CIMNamespaceName& nameSpace);
// NAMESPACEPATH: HOST and LOCALNAMESPACEPATH
PEGASUS_EXPORT void appendNamespacePath(Text& out, const String& host,
                                        const CIMNamespaceName& nameSpace);
PEGASUS_EXPORT void appendLocalInstancePath(Text& out, const CIMObjectPath& path);
PEGASUS_EXPORT void appendInstancePath(Text& out, const CIMObjectPath& path);
PEGASUS_EXPORT void appendClassName(Text& out, const CIMName& className);
PEGASUS_EXPORT void appendLocalClassPath(Text& out, const CIMObjectPath& path);
PEGASUS_EXPORT void appendClassPath(Text& out, const CIMObjectPath& path);
// VALUE.REFERENCE around INSTANCEPATH, LOCALINSTANCEPATH or INSTANCENAME: with what the path has of
// host and namespace.
PEGASUS_EXPORT void appendValueReference(Text& out, const CIMObjectPath& path);

PEGASUS_EXPORT void appendParamValue(Text& out, const CIMParamValue& param);
// RETURNVALUE
PEGASUS_EXPORT void appendReturnValue(Text& out, const CIMValue& value);

} // namespace Pegasus::Xml
