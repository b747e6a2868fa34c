#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

namespace array {

// A transaction of a database, undone at its end unless it was committed. Failures of SQLite pass
// as SQLite::Exception.
class Transaction {
public:
    enum class Kind {
        Read,  // sees one version of all tables
        Write, // has the writer's turn
    };

    // Undoes what an earlier one could not undo, for example for want of memory.
    Transaction(SQLite::Database& database, Kind kind);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();

private:
    bool isOpen() const;

    SQLite::Database& _database;
};

// One run of a statement. It lets go of its rows at the end, however that comes: a row that is held
// keeps the transaction open.
class Run {
public:
    explicit Run(SQLite::Statement& statement) : _statement(statement) { _statement.tryReset(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() { _statement.tryReset(); } // reset() would throw what the run threw

private:
    SQLite::Statement& _statement;
};

} // namespace array
