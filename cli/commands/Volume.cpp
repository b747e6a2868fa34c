#include "array/model/Ids.h"
#include "cli/Listing.h"
#include "cli/Lookup.h"
#include "cli/Quantities.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct ListVolumes : NoArguments {
    static void run(Context& context) {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        Listing listing({{"KEY", "key"},
                         {"NAME", "name"},
                         {"ELEMENT NAME", "elementName"},
                         {"SIZE", "size", bytesText},
                         {"UNITS", "units"}});
        snapshot->forEach(Pegasus::CLASSID_VOLUME, [&](array::Id id) {
            const array::Volume& volume = *snapshot->volume(id);
            listing.add({array::keyText(id), volume.name, volume.elementName, volume.size,
                         snapshot->countAssociated(id, Pegasus::CLASSID_LOGICAL_UNIT)});
        });
        listing.print(context);
    }
};

struct CreateVolume {
    array::Volume volume;

    void arguments(CLI::App& app) {
        app.add_option("NAME", volume.name, "Hexadecimal text of its NAA identifier")->required();
        app.add_option_function<std::string>(
               "--size", [this](const std::string& text) { volume.size = sizeFromText(text); },
               "In bytes, or with a unit: 10GiB, 500MB")
            ->required();
        app.add_option("--element-name", volume.elementName, "What people call it");
    }

    void run(Context& context) const {
        array::Id id = 0;
        context.array().change([&](array::Change& change) { id = change.create(volume); });
        printCreated(context, id);
    }
};

struct DeleteVolume {
    std::string volume;

    void arguments(CLI::App& app) {
        app.add_option("VOLUME", volume, "Its name, element name or key")->required();
    }

    void run(Context& context) const {
        context.array().change(
            [&](array::Change& change) { change.remove(findVolume(change.snapshot(), volume)); });
    }
};

} // namespace

void addVolumeCommands(CLI::App& family, Context& context) {
    add<ListVolumes>(family, context, "list", "List the volumes");
    add<CreateVolume>(family, context, "create", "Make a volume and write its key");
    add<DeleteVolume>(family, context, "delete", "Remove a volume; its units stay, without it");
}

} // namespace cli
