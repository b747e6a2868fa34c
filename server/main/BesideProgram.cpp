#include "server/main/BesideProgram.h"

#include <system_error>

namespace fs = std::filesystem;

namespace smisd {

fs::path besideProgram(std::initializer_list<fs::path> relative) {
    std::error_code ignored; // without /proc the paths start at the working directory
    const fs::path directory = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    for (const fs::path& path : relative) {
        if (fs::exists(directory / path, ignored)) {
            return (directory / path).lexically_normal();
        }
    }
    return (directory / *relative.begin()).lexically_normal();
}

} // namespace smisd
