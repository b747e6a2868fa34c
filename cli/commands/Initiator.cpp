#include "cli/Listing.h"
#include "cli/Lookup.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct ListInitiators : NoArguments {
    static void run(Context& context) {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        initiatorListing(*snapshot, snapshot->ids(Pegasus::CLASSID_INITIATOR)).print(context);
    }
};

struct CreateInitiator {
    array::Initiator initiator;

    void arguments(CLI::App& app) {
        app.add_option("NAME", initiator.name, "Its iSCSI name")->required();
    }

    void run(Context& context) const {
        array::Id id = 0;
        context.array().change([&](array::Change& change) { id = change.create(initiator); });
        printCreated(context, id);
    }
};

struct DeleteInitiator {
    std::string initiator;

    void arguments(CLI::App& app) {
        app.add_option("INITIATOR", initiator, "Its iSCSI name or key")->required();
    }

    void run(Context& context) const {
        context.array().change([&](array::Change& change) {
            change.remove(findInitiator(change.snapshot(), initiator));
        });
    }
};

} // namespace

void addInitiatorCommands(CLI::App& family, Context& context) {
    add<ListInitiators>(family, context, "list", "List the initiators");
    add<CreateInitiator>(family, context, "create", "Register an initiator and write its key");
    add<DeleteInitiator>(family, context, "delete",
                         "Remove an initiator, with its grants and sessions");
}

} // namespace cli
