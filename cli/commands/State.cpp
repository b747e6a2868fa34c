#include <ostream>

#include "array/model/ErrorCode.h"
#include "cli/Listing.h"
#include "cli/Quantities.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct Check : NoArguments {
    static void run(Context& context) {
        const std::vector<std::string> findings = context.array().check();
        if (context.json) {
            printJson(context.out, findings);
        } else {
            for (const std::string& finding : findings) {
                context.out << finding << '\n';
            }
        }
        if (!findings.empty()) {
            array::fail(array::ErrorCode::StateDamaged,
                        "The array in " + context.array().directory().string() +
                            " is damaged: " + counted(findings.size(), "finding") + ".");
        }
    }
};

struct Backup {
    std::string file;

    void arguments(CLI::App& app) {
        app.add_option("FILE", file, "The copy, which must not be there yet")->required();
    }

    void run(Context& context) const { context.array().backup(file); }
};

} // namespace

void addCheckCommand(CLI::App& app, Context& context) {
    add<Check>(app, context, "check", "Look for damage in the state directory");
}

void addBackupCommand(CLI::App& app, Context& context) {
    add<Backup>(app, context, "backup", "Copy the array's database while it is in use");
}

} // namespace cli
