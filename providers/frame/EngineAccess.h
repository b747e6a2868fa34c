#pragma once

#include <memory>

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include "engine/DRAVEngine.h"

namespace Pegasus {

// What initialize does in every provider: finds the engine and keeps a copy of the server's handle.
inline void attach(DRAVEngine*& engine, CIMOMHandle& kept, const CIMOMHandle& cimom) {
    engine = DRAVEngine::_getInstance();
    kept = cimom;
}

// Throws CIMObjectNotFoundException, which names the class and the id.
[[noreturn]] void failWithoutRecord(CLASSID_e objectClass, Uint32 id);

// The record that the engine gives for an object, cast to its class. Deleted with this.
//
// When the engine gives none, or one of another class, this is false, and to use it throws
// CIMObjectNotFoundException: the request fails, and the server goes on.
template<class Record>
class EngineRecord {
public:
    EngineRecord(DRAVEngine& engine, CLASSID_e objectClass, Uint32 id)
        : _object(engine.getObject(objectClass, id)), _record(dynamic_cast<Record*>(_object.get())),
          _class(objectClass), _id(id) {}

    explicit operator bool() const { return _record; }

    Record& operator*() const {
        if (!_record) {
            failWithoutRecord(_class, _id);
        }
        return *_record;
    }
    Record* operator->() const { return &**this; }

private:
    const std::unique_ptr<ManagedObject> _object;
    Record* const _record; // null, or the object
    const CLASSID_e _class;
    const Uint32 _id;
};

} // namespace Pegasus
