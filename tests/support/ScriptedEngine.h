#pragma once

#include <string>
#include <vector>

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

#include "engine/DRAVConnectionSettings.h"
#include "engine/DRAVEngine.h"
#include "engine/DRAVInitiator.h"
#include "engine/DRAVLogicalUnit.h"
#include "engine/DRAVSessionSettings.h"
#include "engine/DRAVTarget.h"
#include "engine/DRAVVolume.h"
#include "engine/SMIEventServices.h"

// An implementation of the engine interface that answers as a test has told it, and writes each
// call into the log. It keeps no rules: createAssociation, for one, is only logged.

namespace scripted {

// Forgets everything that was told, and the log.
void resetEngine();

// getObject(..., id) gives a copy of this record from now on. A record that createObject or
// modifyObject was given is kept in the same way; an id without a record is an error.
void addRecord(Pegasus::Uint32 id, const Pegasus::DRAVInitiator& record);
void addRecord(Pegasus::Uint32 id, const Pegasus::DRAVTarget& record);
void addRecord(Pegasus::Uint32 id, const Pegasus::DRAVLogicalUnit& record);
void addRecord(Pegasus::Uint32 id, const Pegasus::DRAVVolume& record);
void addRecord(Pegasus::Uint32 id, const Pegasus::DRAVSessionSettings& record);
void addRecord(Pegasus::Uint32 id, const Pegasus::DRAVConnectionSettings& record);

// getObject(..., id) gives a null pointer.
void addNullRecord(Pegasus::Uint32 id);

// How many records that getObject handed out have not been deleted yet, and how many of them one
// thread had at most since resetEngine(). A thread deletes its own.
int recordsHandedOut();
int mostRecordsHandedOut();

// enumerateAssociatedObjects(id, objectClass) gives these ids; without that, none.
void associate(Pegasus::Uint32 id, Pegasus::CLASSID_e objectClass,
               const std::vector<Pegasus::Uint32>& ids);

// getiSCSIObjectIDByName and getObjectIDByKey give this id; without that, 0.
void setIdByName(Pegasus::CLASSID_e objectClass, const Pegasus::String& name, Pegasus::Uint32 id);
void setIdByKey(Pegasus::CLASSID_e objectClass, const Pegasus::String& key, Pegasus::Uint32 id);

// The next createObject gives this id; without that, ids count from 0x100 within the class.
void setNextId(Pegasus::Uint32 id);

// A call of this operation or builder ("createObject", "iSCSINodePath") throws
// DRAVOperationFailedException: the next one, or the one after so many that succeed.
void failNext(const std::string& operation, Pegasus::Uint32 code, const Pegasus::String& message,
              int successesBefore = 0);

// A published event, with all its arguments.
struct Event {
    int channel;
    Pegasus::EMP_TYPE_e type;
    std::string text;
    std::string keyValues;
    Pegasus::Uint8 severity;
    int line;
    std::string operation;
    std::string file;

    bool operator==(const Event&) const = default;
};

std::vector<Event> events();

// For the parts of this engine: notes the call "operation(arguments)"; throws if it is to fail.
void noteCall(const std::string& operation, const std::string& arguments);

} // namespace scripted
