#ifndef CLI_ARRAYCTL_H
#define CLI_ARRAYCTL_H

#include "cli/Context.h"

namespace cli {

// Exit statuses.
enum Exit { Done = 0, Refused = 1, WrongUsage = 2 };

// Does what a command line asks for; argv[0] is the program's name. Errors go to context.err as one
// line that begins with "arrayctl: ".
int arrayctl(int argc, const char* const* argv, Context& context);

} // namespace cli

#endif
