#include "array/database/Schema.h"

#include <iterator>
#include <string>

#include <SQLiteCpp/Statement.h>

#include "array/database/Transaction.h"
#include "array/model/LoginParameters.h"

namespace array {

namespace {

// What leads from version 1 to 2, and so on.
constexpr const char* steps[] = {
    "CREATE UNIQUE INDEX unit_lun ON unit (target, lun); DROP INDEX unit_target",
};

// A pragma takes no bound parameter.
void setPragma(SQLite::Database& database, const std::string& name, int value) {
    database.exec("PRAGMA " + name + " = " + std::to_string(value));
}

template<class Parameters>
std::string loginColumns() {
    std::string columns;
    forEachLoginParameter<Parameters>([&](const auto& row) {
        columns +=
            std::string(columns.empty() ? "    " : ",\n    ") + row.column + " INTEGER NOT NULL";
    });
    return columns;
}

// Ids are those of the engine. Every reference to another object has an index, because the object
// cannot be removed without a look at it. The columns are those of Layout.h.
std::string tables() {
    return R"sql(
CREATE TABLE array (
    one INTEGER PRIMARY KEY CHECK (one = 1),
    version INTEGER NOT NULL,   -- grows by one with each commit
    log_start INTEGER NOT NULL, -- the log holds all changes of later versions
    host TEXT NOT NULL,
    system TEXT NOT NULL
) STRICT;

-- What each version changed: an object; or, with another id, a grant; or, with id 0, the names.
CREATE TABLE log (
    version INTEGER NOT NULL,
    id INTEGER NOT NULL,
    other INTEGER NOT NULL,
    PRIMARY KEY (version, id, other)
) STRICT, WITHOUT ROWID;

-- The highest serial ever given to an object of a class.
CREATE TABLE serial (
    class INTEGER PRIMARY KEY,
    last INTEGER NOT NULL
) STRICT;

CREATE TABLE endpoint (
    id INTEGER PRIMARY KEY,
    address TEXT NOT NULL,
    port INTEGER NOT NULL
) STRICT;

CREATE TABLE volume (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    element_name TEXT NOT NULL,
    size INTEGER NOT NULL,
    state INTEGER NOT NULL
) STRICT;

CREATE TABLE initiator (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    secret TEXT NOT NULL
) STRICT;

CREATE TABLE target (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    secret TEXT NOT NULL
) STRICT;

CREATE TABLE unit (
    id INTEGER PRIMARY KEY,
    target INTEGER NOT NULL REFERENCES target,
    lun INTEGER NOT NULL,
    access INTEGER NOT NULL,
    volume INTEGER REFERENCES volume, -- NULL: the volume is gone
    volume_name TEXT NOT NULL         -- of a volume that is gone
) STRICT;
CREATE UNIQUE INDEX unit_lun ON unit (target, lun);
CREATE INDEX unit_volume ON unit (volume);

CREATE TABLE access_grant (
    target INTEGER NOT NULL REFERENCES target,
    initiator INTEGER NOT NULL REFERENCES initiator,
    PRIMARY KEY (target, initiator)
) STRICT, WITHOUT ROWID;
CREATE INDEX access_grant_initiator ON access_grant (initiator);

-- A target's settings have its serial, so they need no reference to it.
CREATE TABLE session_settings (
    id INTEGER PRIMARY KEY,
)sql" + loginColumns<SessionParameters>() +
           R"sql(
) STRICT;

CREATE TABLE connection_settings (
    id INTEGER PRIMARY KEY,
)sql" + loginColumns<ConnectionParameters>() +
           R"sql(
) STRICT;

CREATE TABLE session (
    id INTEGER PRIMARY KEY,
    target INTEGER NOT NULL REFERENCES target,
    initiator INTEGER NOT NULL REFERENCES initiator,
    tsih INTEGER NOT NULL,
)sql" + loginColumns<SessionParameters>() +
           R"sql(
) STRICT;
CREATE INDEX session_target ON session (target);
CREATE INDEX session_initiator ON session (initiator);

