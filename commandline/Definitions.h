#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace commandline {

// What the definitions of a command line say, for the texts that are made from them: the completion
// script and the manual page.

struct DefinedCommand {
    std::string path; // such as "volume create"
    const CLI::App* app;
};

// All commands, in the order of the help; a family of commands is none itself.
std::vector<DefinedCommand> commandsOf(const CLI::App& program);

// The options and arguments of a command, without --help and --version.
std::vector<const CLI::Option*> optionsOf(const CLI::App& command);

// True if a value goes with the option; false for flags.
bool takesValue(const CLI::Option& option);

// What kind of value it is, such as "DIR".
std::string typeOf(const CLI::Option& option);

// The only values that it may have, with a blank between them; empty: any.
std::string choiceOf(const CLI::Option& option);

} // namespace commandline
