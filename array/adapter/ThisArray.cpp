#include "array/adapter/ThisArray.h"

#include <atomic>
#include <deque>
#include <mutex>

#include "array/model/SnapshotContents.h"
#include "array/model/Text.h"
#include "engine/DRAVEngine.h"

namespace array {

Array& theArray() {
    static std::mutex opening;
    static std::unique_ptr<Array> array; // guarded by opening
    static std::atomic<Array*> opened{nullptr};

    if (Array* const there = opened.load(std::memory_order_acquire)) {
        return *there;
    }
    const std::lock_guard lock(opening);
    if (!array) {
        array = Array::open(stateDirectory());
    }
    opened.store(array.get(), std::memory_order_release);
    return *array;
}

} // namespace array

namespace Pegasus {

namespace {

// What the pointers show while the state directory has never been readable.
const String UNKNOWN("localhost");

} // namespace

const String* DRAVEngine::_OvrinHostNamePtr = &UNKNOWN;
const String* DRAVEngine::_OvrinSystemNamePtr = &UNKNOWN;

} // namespace Pegasus

namespace array {

namespace {

using Pointer = const Pegasus::String*;

struct Shown {
    std::mutex mutex;
    std::deque<Pegasus::String> strings; // guarded by mutex, as is all above `current`
    Shared<Names> names;                 // kept, so that no later ones stand at the same address
    std::uint64_t version = 0;
    std::atomic<const Names*> current{nullptr};

    void show(Pointer& pointer, const std::string& name) {
        strings.push_back(fromUtf8(name));
        std::atomic_ref<Pointer>(pointer).store(&strings.back(), std::memory_order_release);
    }
};

} // namespace

void showNames(const Snapshot& snapshot) {
    static Shown shown;
    if (shown.current.load(std::memory_order_acquire) == &snapshot.names()) {
        return;
    }
    const std::lock_guard lock(shown.mutex);
    if (shown.names && snapshot.version() <= shown.version) {
        return; // an older snapshot than was shown
    }
    shown.names = snapshot.contents().names;
    shown.version = snapshot.version();
    shown.show(Pegasus::DRAVEngine::_OvrinHostNamePtr, snapshot.names().host);
    shown.show(Pegasus::DRAVEngine::_OvrinSystemNamePtr, snapshot.names().system);
    shown.current.store(&snapshot.names(), std::memory_order_release);
}

} // namespace array
