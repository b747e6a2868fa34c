#include <map>
#include <ostream>

#include "cli/Arrayctl.h"
#include "cli/commands/Commands.h"
#include "commandline/Definitions.h"
#include "commandline/ManualPage.h"

namespace cli {

namespace {

using commandline::choiceOf;
using commandline::commandsOf;
using commandline::DefinedCommand;
using commandline::optionsOf;
using commandline::takesValue;
using commandline::typeOf;

// A call of compgen that proposes values of an option or argument; empty: there is nothing to
// propose.
std::string proposalsFor(const CLI::Option& option) {
    if (typeOf(option) == "DIR") {
        return "-d";
    }
    if (option.get_name() == "FILE") {
        return "-f";
    }
    const std::string choice = choiceOf(option);
    return choice.empty() ? "" : "-W '" + choice + "'";
}

std::string namesOf(const CLI::App& app) {
    std::string names;
    for (const CLI::Option* option : optionsOf(app)) {
        for (const std::string& name : option->get_lnames()) {
            names += " --" + name;
        }
    }
    return names;
}

// What may follow each command and each family of commands, for compgen.
std::map<std::string, std::string> followersIn(const CLI::App& program) {
    std::map<std::string, std::string> words; // by path, before which stands a blank
    std::map<std::string, std::string> others;
    const std::string common = namesOf(program);
    for (const DefinedCommand& command : commandsOf(program)) {
        std::string path;
        std::string rest = " " + command.path;
        while (!rest.empty()) {
            const std::size_t end = rest.find(' ', 1);
            const std::string word = rest.substr(0, end);
            if (words[path].find(word + " ") == std::string::npos) {
                words[path] += word + " ";
            }
            path += word;
            rest = end == std::string::npos ? "" : rest.substr(end);
        }
        words[path] = namesOf(*command.app) + common;
        for (const CLI::Option* option : optionsOf(*command.app)) {
            if (!option->get_positional()) {
                continue;
            }
            if (choiceOf(*option).empty()) {
                others[path] += proposalsFor(*option) + " ";
            } else { // compgen takes one list of words
                words[path] = choiceOf(*option) + words[path];
            }
        }
    }
    words[""] += common;
    for (auto& [path, proposals] : words) {
        proposals.insert(0, others[path] + "-W '").append("'");
    }
    return words;
}

// What may follow each option that takes a value.
std::map<std::string, std::string> valuesIn(const CLI::App& program) {
    std::map<std::string, std::string> values;
    const auto collect = [&](const CLI::App& app) {
        for (const CLI::Option* option : optionsOf(app)) {
            if (takesValue(*option)) {
                for (const std::string& name : option->get_lnames()) {
                    values["--" + name] = proposalsFor(*option);
                }
            }
        }
    };
    collect(program);
    for (const DefinedCommand& command : commandsOf(program)) {
        collect(*command.app);
    }
    return values;
}

// The script finds the command that is being typed, and whether it is at an option's value.
void writeScript(std::ostream& out, const CLI::App& program) {
    const auto followers = followersIn(program);
    out << R"(# Completes the command lines of arrayctl in bash. Made by "arrayctl completion".
_arrayctl() {
    local word=${COMP_WORDS[COMP_CWORD]} path= each
    for each in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case "$path $each" in
)";
    for (const auto& [path, proposals] : followers) {
        if (!path.empty()) {
            out << "        '" << path << "') path+=\" $each\" ;;\n";
        }
    }
    out << R"(        esac
    done
    COMPREPLY=()
    case ${COMP_WORDS[COMP_CWORD-1]} in
)";
    for (const auto& [name, proposals] : valuesIn(program)) {
        out << "    " << name << ") ";
        if (!proposals.empty()) {
            out << "COMPREPLY=($(compgen " << proposals << R"( -- "$word")); )";
        }
        out << "return ;;\n";
    }
    out << R"(    esac
    case $path in
)";
    for (const auto& [path, proposals] : followers) {
        out << "    '" << path << "') COMPREPLY=($(compgen " << proposals << " -- \"$word\")) ;;\n";
    }
    out << R"(    esac
}
complete -o filenames -F _arrayctl arrayctl
)";
}

struct Completion {
    const CLI::App* program = nullptr;

    void arguments(const CLI::App& app) { program = app.get_parent(); }
    void run(Context& context) const { writeScript(context.out, *program); }
};

} // namespace

void addCompletionCommand(CLI::App& app, Context& context) {
    add<Completion>(app, context, "completion",
                    "Write a script that completes command lines in bash");
}

namespace {

struct Man {
    const CLI::App* program = nullptr;

    void arguments(const CLI::App& app) { program = app.get_parent(); }
    void run(Context& context) const {
        commandline::writeManualPage(context.out, *program,
                                     {"administers a storage array",
                                      "It may be used while others serve the same array: each "
                                      "change is seen by them at once.",
                                      exitStatuses});
    }
};

} // namespace

void addManCommand(CLI::App& app, Context& context) {
    add<Man>(app, context, "man", "Write the manual page");
}

} // namespace cli
