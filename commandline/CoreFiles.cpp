#include "commandline/CoreFiles.h"

#include <sys/prctl.h>
#include <sys/resource.h>

namespace commandline {

// The first is for the system's own collectors too, which ignore the limit.
void leaveNoCoreFiles() {
    prctl(PR_SET_DUMPABLE, 0);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
}

} // namespace commandline
