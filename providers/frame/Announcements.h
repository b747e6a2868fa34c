#pragma once

#include <string>

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// What providers say besides their answers: lines on standard output, events, refusals.

// Writes a line and its end to std::cout in one piece, then flushes. Takes no lock: the stream
// keeps the pieces of several threads apart, as the C library does for standard output.
void trace(const std::string& line);

// A text as UTF-8, to be part of a line.
std::string utf8(const String& text);

// Throws CIMNotSupportedException with this text: how a provider refuses an operation.
[[noreturn]] void refuse(const std::string& text);

// The events of the two services. A service is named as its source is, without the extension; line
// is where in that source the event says that it was published.

// Publishes that a client invokes a method of the service.
void publishInvoked(const std::string& service, int line, const CIMObjectPath& objectReference,
                    const CIMName& methodName);

// Publishes that a client calls an operation that the service does not implement, and refuses it
// with the text "service::operation".
[[noreturn]] void refuseWithEvent(const std::string& service, const std::string& operation,
                                  int line, const CIMObjectPath& instanceReference);

} // namespace Pegasus
