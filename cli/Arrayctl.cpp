#include "cli/Arrayctl.h"

#include <ostream>

#include <CLI/CLI.hpp>
#include <Pegasus/Common/Exception.h>

#include "array/description/Reader.h"
#include "array/model/ErrorCode.h"
#include "array/model/Text.h"
#include "cli/commands/Commands.h"
#include "commandline/Version.h"

namespace cli {

namespace {

using AddCommands = void (*)(CLI::App& parent, Context& context);

struct Family {
    const char* name;
    const char* description;
    AddCommands addCommands;
};

// All commands, in the order of the help.
constexpr AddCommands commands[] = {
    addImportCommand, addExportCommand, addShowCommand,       addEventsCommand,
    addCheckCommand,  addBackupCommand, addCompletionCommand, addManCommand,
};

constexpr Family families[] = {
    {"volume", "Storage volumes", addVolumeCommands},
    {"target", "iSCSI targets", addTargetCommands},
    {"initiator", "Hosts, by their iSCSI initiator names", addInitiatorCommands},
    {"endpoint", "Network portals", addEndpointCommands},
    {"unit", "Logical units: volumes under targets", addUnitCommands},
    {"grant", "Which initiator may reach which target", addGrantCommands},
    {"session", "Live iSCSI sessions", addSessionCommands},
    {"secret", "CHAP secrets of initiators and targets", addSecretCommands},
};

void define(CLI::App& app, Context& context) {
    app.require_subcommand(1);
    app.set_version_flag("--version", std::string("arrayctl ") + commandline::version,
                         "Write the version");
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string("arrayctl: ") + error.what() + "\nTry \"arrayctl --help\".\n";
    });
    app.add_option("--state", context.state,
                   "State directory; else $DRAV_STATE_DIR, else /var/lib/smisd")
        ->type_name("DIR");
    app.add_flag("--json", context.json, "Write JSON, for programs");
    for (const AddCommands addCommand : commands) {
        addCommand(app, context);
    }
    for (const Family& family : families) {
        CLI::App* inFamily = app.add_subcommand(family.name, family.description);
        inFamily->require_subcommand(1)->fallthrough();
        family.addCommands(*inFamily, context);
    }
}

int failed(Context& context, Exit status, const std::string& message) {
    context.out.flush();
    context.err << "arrayctl: " << message << std::endl;
    return status;
}

int run(Context& context) {
    try {
        context.command();
    } catch (const Pegasus::DRAVOperationFailedException& error) {
        return failed(context, array::isOfTheState(error) ? BadState : Refused,
                      array::toUtf8(error.getMessage()));
    } catch (const Pegasus::Exception& error) {
        return failed(context, Refused, array::toUtf8(error.getMessage()));
    } catch (const array::description::DescriptionError& error) {
        return failed(context, BadDescription, error.what());
    } catch (const std::exception& error) {
        return failed(context, Refused, error.what());
    }
    if (!context.out.flush()) {
        return failed(context, Refused, "The output cannot be written.");
    }
    return Done;
}

} // namespace

int arrayctl(int argc, const char* const* argv, Context& context) {
    CLI::App app("Administers the array that is kept in a state directory", "arrayctl");
    define(app, context);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, context.out, context.err) == 0 ? Done : WrongUsage;
    }
    return run(context);
}

} // namespace cli
