// Object paths as text: what is accepted means the same when it is written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CIMObjectPath path;
    try {
        path =
            CIMObjectPath(String(reinterpret_cast<const char*>(data), static_cast<Uint32>(size)));
    } catch (const Exception&) {
        return 0;
    }
    if (!CIMObjectPath(path.toString()).identical(path)) {
        std::abort();
    }
    return 0;
}
