#include "commandline/ManualPage.h"

#include <algorithm>
#include <cctype>
#include <ostream>
#include <string>

#include "commandline/Definitions.h"
#include "commandline/Version.h"

namespace commandline {

namespace {

// A text escaped so that troff prints it as it is.
std::string troff(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (out.empty() && (c == '.' || c == '\'')) {
            out += "\\&";
        }
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else {
            out += c;
        }
    }
    return out;
}

std::string usageOf(const CLI::Option& option) {
    if (option.get_positional()) {
        return option.get_name();
    }
    std::string usage = option.get_name(false, true);
    if (takesValue(option)) {
        std::string choice = choiceOf(option);
        std::ranges::replace(choice, ' ', '|');
        usage += " " + (choice.empty() ? typeOf(option) : choice);
    }
    return usage;
}

void writeEntry(std::ostream& out, const std::string& term, const std::string& text) {
    out << ".TP\n.B \"" << troff(term) << "\"\n" << troff(text) << ".\n";
}

std::string meaningOf(const CLI::Option& option) {
    const std::string byDefault = option.get_default_str();
    return option.get_description() + (byDefault.empty() ? "" : " (default: " + byDefault + ")");
}

// Those of a group of their own stand under its name.
void writeOptions(std::ostream& out, const CLI::App& app) {
    std::string group;
    for (const CLI::Option* option : optionsOf(app)) {
        if (!group.empty() && option->get_group() != group) {
            out << ".SS \"" << troff(option->get_group()) << "\"\n";
        }
        group = option->get_group();
        writeEntry(out, usageOf(*option), meaningOf(*option));
    }
}

void writeCommand(std::ostream& out, const DefinedCommand& command) {
    std::string line = command.path;
    for (const CLI::Option* option : optionsOf(*command.app)) {
        line += option->get_required() ? " " + usageOf(*option) : " [" + usageOf(*option) + "]";
    }
    out << ".SS \"" << troff(line) << "\"\n" << troff(command.app->get_description()) << ".\n";
    writeOptions(out, *command.app);
}

void writeCommands(std::ostream& out, const CLI::App& program) {
    out << ".SH COMMANDS\n";
    for (const DefinedCommand& command : commandsOf(program)) {
        writeCommand(out, command);
    }
}

std::string upperCase(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

} // namespace

void writeManualPage(std::ostream& out, const CLI::App& program, const ManualPage& page) {
    const std::string name = program.get_name();
    out << ".TH " << upperCase(name) << " 8 \"\" \"" << name << ' ' << version << "\"\n.SH NAME\n"
        << name << " \\- " << page.purpose << "\n.SH SYNOPSIS\n.B " << name
        << "\n[\\fIoptions\\fR] " << (program.get_require_subcommand_min() > 0 ? "" : "[")
        << "\\fIcommand\\fR" << (program.get_require_subcommand_min() > 0 ? "" : "]")
        << "\n.SH DESCRIPTION\n"
        << troff(program.get_description()) << ".\n"
        << troff(page.description) << "\n.SH OPTIONS\n";
    writeEntry(out, "--help", "Write help for the program, or for the command before it");
    writeEntry(out, "--version", "Write the version of the program");
    writeOptions(out, program);
    writeCommands(out, program);
    out << ".SH EXIT STATUS\n";
    for (const ExitStatus& status : page.exitStatuses) {
        writeEntry(out, std::to_string(status.value), status.meaning);
    }
}

} // namespace commandline
