#include "array/database/Check.h"

#include <SQLiteCpp/Statement.h>

#include "array/database/Database.h"
#include "array/database/Failures.h"
#include "array/database/SnapshotReader.h"
#include "array/database/Transaction.h"
#include "array/model/Rules.h"

namespace array {

namespace {

using Findings = std::vector<std::string>;

// SQLite's own look at pages and indexes: one row "ok", or one for each finding.
void checkPages(SQLite::Database& database, Findings& findings) {
    SQLite::Statement check(database, "PRAGMA integrity_check");
    while (check.executeStep()) {
        if (const std::string line = check.getColumn(0).getString(); line != "ok") {
            findings.push_back("array.db: " + line);
        }
    }
}

// Rows that refer to a row that is not there: table, row, table referred to.
void checkReferences(SQLite::Database& database, Findings& findings) {
    SQLite::Statement check(database, "PRAGMA foreign_key_check");
    while (check.executeStep()) {
        findings.push_back("array.db: row " + check.getColumn(1).getString() + " of table " +
                           check.getColumn(0).getString() + " names a " +
                           check.getColumn(2).getString() + " that is not there");
    }
}

} // namespace

std::vector<std::string> findDamage(const std::filesystem::path& file) {
    SQLite::Database database = openDatabase(file);
    Findings findings;
    withSqlite(file, [&] {
        const Transaction read(database, Transaction::Kind::Read);
        checkPages(database, findings);
        checkReferences(database, findings);
        if (!findings.empty()) {
            return;
        }
        findings = findBrokenRules(Snapshot(SnapshotReader(database).load()));
    });
    return findings;
}

} // namespace array
