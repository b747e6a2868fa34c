#include "array/engine/NamePointers.h"

#include <atomic>
#include <deque>
#include <mutex>

#include "array/engine/Text.h"
#include "array/store/State.h"
#include "engine/DRAVEngine.h"

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
    if (shown.current.load(std::memory_order_acquire) == &snapshot.names())
        return;
    const std::lock_guard lock(shown.mutex);
    if (shown.names && snapshot.version() <= shown.version)
        return; // an older snapshot than was shown
    shown.names = snapshot.state().names;
    shown.version = snapshot.version();
    shown.show(Pegasus::DRAVEngine::_OvrinHostNamePtr, snapshot.names().host);
    shown.show(Pegasus::DRAVEngine::_OvrinSystemNamePtr, snapshot.names().system);
    shown.current.store(&snapshot.names(), std::memory_order_release);
}

} // namespace array
