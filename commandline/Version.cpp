#include "commandline/Version.h"

namespace commandline {

const char* const version = VERSION;

} // namespace commandline
