#pragma once

#include "array/change/Change.h"
#include "array/change/Fabric.h"
#include "array/database/ChangeWriter.h"
#include "array/database/Failures.h"
#include "array/model/ErrorCode.h"
#include "array/model/Ids.h"
#include "array/model/Snapshot.h"
#include "array/model/SnapshotContents.h"
#include "array/model/Text.h"

// What the operations of Change are made of, for Change.cpp and Remove.cpp: the draft of the next
// snapshot and array.db are changed together.

namespace array {

// The highest serial that fits in an id.
constexpr std::uint32_t lastPossibleSerial = 0x00FFFFFF;

template<class Record>
const Record& Change::need(Id id) const {
    if (const Record* record = _next.contents().find<Record>(id)) {
        return *record;
    }
    failNoSuchObject(_next, id, classOfRecord<Record>);
}

template<class Work>
void Change::write(Work&& work) {
    if (_failure) {
        std::rethrow_exception(_failure);
    }
    try {
        withSqlite("array.db", work);
    } catch (...) {
        _failure = std::current_exception();
        throw;
    }
}

template<class Record>
void Change::put(Id id, const Record& record) {
    write([&] { _writer.put(id, record); });
    _next.edit().put(id, record);
}

template<class Record>
void Change::erase(Id id) {
    write([&] { _writer.erase<Record>(id); });
    _next.edit().erase<Record>(id);
}

template<class Record>
Id Change::make(const Record& record) {
    const std::uint32_t last = _next.contents().lastSerial(classOfRecord<Record>);
    if (last == lastPossibleSerial) {
        fail(ErrorCode::TooMany, std::string("The array has given all ids that there are for ") +
                                     className(classOfRecord<Record>) + "s.");
    }
    const Id id = makeId(classOfRecord<Record>, last + 1);
    put(id, record);
    return id;
}

template<class Statistics>
void Change::putStatistics(Id owner, const Statistics& statistics) {
    write([&] { _writer.putStatistics(owner, statistics); });
    _next.edit().putStatistics(owner, statistics);
}

} // namespace array
