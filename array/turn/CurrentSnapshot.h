#ifndef ARRAY_TURN_CURRENT_SNAPSHOT_H
#define ARRAY_TURN_CURRENT_SNAPSHOT_H

#include <mutex>

#include "array/Snapshot.h"
#include "array/store/Published.h"

namespace array {

// The newest snapshot that this process has. Who makes a change and who follows another process's
// changes may come to the same version; a newer one is never replaced by an older one.
class CurrentSnapshot {
public:
    explicit CurrentSnapshot(SnapshotPtr first) : _published(std::move(first)) {}

    SnapshotPtr load() const { return _published.load(); }

    void advance(SnapshotPtr next) {
        const std::lock_guard lock(_advancing);
        if (next->version() > _published.load()->version())
            _published.store(std::move(next));
    }

private:
    Published<Snapshot> _published;
    std::mutex _advancing;
};

} // namespace array

#endif
