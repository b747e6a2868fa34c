#include "cli/Lookup.h"
#include "cli/SecretInput.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

// Whose secret it is.
struct SecretArguments {
    std::string kind;
    std::string name;

    void arguments(CLI::App& app) {
        app.add_option("KIND", kind, "initiator or target")
            ->required()
            ->check(CLI::IsMember({"initiator", "target"}));
        app.add_option("NAME", name, "Its iSCSI name or key")->required();
    }

    void store(Context& context, const std::string& secret) const {
        context.array().change([&](array::Change& change) {
            if (kind == "initiator") {
                store(change, findInitiator(change.snapshot(), name), &array::Snapshot::initiator,
                      secret);
            } else {
                store(change, findTarget(change.snapshot(), name), &array::Snapshot::target,
                      secret);
            }
        });
    }

    template<typename Record>
    static void store(array::Change& change, array::Id id,
                      const Record* (array::Snapshot::*read)(array::Id) const,
                      const std::string& secret) {
        Record record = *(change.snapshot().*read)(id);
        record.secret = secret;
        change.modify(id, record);
    }
};

struct SetSecret : SecretArguments {
    void run(Context& context) const {
        store(context, readNewSecret(context, "Secret of " + kind + " " + name));
    }
};

struct ClearSecret : SecretArguments {
    void run(Context& context) const { store(context, ""); }
};

} // namespace

void addSecretCommands(CLI::App& family, Context& context) {
    add<SetSecret>(family, context, "set",
                   "Set a secret, from a prompt or the first line of standard input");
    add<ClearSecret>(family, context, "clear", "Leave an object without a secret");
}

} // namespace cli
