#include "cli/Listing.h"
#include "cli/Lookup.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct ListGrants : NoArguments {
    static void run(Context& context) {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        Listing listing({{"TARGET", "target"}, {"INITIATOR", "initiator"}});
        snapshot->forEach(Pegasus::CLASSID_TARGET, [&](array::Id target) {
            snapshot->forEachAssociated(target, Pegasus::CLASSID_INITIATOR,
                                        [&](array::Id initiator) {
                                            listing.add({snapshot->target(target)->name,
                                                         snapshot->initiator(initiator)->name});
                                        });
        });
        listing.print(context);
    }
};

// The pair that a grant consists of.
struct GrantArguments {
    std::string target;
    std::string initiator;

    void arguments(CLI::App& app) {
        app.add_option("TARGET", target, "The target's iSCSI name or key")->required();
        app.add_option("INITIATOR", initiator, "The initiator's iSCSI name or key")->required();
    }

    void apply(Context& context, void (array::Change::*what)(array::Id, array::Id)) const {
        context.array().change([&](array::Change& change) {
            (change.*what)(findTarget(change.snapshot(), target),
                           findInitiator(change.snapshot(), initiator));
        });
    }
};

struct CreateGrant : GrantArguments {
    void run(Context& context) const { apply(context, &array::Change::grant); }
};

struct DeleteGrant : GrantArguments {
    void run(Context& context) const { apply(context, &array::Change::revoke); }
};

} // namespace

void addGrantCommands(CLI::App& family, Context& context) {
    add<ListGrants>(family, context, "list", "List the grants");
    add<CreateGrant>(family, context, "create", "Let an initiator reach a target");
    add<DeleteGrant>(family, context, "delete",
                     "Take that away again, which ends the initiator's sessions with the target");
}

} // namespace cli
