#pragma once

#include <memory>

#include <Pegasus/Common/Config.h>

#include "engine/DRAVEngine.h"

namespace Pegasus {

// The engine's record of an object, viewed as its class. Null if the engine gave none, or one of
// another class.
template<class Record>
std::unique_ptr<Record> readRecord(DRAVEngine& engine, CLASSID_e objectClass, Uint32 id) {
    std::unique_ptr<ManagedObject> object(engine.getObject(objectClass, id));
    std::unique_ptr<Record> record(dynamic_cast<Record*>(object.get()));
    if (record) {
        static_cast<void>(object.release());
    }
    return record;
}

} // namespace Pegasus
