#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <type_traits>

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include "array/database/Layout.h"
#include "array/database/Transaction.h"
#include "array/model/ErrorCode.h"
#include "array/model/Ids.h"

namespace array {

// The statements of one record type, put together from its Layout. Values are always bound, never
// put into the text.
template<class Record>
std::string columnNames() {
    std::string names = "id";
    Record record{};
    Layout<Record>::columns(record,
                            [&](const char* name, auto&&) { names += std::string(", ") + name; });
    return names;
}

template<class Record>
std::string upsertText() {
    std::string values = "?";
    std::string updates;
    Record record{};
    Layout<Record>::columns(record, [&](const char* name, auto&&) {
        values += ", ?";
        updates += std::string(updates.empty() ? "" : ", ") + name + " = excluded." + name;
    });
    return std::string("INSERT INTO ") + Layout<Record>::table + " (" + columnNames<Record>() +
           ") VALUES (" + values + ") ON CONFLICT (id) DO UPDATE SET " + updates;
}

template<class Record>
class SaveStatement {
public:
    explicit SaveStatement(SQLite::Database& database) : _upsert(database, upsertText<Record>()) {}

    void run(Id id, const Record& record) {
        const Run running(_upsert);
        _at = 1;
        _upsert.bind(_at, id);
        Layout<Record>::columns(record, [this](const char*, const auto& field) {
            ++_at;
            bind(field);
        });
        _upsert.exec();
    }

private:
    void bind(const std::string& text) { _upsert.bind(_at, text); }
    void bind(const Nullable<const Id>& reference) {
        if (reference.id != 0) {
            bind(reference.id);
        } else {
            _upsert.bind(_at);
        }
    }
    template<class Number>
    requires std::is_integral_v<Number>
    void bind(Number number) { _upsert.bind(_at, static_cast<std::int64_t>(number)); }

    SQLite::Statement _upsert;
    int _at = 0;
};

template<class Record>
class EraseStatement {
public:
    explicit EraseStatement(SQLite::Database& database)
        : _delete(database, std::string("DELETE FROM ") + Layout<Record>::table + " WHERE id = ?") {
    }

    void run(Id id) {
        const Run running(_delete);
        _delete.bind(1, id);
        _delete.exec();
    }

private:
    SQLite::Statement _delete;
};

template<class Record>
class LoadStatement {
public:
    explicit LoadStatement(SQLite::Database& database) : _database(database) {}

    // True, and fills in the record, if there is a row of the id.
    bool one(Id id, Record& record) {
        if (!_one) {
            _one.emplace(_database, selectText() + " WHERE id = ?");
        }
        const Run run(*_one);
        _one->bind(1, id);
        const bool found = _one->executeStep();
        if (found) {
            read(*_one, record);
        }
        return found;
    }

    // visit(id, record) for all rows, by ascending id.
    template<class Visit>
    void all(Visit&& visit) {
        SQLite::Statement rows(_database, selectText() + " ORDER BY id");
        while (rows.executeStep()) {
            Record record{};
            Id id = 0;
            field(rows.getColumn(0), id, "id");
            read(rows, record);
            visit(id, std::move(record));
        }
    }

private:
    static std::string selectText() {
        return "SELECT " + columnNames<Record>() + " FROM " + Layout<Record>::table;
    }

    void read(SQLite::Statement& row, Record& record) {
        int at = 0;
        Layout<Record>::columns(
            record, [&](const char* name, auto&& into) { field(row.getColumn(++at), into, name); });
    }

    void field(const SQLite::Column& column, std::string& text, const char*) {
        text.assign(column.getText(), static_cast<std::size_t>(column.getBytes()));
    }
    void field(const SQLite::Column& column, const Nullable<Id>& reference, const char* name) {
        reference.id = 0;
        if (!column.isNull()) {
            field(column, reference.id, name);
        }
    }
    template<class Number>
    requires std::is_integral_v<Number>
    void field(const SQLite::Column& column, Number& number, const char* name) {
        const std::int64_t value = column.getInt64();
        number = static_cast<Number>(value);
        if (static_cast<std::int64_t>(number) != value) {
            fail(ErrorCode::StateDamaged, std::string("array.db, table ") + Layout<Record>::table +
                                              ", column " + name + ": " + std::to_string(value) +
                                              " is out of range. Put a backup in its place.");
        }
    }

    SQLite::Database& _database;
    // Prepared when it is first needed. A process that alone uses the array never reads single
    // rows.
    std::optional<SQLite::Statement> _one;
};

// One statement object for each record type of a tuple such as ForEachRecord.
template<class Tuple>
Tuple prepareAll(SQLite::Database& database) {
    return [&]<class... Statements>(std::type_identity<std::tuple<Statements...>>) {
        return Tuple(Statements(database)...);
    }(std::type_identity<Tuple>());
}

} // namespace array
