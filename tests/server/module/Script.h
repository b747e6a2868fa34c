// What the providers of the test module do: the value of the key "Id" says it.
//
//   cim:CODE:TEXT      throw CIMException
//   exception:TEXT     throw Exception
//   std:TEXT           throw std::runtime_error
//   int                throw 5
//
// Anything else is left to the operation.
#pragma once

#include <string>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

namespace scripted {

// The value of the path's key "Id", or "".
std::string idOf(const Pegasus::CIMObjectPath& path);

// Whether the id begins with the verb and a colon; then `rest` is what follows.
bool says(const std::string& id, const std::string& verb, std::string& rest);

// Throws what the id asks for.
void throwAsAsked(const std::string& id);

// How "Seen" describes the arguments of a call.
std::string text(const Pegasus::String& value);
std::string text(const Pegasus::CIMPropertyList& list);
std::string flags(bool includeQualifiers, bool includeClassOrigin);

} // namespace scripted
