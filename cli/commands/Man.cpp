#include <ostream>

#include "cli/Arrayctl.h"
#include "cli/Definitions.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

// Text as troff takes it for itself and for no request.
std::string troff(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (out.empty() && (c == '.' || c == '\''))
            out += "\\&";
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
    }
    return out;
}

std::string usageOf(const CLI::Option& option) {
    if (option.get_positional())
        return option.get_name();
    std::string usage = option.get_name(false, true);
    if (takesValue(option))
        usage += " " + (choiceOf(option).empty() ? typeOf(option) : choiceOf(option));
    return usage;
}

void writeEntry(std::ostream& out, const std::string& term, const std::string& text) {
    out << ".TP\n.B \"" << troff(term) << "\"\n" << troff(text) << ".\n";
}

void writeOptions(std::ostream& out, const CLI::App& app) {
    for (const CLI::Option* option : optionsOf(app))
        writeEntry(out, usageOf(*option), option->get_description());
}

void writeCommand(std::ostream& out, const DefinedCommand& command) {
    std::string line = command.path;
    for (const CLI::Option* option : optionsOf(*command.app))
        line += option->get_required() ? " " + usageOf(*option) : " [" + usageOf(*option) + "]";
    out << ".SS \"" << troff(line) << "\"\n" << troff(command.app->get_description()) << ".\n";
    writeOptions(out, *command.app);
}

void writePage(std::ostream& out, const CLI::App& program) {
    out << ".TH ARRAYCTL 8\n.SH NAME\narrayctl \\- administers a storage array\n"
           ".SH SYNOPSIS\n.B arrayctl\n[\\fIoptions\\fR] \\fIcommand\\fR\n"
           ".SH DESCRIPTION\n"
        << troff(program.get_description())
        << ".\nIt may be used while others serve the same array: each change is seen by them at "
           "once.\n.SH OPTIONS\n";
    writeOptions(out, program);
    writeEntry(out, "--help", "Write help for the program, or for the command before it");
    out << ".SH COMMANDS\n";
    for (const DefinedCommand& command : commandsOf(program))
        writeCommand(out, command);
    out << ".SH EXIT STATUS\n";
    for (const ExitStatus& status : exitStatuses)
        writeEntry(out, std::to_string(status.value), status.meaning);
}

struct Man {
    const CLI::App* program = nullptr;

    void arguments(const CLI::App& app) { program = app.get_parent(); }
    void run(Context& context) const { writePage(context.out, *program); }
};

} // namespace

void addManCommand(CLI::App& app, Context& context) {
    add<Man>(app, context, "man", "Write the manual page");
}

} // namespace cli
