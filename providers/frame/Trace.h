#pragma once

#include <string>

#include <Pegasus/Common/String.h>

namespace Pegasus {

// Writes a line to standard output: the text, an end of line and a flush. The line leaves whole, so
// lines that are written at the same time don't mix.
void trace(const std::string& line);

// A text as UTF-8, to be part of a line.
std::string utf8(const String& text);

} // namespace Pegasus
