#include "array/Array.h"

#include <cstdlib>
#include <unistd.h>

#include "array/change/Committer.h"
#include "array/change/Follower.h"
#include "array/database/Check.h"
#include "array/database/Database.h"
#include "array/database/Failures.h"
#include "array/database/StateDirectory.h"
#include "array/database/Turn.h"
#include "array/events/EventLog.h"
#include "array/fabric/SimulatedFabric.h"
#include "array/model/ErrorCode.h"
#include "array/model/Text.h"

namespace array {

namespace {

// The names of an array that has not been given any: those of the machine.
ArrayNames machineNames() {
    char name[256] = "";
    if (gethostname(name, sizeof name - 1) != 0 || name[0] == '\0') {
        return {"localhost", "localhost"};
    }
    const std::string host = name;
    return {host, host.substr(0, host.find('.'))};
}

} // namespace

std::filesystem::path stateDirectory(const std::string& given) {
    if (!given.empty()) {
        return given;
    }
    const char* const named = std::getenv("DRAV_STATE_DIR");
    return named && *named ? named : "/var/lib/smisd";
}

class Array::Impl {
public:
    Impl(std::filesystem::path stateDirectory, std::unique_ptr<Fabric> dataPath)
        : directory(std::move(stateDirectory)), fabric(std::move(dataPath)),
          events(eventsIn(directory)), follower(directory),
          writer(databaseIn(directory), follower, *fabric, events) {}

    const std::filesystem::path directory;
    const std::unique_ptr<Fabric> fabric;
    EventLog events;
    Follower follower;
    Committer writer;
};

Array::Array(std::unique_ptr<Impl> impl) : _impl(std::move(impl)) {}
Array::~Array() = default;

std::unique_ptr<Array> Array::open(const std::filesystem::path& directory,
                                   std::unique_ptr<Fabric> fabric) {
    checkStateDirectory(directory);
    if (!fabric) {
        fabric = std::make_unique<SimulatedFabric>();
    }
    return withSqlite(databaseIn(directory), [&] {
        return std::unique_ptr<Array>(
            new Array(std::make_unique<Impl>(directory, std::move(fabric))));
    });
}

std::unique_ptr<Array> Array::openOrCreate(const std::filesystem::path& directory,
                                           std::unique_ptr<Fabric> fabric) {
    makeStateDirectory(directory);
    checkStateDirectory(directory);
    createDatabase(databaseIn(directory), machineNames());
    return open(directory, std::move(fabric));
}

const std::filesystem::path& Array::directory() const {
    return _impl->directory;
}
SnapshotPtr Array::snapshot() const {
    return _impl->follower.newest();
}
EventLog& Array::events() const {
    return _impl->events;
}

void Array::change(const std::function<void(Change&)>& make) {
    _impl->writer.run(make);
}

Id Array::login(const LoginRequest& request) {
    LoginResult result;
    change([&](Change& change) { result = _impl->fabric->login(change, request); });
    if (result.session == 0) {
        fail(result.code, result.message);
    }
    return result.session;
}

void Array::logout(Id session) {
    change([&](Change& change) { _impl->fabric->logout(change, session); });
}

std::string Array::whyNotHealthy() const {
    try {
        _impl->follower.files().requireInPlace("Changes are refused. ");
    } catch (const Pegasus::DRAVOperationFailedException& failure) {
        return toUtf8(failure.getMessage());
    }
    const std::filesystem::path database = databaseIn(directory());
    if (const auto holder = holderThatHangs(database, _impl->follower.index())) {
        return database.string() + ": changes wait for " + *holder +
               ", which has had the writer's turn for over a second. If it hangs, end it; what it "
               "was changing is undone then.";
    }
    return {};
}

std::vector<std::string> Array::check() const {
    return findDamage(databaseIn(directory()));
}

void Array::backup(const std::filesystem::path& file) const {
    copyDatabase(databaseIn(directory()), file);
}

} // namespace array