CREATE TABLE connection (
    id INTEGER PRIMARY KEY,
    session INTEGER NOT NULL REFERENCES session,
    endpoint INTEGER NOT NULL REFERENCES endpoint,
    cid INTEGER NOT NULL,
)sql" + loginColumns<ConnectionParameters>() +
           R"sql(,
    auth_method INTEGER NOT NULL,
    mutual_auth INTEGER NOT NULL
) STRICT;
CREATE INDEX connection_session ON connection (session);
CREATE INDEX connection_endpoint ON connection (endpoint);

-- Counters are removed together with their object.
CREATE TABLE login_statistics (
    id INTEGER PRIMARY KEY REFERENCES target ON DELETE CASCADE,
    successful_logins INTEGER NOT NULL,
    negotiation_failures INTEGER NOT NULL,
    authentication_failures INTEGER NOT NULL,
    authorization_failures INTEGER NOT NULL,
    redirects INTEGER NOT NULL,
    other_failures INTEGER NOT NULL,
    normal_logouts INTEGER NOT NULL,
    other_logouts INTEGER NOT NULL,
    last_failure_type INTEGER NOT NULL,
    last_failure_time INTEGER NOT NULL,
    last_failure_initiator TEXT NOT NULL
) STRICT;

CREATE TABLE session_failures (
    id INTEGER PRIMARY KEY REFERENCES target ON DELETE CASCADE,
    digest INTEGER NOT NULL,
    connection_timeout INTEGER NOT NULL,
    format INTEGER NOT NULL,
    last_type INTEGER NOT NULL,
    last_initiator TEXT NOT NULL
) STRICT;

CREATE TABLE session_statistics (
    id INTEGER PRIMARY KEY REFERENCES session ON DELETE CASCADE,
    command_pdus INTEGER NOT NULL,
    response_pdus INTEGER NOT NULL,
    bytes_transmitted INTEGER NOT NULL,
    bytes_received INTEGER NOT NULL,
    digest_errors INTEGER NOT NULL,
    connection_timeout_errors INTEGER NOT NULL
) STRICT;

CREATE TABLE interface_statistics (
    id INTEGER PRIMARY KEY REFERENCES endpoint ON DELETE CASCADE,
    frames_received INTEGER NOT NULL,
    frames_sent INTEGER NOT NULL,
    octets_received INTEGER NOT NULL,
    octets_sent INTEGER NOT NULL,
    receive_errors INTEGER NOT NULL,
    send_errors INTEGER NOT NULL,
    receive_discards INTEGER NOT NULL,
    send_discards INTEGER NOT NULL
) STRICT;
)sql";
}

} // namespace

const int schemaVersion = static_cast<int>(std::size(steps)) + 1;

void createSchema(SQLite::Database& database, const ArrayNames& names) {
    Transaction transaction(database, Transaction::Kind::Write);
    database.exec(tables());
    SQLite::Statement insert(database, "INSERT INTO array VALUES (1, 0, 0, ?, ?)");
    insert.bind(1, names.host);
    insert.bind(2, names.system);
    insert.exec();
    setPragma(database, "application_id", applicationId);
    setPragma(database, "user_version", schemaVersion);
    transaction.commit();
}

int schemaVersionOf(SQLite::Database& database) {
    return database.execAndGet("PRAGMA user_version").getInt();
}

void migrateSchema(SQLite::Database& database) {
    if (schemaVersionOf(database) == schemaVersion) {
        return;
    }
    Transaction turn(database, Transaction::Kind::Write);
    for (int version = schemaVersionOf(database); version < schemaVersion; ++version) {
        database.exec(steps[version - 1]);
    }
    setPragma(database, "user_version", schemaVersion);
    turn.commit();
}

} // namespace array
