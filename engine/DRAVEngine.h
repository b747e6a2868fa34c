#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/String.h>

#include "engine/DRAVOperationFailedException.h"
#include "engine/ManagedObject.h"
#include "engine/ObjectIds.h"

namespace Pegasus {

// The device engine: the array's configuration as a store of objects and associations.
//
// There is one per process. Every operation may be called from any thread at any time; none needs a
// lock of the caller's. Every operation may throw DRAVOperationFailedException; a change that
// threw has changed nothing, one that returned is permanent and seen by every later read.
class DRAV_EXPORT DRAVEngine {
public:
    // The engine of this process; never null, never to be deleted. Does not throw: an engine that
    // cannot reach its configuration says so in each operation.
    static DRAVEngine* _getInstance();

    // A new copy of an object's record, owned by the caller. An id that names nothing, or names an
    // object of another class, is an error. Classes without a record are an error too.
    ManagedObject* getObject(CLASSID_e objectClass, Uint32 id);

    // The ids of the objects of a class that are associated with an object or root id, in ascending
    // order. An id that names nothing has none.
    Array<Uint32> enumerateAssociatedObjects(Uint32 id, CLASSID_e objectClass);

    // Makes an object from a record and returns its id. The record stays the caller's, unchanged.
    // An error if the values break a rule of the array, or if the name, key or LUN is taken.
    Uint32 createObject(CLASSID_e objectClass, const ManagedObject& record);

    // Stores a record that getObject gave and the caller changed. An error if the object is gone or
    // the values break a rule of the array.
    void modifyObject(CLASSID_e objectClass, const ManagedObject& record);

    // Removes an object. An error if there is none of that class and id, or if it is in use.
    void deleteObject(CLASSID_e objectClass, Uint32 id);

    // Grants an initiator access to a target; takes it away. A grant that exists already, or one
    // to remove that does not exist, is no change and no error; an id that names no object is an
    // error.
    void createAssociation(Uint32 targetId, Uint32 initiatorId);
    void deleteAssociation(Uint32 targetId, Uint32 initiatorId);

    // The id of the volume with a key that ManagedObject::hexToBin gave; 0 if there is none.
    Uint32 getObjectIDByKey(CLASSID_e objectClass, const String& key);

    // The id of the initiator or target with an iSCSI name; 0 if there is none.
    Uint32 getiSCSIObjectIDByName(CLASSID_e objectClass, const String& name);

    // Host of every object path, and the array's name as a computer system. Set before the first
    // operation, never null; the strings are the engine's.
    static const String* _OvrinHostNamePtr;
    static const String* _OvrinSystemNamePtr;

private:
    DRAVEngine() = default;
    ~DRAVEngine() = default;
    DRAVEngine(const DRAVEngine&) = delete;
    DRAVEngine& operator=(const DRAVEngine&) = delete;
};

} // namespace Pegasus
