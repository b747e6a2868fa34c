#include "providers/frame/Trace.h"

#include <iostream>
#include <mutex>

namespace Pegasus {

void trace(const std::string& line) {
    static std::mutex writing;
    const std::lock_guard lock(writing);
    std::cout << line + '\n' << std::flush;
}

std::string utf8(const String& text) {
    return static_cast<const char*>(text.getCString());
}

} // namespace Pegasus
