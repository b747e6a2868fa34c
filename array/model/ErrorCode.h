#pragma once

#include <string>

#include "engine/DRAVOperationFailedException.h"

namespace array {

// Every DRAVOperationFailedException that the array throws has one of these codes. The numbers are
// part of the interface: none is ever changed or used anew.
enum class ErrorCode : Pegasus::Uint32 {
    // The request names what is not there, or what cannot be.
    BadKeyText = 1,   // the object to work on was given by a text that is no key text
    BadNumber = 2,    // a text is not a decimal number below 2^32
    NoSuchObject = 3, // an id that names no object
    WrongClass = 4,   // an id of another class than the one asked for
    NoRecord = 5,     // objects of this class have no record, or cannot be made or changed so

    // The values break a rule.
    BadName = 10,            // no valid iSCSI name, volume name, address or array name
    NameTaken = 11,          // another object has the name
    BadSecret = 12,          // too long, or has control characters
    BadLun = 13,             // out of range
    LunTaken = 14,           // another unit of the target has it
    BadParameter = 15,       // a login parameter out of its range
    ParametersDisagree = 16, // login parameters that exclude each other
    BadText = 17,            // an element name that is too long, or has control characters
    FixedValue = 18,         // a value that cannot be changed once the object is made
    InUse = 19,              // the object cannot go while others need it
    TooMany = 20,            // the class has used up its ids

    // A login was refused.
    LoginNotGranted = 30, // the initiator has no grant for the target
    LoginFailed = 31,     // the secret is missing or wrong
    LoginNoPath = 32,     // no endpoint, or more connections than the session may have

    // The state directory.
    StateMissing = 50,    // there is none, or no array in it
    StateNotPrivate = 51, // of another user, or open to other users
    StateUnreadable = 52, // it or a file in it cannot be opened
    StateForeign = 53,    // array.db was made by another program
    StateNewer = 54,      // array.db was made by a newer version
    StateDamaged = 55,    // array.db is truncated or its content contradicts itself
    StateExists = 56,     // a file to be made is there already
    StateBusy = 57,       // another process held the writer's turn for too long
    StateFull = 58,       // no space left; nothing was changed
    StateFailed = 59,     // another failure to read or write; nothing was changed
    StateGone = 60        // the files in use were removed, or others put in their place
};

// True for a failure of the state directory or a file of it, whatever was asked of the array.
bool isOfTheState(const Pegasus::DRAVOperationFailedException& failure);

// Throws DRAVOperationFailedException with the code and the UTF-8 text.
[[noreturn]] void fail(ErrorCode code, const std::string& message);

} // namespace array
