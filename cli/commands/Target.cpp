#include "array/model/Ids.h"
#include "cli/Listing.h"
#include "cli/Lookup.h"
#include "cli/TargetReport.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct ListTargets : NoArguments {
    static void run(Context& context) {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        Listing listing({{"KEY", "key"},
                         {"NAME", "name"},
                         {"SECRET", "secretSet", setText},
                         {"UNITS", "units"},
                         {"GRANTS", "grants"},
                         {"SESSIONS", "sessions"}});
        snapshot->forEach(Pegasus::CLASSID_TARGET, [&](array::Id id) {
            const array::Target& target = *snapshot->target(id);
            listing.add({array::keyText(id), target.name, !target.secret.empty(),
                         snapshot->countAssociated(id, Pegasus::CLASSID_LOGICAL_UNIT),
                         snapshot->countAssociated(id, Pegasus::CLASSID_INITIATOR),
                         snapshot->countAssociated(id, Pegasus::CLASSID_ISCSI_SESSION)});
        });
        listing.print(context);
    }
};

struct CreateTarget {
    array::Target target;

    void arguments(CLI::App& app) {
        app.add_option("NAME", target.name, "Its iSCSI name")->required();
    }

    void run(Context& context) const {
        array::Id id = 0;
        context.array().change([&](array::Change& change) { id = change.create(target); });
        printCreated(context, id);
    }
};

// A target that is there.
struct TargetArgument {
    std::string target;

    void arguments(CLI::App& app) {
        app.add_option("TARGET", target, "Its iSCSI name or key")->required();
    }
};

struct DeleteTarget : TargetArgument {
    void run(Context& context) const {
        context.array().change(
            [&](array::Change& change) { change.remove(findTarget(change.snapshot(), target)); });
    }
};

struct ShowTarget : TargetArgument {
    void run(Context& context) const {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        targetReport(*snapshot, findTarget(*snapshot, target)).print(context);
    }
};

} // namespace

void addTargetCommands(CLI::App& family, Context& context) {
    add<ListTargets>(family, context, "list", "List the targets");
    add<ShowTarget>(family, context, "show",
                    "Show all about a target, with the keys of its settings and statistics");
    add<CreateTarget>(family, context, "create", "Make a target and write its key");
    add<DeleteTarget>(family, context, "delete",
                      "Remove a target that has no units and no sessions, with its grants");
}

} // namespace cli
