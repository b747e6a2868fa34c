#pragma once

#include <memory>

#include <CLI/CLI.hpp>

#include "cli/Context.h"

namespace cli {

// Adds a command to the command line and returns it. A Command holds its arguments and has
//   void arguments(CLI::App&)   declares them
//   void run(Context&)          does it
template<typename Command>
CLI::App* add(CLI::App& parent, Context& context, const char* name, const char* description) {
    const auto command = std::make_shared<Command>();
    CLI::App* app = parent.add_subcommand(name, description)->fallthrough();
    command->arguments(*app);
    app->callback(
        [command, &context] { context.command = [command, &context] { command->run(context); }; });
    return app;
}

// A command without arguments of its own.
struct NoArguments {
    static void arguments(CLI::App&) {}
};

} // namespace cli
