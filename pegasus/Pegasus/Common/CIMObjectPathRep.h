// The body of an object path and its text. Internal.

#pragma once

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Numeral.h>

namespace Pegasus {

class CIMObjectPathRep final : public SharedRep {
public:
    String host;
    CIMNamespaceName nameSpace;
    CIMName className;
    Array<CIMKeyBinding> keys; // sorted by name; references in their canonical form
};

// By name, case ignored; equal names keep their order.
void sortKeys(Array<CIMKeyBinding>& keys);

// The number that a NUMERIC key stands for, if it is a whole one; a '+' may lead.
std::optional<WholeNumber> keyNumber(const String& text);

bool equalPaths(const CIMObjectPathRep& x, const CIMObjectPathRep& y);
Uint32 hashOf(const CIMObjectPathRep& path);
String textOf(const CIMObjectPathRep& path);

// Reads `text` into `path`. False: it is no path, `reason` says why, and `path` is half done.
bool parseObjectPath(const String& text, CIMObjectPathRep& path, String& reason);

[[noreturn]] void throwMalformedObjectName(const String& text, const String& reason);

} // namespace Pegasus
