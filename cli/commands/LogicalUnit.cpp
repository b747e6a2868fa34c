#include "array/description/Entries.h"
#include "cli/Listing.h"
#include "cli/Lookup.h"
#include "cli/Quantities.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct ListUnits {
    std::string target;

    void arguments(CLI::App& app) {
        app.add_option("TARGET", target, "Only of this target: its iSCSI name or key");
    }

    void run(Context& context) const {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        const auto units = target.empty() ? snapshot->ids(Pegasus::CLASSID_LOGICAL_UNIT)
                                          : snapshot->associated(findTarget(*snapshot, target),
                                                                 Pegasus::CLASSID_LOGICAL_UNIT);
        unitListing(*snapshot, units).print(context);
    }
};

struct CreateUnit {
    std::string target;
    std::string volume;
    std::uint32_t lun = 0;
    std::string access = "rw";

    void arguments(CLI::App& app) {
        app.add_option("TARGET", target, "The target's iSCSI name or key")->required();
        app.add_option("VOLUME", volume, "The volume's name, element name or key")->required();
        app.add_option_function<std::string>(
               "--lun",
               [this](const std::string& text) {
                   lun = static_cast<std::uint32_t>(numberFromText(text, 0xFFFFFFFF));
               },
               "Logical unit number, unique within the target")
            ->required();
        app.add_option("--access", access, "What initiators may do: rw, ro or none")
            ->check(CLI::IsMember({"rw", "ro", "none"}))
            ->capture_default_str();
    }

    void run(Context& context) const {
        array::Id id = 0;
        context.array().change([&](array::Change& change) {
            id = change.create(array::LogicalUnit{findTarget(change.snapshot(), target), lun,
                                                  *array::description::accessFromText(access),
                                                  findVolume(change.snapshot(), volume), ""});
        });
        printCreated(context, id);
    }
};

struct DeleteUnit {
    std::string keyOrTarget;
    std::string lun;

    void arguments(CLI::App& app) {
        app.add_option("TARGET", keyOrTarget, "The target's iSCSI name or key; or the unit's key")
            ->required();
        app.add_option("LUN", lun, "Its number within the target");
    }

    void run(Context& context) const {
        context.array().change([&](array::Change& change) {
            change.remove(findUnit(change.snapshot(), keyOrTarget, lun));
        });
    }
};

} // namespace

void addUnitCommands(CLI::App& family, Context& context) {
    add<ListUnits>(family, context, "list", "List the logical units");
    add<CreateUnit>(family, context, "create",
                    "Map a volume under a target and write the unit's key");
    add<DeleteUnit>(family, context, "delete", "Remove a logical unit");
}

} // namespace cli
