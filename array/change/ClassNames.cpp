#include "array/change/ClassNames.h"

#include "array/ErrorCode.h"
#include "array/KeyText.h"

namespace array {

namespace {

struct Row {
    CLASSID_e objectClass;
    const char* name;
};

constexpr Row ROWS[] = {
    {Pegasus::CLASSID_TCP_ENDPOINT, "endpoint"},
    {Pegasus::CLASSID_INITIATOR, "initiator"},
    {Pegasus::CLASSID_TARGET, "target"},
    {Pegasus::CLASSID_LOGICAL_UNIT, "logical unit"},
    {Pegasus::CLASSID_ISCSI_CONNECTION, "connection"},
    {Pegasus::CLASSID_ISCSI_SESSION, "session"},
    {Pegasus::CLASSID_VOLUME, "volume"},
    {Pegasus::CLASSID_CONNECTION_SETTINGS, "connection setting"},
    {Pegasus::CLASSID_SESSION_SETTINGS, "session setting"},
};

} // namespace

const char* className(CLASSID_e objectClass) {
    for (const Row& row : ROWS)
        if (row.objectClass == objectClass)
            return row.name;
    return "object";
}

void failNoSuchObject(const Snapshot& snapshot, Id id, CLASSID_e wanted) {
    if (snapshot.exists(id))
        fail(ErrorCode::WrongClass, keyText(id) + " is of the class " + className(classOf(id)) +
                                        ", and the class " + className(wanted) + " was asked for.");
    fail(ErrorCode::NoSuchObject,
         keyText(id) + " names no object of the class " + className(wanted) + '.');
}

} // namespace array
