#pragma once

#include "cli/Command.h"

// The commands by family, each in the source of its name.

namespace cli {

void addImportCommand(CLI::App& app, Context& context);
void addExportCommand(CLI::App& app, Context& context);
void addShowCommand(CLI::App& app, Context& context);
void addEventsCommand(CLI::App& app, Context& context);
void addCheckCommand(CLI::App& app, Context& context);
void addBackupCommand(CLI::App& app, Context& context);
void addCompletionCommand(CLI::App& app, Context& context);
void addManCommand(CLI::App& app, Context& context);
void addVolumeCommands(CLI::App& family, Context& context);
void addTargetCommands(CLI::App& family, Context& context);
void addInitiatorCommands(CLI::App& family, Context& context);
void addEndpointCommands(CLI::App& family, Context& context);
void addUnitCommands(CLI::App& family, Context& context);
void addGrantCommands(CLI::App& family, Context& context);
void addSessionCommands(CLI::App& family, Context& context);
void addSecretCommands(CLI::App& family, Context& context);

} // namespace cli
