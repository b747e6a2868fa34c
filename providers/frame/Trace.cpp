#include "providers/frame/Trace.h"

#include <iostream>
#include <syncstream>

namespace Pegasus {

void trace(const std::string& line) {
    std::osyncstream(std::cout) << line << std::endl;
}

std::string utf8(const String& text) {
    return static_cast<const char*>(text.getCString());
}

} // namespace Pegasus
