#include "commandline/Definitions.h"

#include <algorithm>

namespace commandline {

namespace {

void collect(const CLI::App& app, const std::string& path, std::vector<DefinedCommand>& commands) {
    const auto below = app.get_subcommands([](const CLI::App*) { return true; });
    if (below.empty() && !path.empty()) {
        commands.push_back({path, &app});
    }
    for (const CLI::App* each : below) {
        collect(*each, path + (path.empty() ? "" : " ") + each->get_name(), commands);
    }
}

} // namespace

std::vector<DefinedCommand> commandsOf(const CLI::App& program) {
    std::vector<DefinedCommand> commands;
    collect(program, "", commands);
    return commands;
}

std::vector<const CLI::Option*> optionsOf(const CLI::App& command) {
    return command.get_options([&](const CLI::Option* option) {
        return option != command.get_help_ptr() && option != command.get_version_ptr();
    });
}

bool takesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

// CLI11 tells what is checked behind the type: "TEXT:{initiator,target}", "NUMBER:POSITIVE:UINT in
// [1 - 9]". The type itself may have a colon too: "ADDR:PORT".
std::string typeOf(const CLI::Option& option) {
    std::string type = option.get_type_name();
    for (const char* check : {":{", ":POSITIVE", ":UINT"}) {
        type = type.substr(0, type.find(check));
    }
    return type;
}

std::string choiceOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t begin = type.find('{');
    if (begin == std::string::npos) {
        return "";
    }
    std::string words = type.substr(begin + 1, type.find('}') - begin - 1);
    std::ranges::replace(words, ',', ' ');
    return words;
}

} // namespace commandline
