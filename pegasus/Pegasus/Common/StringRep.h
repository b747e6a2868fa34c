// The body of a String: a counted header with the text right behind it. Internal.

#pragma once

#include <new>

#include <Pegasus/Common/Char16.h>
#include <Pegasus/Common/OwnerCount.h>

namespace Pegasus {

struct StringRep {
    OwnerCount owners;
    Uint32 size;     // units before the ending U+0000
    Uint32 capacity; // units, the ending one not counted

    Char16* text() { return reinterpret_cast<Char16*>(this + 1); }
    void setSize(Uint32 n) {
        size = n;
        text()[n] = Uint16(0);
    }

    // One owner, no text. Throws std::bad_alloc, also for more than 2^30 units.
    static StringRep* make(std::size_t capacity);
    static void addOwner(StringRep* rep) { // null has no owners
        if (rep) {
            rep->owners.add();
        }
    }
    static void dropOwner(StringRep* rep) {
        if (rep && rep->owners.drop()) {
            ::operator delete(rep);
        }
    }
};

static_assert(sizeof(StringRep) % alignof(Char16) == 0);

} // namespace Pegasus
