// The reader of MOF, into an empty repository.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

#include "server/schema/MofReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("fuzz.mof", 0);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size)) {
        std::abort();
    }
    smisd::Repository repository;
    try {
        smisd::readMof("/proc/self/fd/" + std::to_string(file),
                       Pegasus::CIMNamespaceName("root/fuzz"), repository);
    } catch (const smisd::MofError&) {
    }
    return 0;
}
