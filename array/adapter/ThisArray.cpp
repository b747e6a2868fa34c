#include "array/adapter/ThisArray.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <mutex>
#include <new>
#include <utility>

#include "array/model/SnapshotContents.h"
#include "array/model/Text.h"
#include "engine/CurrentName.h"
#include "engine/DRAVEngine.h"
#include "engine/Health.h"
#include "engine/OperationScope.h"

namespace array {

Array& theArray() {
    static std::atomic<Array*> opened{nullptr};
    if (Array* const there = opened.load(std::memory_order_acquire)) {
        return *there;
    }

    static std::mutex opening;
    static std::unique_ptr<Array> array; // guarded by opening
    const std::lock_guard lock(opening);
    if (!array) {
        array = Array::open(stateDirectory());
    }
    opened.store(array.get(), std::memory_order_release);
    return *array;
}

namespace {

// What the pointers show while the state directory has never been readable.
const PathNames unknown{"localhost", "localhost"};

} // namespace

} // namespace array

namespace Pegasus {

const String* DRAVEngine::_OvrinHostNamePtr = &array::unknown.host;
const String* DRAVEngine::_OvrinSystemNamePtr = &array::unknown.system;

} // namespace Pegasus

namespace array {

namespace {

// The names that snapshots had, as texts for paths. They are few, and stay as long as the process:
// whoever read one from DRAVEngine's pointers may still be using it.
class SeenNames {
public:
    // Those of a snapshot. Lets the pointers point to them, unless they show those of a newer one.
    // Costs a comparison while the array keeps its names.
    const PathNames& of(const Snapshot& snapshot) {
        const Seen* const shown = _shown.load(std::memory_order_acquire);
        return shown && shown->address.load(std::memory_order_acquire) ==
                            snapshot.contents().names.get()
                   ? shown->texts
                   : find(snapshot);
    }

    // Those that the pointers show.
    const PathNames& shown() const {
        const Seen* const shown = _shown.load(std::memory_order_acquire);
        return shown ? shown->texts : unknown;
    }

private:
    // Names, of which snapshots can have several copies: each load of the state makes one.
    struct Seen {
        const PathNames texts;
        Seen* const before;
        // Of the newest snapshot seen that has them; guarded by _mutex.
        std::uint64_t version;
        Shared<ArrayNames> names; // kept, so that no other ones stand at the same address
        std::atomic<const ArrayNames*> address; // of names; changed before they are let go
    };

    const PathNames& find(const Snapshot& snapshot) {
        const Shared<ArrayNames>& names = snapshot.contents().names;
        const std::lock_guard lock(_mutex);
        Seen* seen = _last;
        while (seen && (seen->names->host != names->host || seen->names->system != names->system)) {
            seen = seen->before;
        }
        if (!seen) {
            seen = _last = new Seen{{fromUtf8(names->host), fromUtf8(names->system)},
                                    _last,
                                    snapshot.version(),
                                    names,
                                    names.get()};
        } else if (seen->version < snapshot.version()) {
            seen->version = snapshot.version();
            seen->address.store(names.get(), std::memory_order_release);
            seen->names = names;
        }
        const Seen* const shown = _shown.load(std::memory_order_relaxed);
        if (!shown || seen->version > shown->version) {
            show(*seen);
        }
        return seen->texts;
    }

    void show(const Seen& seen) {
        using Pegasus::DRAVEngine;
        using Pointer = std::atomic_ref<const Pegasus::String*>;
        Pointer(DRAVEngine::_OvrinHostNamePtr).store(&seen.texts.host, std::memory_order_release);
        Pointer(DRAVEngine::_OvrinSystemNamePtr)
            .store(&seen.texts.system, std::memory_order_release);
        _shown.store(&seen, std::memory_order_release);
    }

    std::mutex _mutex;
    Seen* _last = nullptr;                    // guarded by _mutex
    std::atomic<const Seen*> _shown{nullptr}; // changed under _mutex
};

constinit SeenNames seenNames;

// What the operation that runs on a thread reads, and those that it calls through the server.
struct Operation {
    unsigned depth;
    bool hasRead;           // since it began, and since it changed the array
    const PathNames* names; // null until one is read
    alignas(SnapshotPtr) std::byte room[sizeof(SnapshotPtr)];

    // Only if it has read.
    SnapshotPtr& snapshot() { return *std::launder(reinterpret_cast<SnapshotPtr*>(room)); }

    void keep(const SnapshotPtr& read, const PathNames& namesRead) {
        new (room) SnapshotPtr(read);
        hasRead = true;
        names = names ? names : &namesRead;
    }

    void forget() {
        names = nullptr;
        if (std::exchange(hasRead, false)) {
            std::destroy_at(&snapshot());
        }
    }
};

// The calling thread's. It has no destructor, which would cost at each use.
Operation& thisOperation() noexcept {
    constinit static thread_local Operation operation{};
    return operation;
}

} // namespace

SnapshotPtr currentSnapshot() {
    Operation& operation = thisOperation();
    if (operation.hasRead) {
        return operation.snapshot();
    }
    SnapshotPtr newest = theArray().snapshot();
    const PathNames& names = seenNames.of(*newest);
    if (operation.depth != 0) {
        operation.keep(newest, names);
    }
    return newest;
}

void changeArray(const std::function<void(Change&)>& make) {
    theArray().change(make);
    thisOperation().forget();
}

const PathNames& currentNames() {
    const PathNames* const names = thisOperation().names;
    return names ? *names : seenNames.of(*currentSnapshot());
}

namespace {

// The same, and while the state cannot be read what the pointers show: that it cannot, each call of
// the engine says. Apart from DRAVCurrentName, whose usual case it would slow down.
[[gnu::noinline]] const PathNames& knownNames() noexcept {
    try {
        return currentNames();
    } catch (...) {
        const PathNames& names = seenNames.shown();
        if (Operation& operation = thisOperation(); operation.depth != 0) {
            operation.names = &names;
        }
        return names;
    }
}

} // namespace

} // namespace array

void DRAVBeginOperation() noexcept {
    ++array::thisOperation().depth;
}

void DRAVEndOperation() noexcept {
    array::Operation& operation = array::thisOperation();
    if (--operation.depth == 0) {
        operation.forget();
    }
}

const Pegasus::String* DRAVCurrentName(const Pegasus::String*& pointer) noexcept {
    const array::PathNames* const read = array::thisOperation().names;
    const array::PathNames& names = read ? *read : array::knownNames();
    return &pointer == &Pegasus::DRAVEngine::_OvrinHostNamePtr ? &names.host : &names.system;
}

std::size_t DRAVWhyNotHealthy(char* text, std::size_t size) noexcept try {
    return array::theArray().whyNotHealthy().copy(text, size);
} catch (const Pegasus::DRAVOperationFailedException& failure) {
    return array::toUtf8(failure.getMessage()).copy(text, size);
} catch (const std::exception& failure) {
    return std::string_view(failure.what()).copy(text, size);
}
