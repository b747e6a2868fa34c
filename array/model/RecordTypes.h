#pragma once

#include <tuple>
#include <type_traits>

#include "array/containers/PersistentMap.h"
#include "array/containers/Shared.h"
#include "array/model/Ids.h"
#include "array/model/Records.h"

namespace array {

// A tuple with one Of<Record> for each type of record. A target's two settings are records of their
// own, with the target's serial.
template<template<class> class Of>
using ForEachRecord =
    std::tuple<Of<Endpoint>, Of<Initiator>, Of<Target>, Of<LogicalUnit>, Of<Connection>,
               Of<Session>, Of<Volume>, Of<ConnectionParameters>, Of<SessionParameters>>;

// Likewise for each type of counters that objects may have.
template<template<class> class Of>
using ForEachStatistics = std::tuple<Of<LoginStatistics>, Of<SessionFailures>,
                                     Of<SessionStatistics>, Of<InterfaceStatistics>>;

// The records of one type, by serial.
template<class Record>
using Table = PersistentMap<Shared<Record>>;

template<class Record>
constexpr CLASSID_e classOfRecord = CLASSID_e{};
template<>
inline constexpr CLASSID_e classOfRecord<Endpoint> = Pegasus::CLASSID_TCP_ENDPOINT;
template<>
inline constexpr CLASSID_e classOfRecord<Initiator> = Pegasus::CLASSID_INITIATOR;
template<>
inline constexpr CLASSID_e classOfRecord<Target> = Pegasus::CLASSID_TARGET;
template<>
inline constexpr CLASSID_e classOfRecord<LogicalUnit> = Pegasus::CLASSID_LOGICAL_UNIT;
template<>
inline constexpr CLASSID_e classOfRecord<Connection> = Pegasus::CLASSID_ISCSI_CONNECTION;
template<>
inline constexpr CLASSID_e classOfRecord<Session> = Pegasus::CLASSID_ISCSI_SESSION;
template<>
inline constexpr CLASSID_e classOfRecord<Volume> = Pegasus::CLASSID_VOLUME;
template<>
inline constexpr CLASSID_e classOfRecord<ConnectionParameters> =
    Pegasus::CLASSID_CONNECTION_SETTINGS;
template<>
inline constexpr CLASSID_e classOfRecord<SessionParameters> = Pegasus::CLASSID_SESSION_SETTINGS;

template<class Statistics>
constexpr CLASSID_e ownerOfStatistics = CLASSID_e{};
template<>
inline constexpr CLASSID_e ownerOfStatistics<LoginStatistics> = Pegasus::CLASSID_TARGET;
template<>
inline constexpr CLASSID_e ownerOfStatistics<SessionFailures> = Pegasus::CLASSID_TARGET;
template<>
inline constexpr CLASSID_e ownerOfStatistics<SessionStatistics> = Pegasus::CLASSID_ISCSI_SESSION;
template<>
inline constexpr CLASSID_e ownerOfStatistics<InterfaceStatistics> = Pegasus::CLASSID_TCP_ENDPOINT;

// visit(std::type_identity<Record>) for each type, or for the one of a class.
template<class Visit>
void forEachRecordType(Visit&& visit) {
    std::apply([&](const auto&... types) { (visit(types), ...); },
               ForEachRecord<std::type_identity>());
}
template<class Visit>
void forEachStatisticsType(Visit&& visit) {
    std::apply([&](const auto&... types) { (visit(types), ...); },
               ForEachStatistics<std::type_identity>());
}
template<class Visit>
void forRecordTypeOf(CLASSID_e objectClass, Visit&& visit) {
    forEachRecordType([&]<class Record>(std::type_identity<Record> type) {
        if (classOfRecord<Record> == objectClass) {
            visit(type);
        }
    });
}

} // namespace array
