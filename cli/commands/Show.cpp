#include "cli/Map.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct Show : NoArguments {
    static void run(Context& context) {
        const Json map = mapOf(*context.array().snapshot());
        if (context.json)
            printJson(context.out, map);
        else
            drawMap(context.out, map);
    }
};

} // namespace

void addShowCommand(CLI::App& app, Context& context) {
    add<Show>(app, context, "show", "Draw hosts, their targets and volumes, and sessions");
}

} // namespace cli
