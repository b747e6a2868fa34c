#include "array/model/Ids.h"
#include "cli/Listing.h"
#include "cli/Lookup.h"
#include "cli/Quantities.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct ListEndpoints : NoArguments {
    static void run(Context& context) {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        Listing listing({{"KEY", "key"},
                         {"ADDRESS", "address"},
                         {"PORT", "port"},
                         {"CONNECTIONS", "connections"}});
        snapshot->forEach(Pegasus::CLASSID_TCP_ENDPOINT, [&](array::Id id) {
            const array::Endpoint& endpoint = *snapshot->endpoint(id);
            listing.add({array::keyText(id), endpoint.address, endpoint.port,
                         snapshot->countAssociated(id, Pegasus::CLASSID_ISCSI_CONNECTION)});
        });
        listing.print(context);
    }
};

struct CreateEndpoint {
    array::Endpoint endpoint;

    void arguments(CLI::App& app) {
        app.add_option_function<std::string>(
               "PORTAL", [this](const std::string& text) { endpoint = portalFromText(text); },
               "Its IP address and port, such as 192.0.2.10:3260; without a port it is 3260")
            ->required();
    }

    void run(Context& context) const {
        array::Id id = 0;
        context.array().change([&](array::Change& change) { id = change.create(endpoint); });
        printCreated(context, id);
    }
};

struct DeleteEndpoint {
    std::string endpoint;

    void arguments(CLI::App& app) {
        app.add_option("PORTAL", endpoint, "Its address and port, or its key")->required();
    }

    void run(Context& context) const {
        context.array().change([&](array::Change& change) {
            change.remove(findEndpoint(change.snapshot(), endpoint));
        });
    }
};

} // namespace

void addEndpointCommands(CLI::App& family, Context& context) {
    add<ListEndpoints>(family, context, "list", "List the endpoints");
    add<CreateEndpoint>(family, context, "create", "Make an endpoint and write its key");
    add<DeleteEndpoint>(family, context, "delete", "Remove an endpoint that has no connections");
}

} // namespace cli
