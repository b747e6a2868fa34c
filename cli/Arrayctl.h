#pragma once

#include "cli/Context.h"
#include "commandline/ManualPage.h"

namespace cli {

enum Exit { Done = 0, Refused = 1, WrongUsage = 2, BadState = 3, BadDescription = 4 };

constexpr commandline::ExitStatus exitStatuses[] = {
    {Done, "Done"},
    {Refused,
     "Refused, with one line on standard error that names the culprit; nothing was changed"},
    {WrongUsage, "Wrong usage"},
    {BadState, "The state directory, or a file of it, is missing, damaged, full, not private or "
               "cannot be used for another reason; nothing was changed"},
    {BadDescription, "The description has a mistake; nothing was imported"},
};

// Does what a command line asks for; argv[0] is the program's name. Errors go to context.err as one
// line that begins with "arrayctl: ".
int arrayctl(int argc, const char* const* argv, Context& context);

} // namespace cli
