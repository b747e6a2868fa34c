#include "cli/commands/Commands.h"

namespace cli {

void addEventsCommand(CLI::App&, Context&) {}

} // namespace cli
