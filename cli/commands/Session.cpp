#include "array/model/ErrorCode.h"
#include "array/model/Text.h"
#include "cli/Listing.h"
#include "cli/Lookup.h"
#include "cli/SecretInput.h"
#include "cli/commands/Commands.h"

namespace cli {

namespace {

struct ListSessions : NoArguments {
    static void run(Context& context) {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        sessionListing(*snapshot, snapshot->ids(Pegasus::CLASSID_ISCSI_SESSION)).print(context);
    }
};

struct Login {
    std::string initiator;
    std::string target;
    std::vector<std::string> portals;

    void arguments(CLI::App& app) {
        app.add_option("INITIATOR", initiator, "The initiator's iSCSI name or key")->required();
        app.add_option("TARGET", target, "The target's iSCSI name or key")->required();
        app.add_option("--endpoint", portals,
                       "Make a connection through this portal, by its address and port or its key; "
                       "repeat for more. Without any: one, through the array's first endpoint")
            ->allow_extra_args(false);
    }

    void run(Context& context) const {
        const array::SnapshotPtr snapshot = context.array().snapshot();
        array::LoginRequest request;
        request.target = findTarget(*snapshot, target);
        request.initiator = findInitiator(*snapshot, initiator);
        request.endpoints = endpoints(*snapshot);
        if (!snapshot->initiator(request.initiator)->secret.empty()) {
            request.secret = readSecret(context, "Secret of initiator " + initiator);
        }
        printCreated(context, context.array().login(request));
    }

private:
    std::vector<array::Id> endpoints(const array::Snapshot& snapshot) const {
        std::vector<array::Id> ids;
        for (const std::string& portal : portals) {
            ids.push_back(findEndpoint(snapshot, portal));
        }
        if (ids.empty() && snapshot.count(Pegasus::CLASSID_TCP_ENDPOINT) > 0) {
            ids.push_back(snapshot.ids(Pegasus::CLASSID_TCP_ENDPOINT).front());
        }
        return ids;
    }
};

struct Logout {
    std::string keyOrInitiator;
    std::string target;

    void arguments(CLI::App& app) {
        app.add_option("SESSION", keyOrInitiator,
                       "The session's key; or the initiator's iSCSI name or key")
            ->required();
        app.add_option("TARGET", target,
                       "The target's iSCSI name or key: ends all sessions of the two");
    }

    void run(Context& context) const {
        for (const array::Id session : sessions(*context.array().snapshot())) {
            context.array().logout(session);
        }
    }

private:
    std::vector<array::Id> sessions(const array::Snapshot& snapshot) const {
        if (target.empty()) {
            return {findSession(snapshot, keyOrInitiator)};
        }
        const array::Id targetId = findTarget(snapshot, target);
        std::vector<array::Id> ids = snapshot.associated(findInitiator(snapshot, keyOrInitiator),
                                                         Pegasus::CLASSID_ISCSI_SESSION);
        std::erase_if(ids, [&](array::Id id) { return snapshot.session(id)->target != targetId; });
        if (ids.empty()) {
            array::fail(array::ErrorCode::NoSuchObject,
                        "Initiator " + array::quoted(keyOrInitiator) +
                            " has no session with target " + array::quoted(target) + ".");
        }
        return ids;
    }
};

} // namespace

void addSessionCommands(CLI::App& family, Context& context) {
    add<ListSessions>(family, context, "list", "List the sessions");
    add<Login>(family, context, "login",
               "Log an initiator in to a target and write the session's key")
        ->alias("create");
    add<Logout>(family, context, "logout", "End sessions")->alias("delete");
}

} // namespace cli
