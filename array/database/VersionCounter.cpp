#include "array/database/VersionCounter.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include "array/database/Failures.h"

namespace array {

static_assert(std::atomic<VersionCounter::Stamp>::is_always_lock_free, "shared between processes");

VersionCounter::VersionCounter(const std::filesystem::path& file) {
    const int descriptor = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    void* memory = MAP_FAILED;
    int error = errno;
    // Room on the disk now, because a write to the memory that found none would end the process.
    if (descriptor >= 0 && (error = posix_fallocate(descriptor, 0, sizeof(Stamp))) == 0) {
        memory = mmap(nullptr, sizeof(Stamp), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
        error = errno;
    }
    if (descriptor >= 0) {
        close(descriptor);
    }
    if (memory == MAP_FAILED) {
        failFile(file, error);
    }
    _shared = static_cast<std::atomic<Stamp>*>(memory);
}

VersionCounter::~VersionCounter() {
    munmap(_shared, sizeof(Stamp));
}

void VersionCounter::beginCommit(std::uint64_t version) {
    const Stamp committing = settled(version) - 1;
    _ownCommit.store(committing);
    _shared->store(committing);
}

void VersionCounter::endCommit(std::uint64_t version, bool isCommitted) {
    // Another process may have begun a commit since this one ended; then its stamp stays.
    Stamp committing = settled(version) - 1;
    _shared->compare_exchange_strong(committing, settled(isCommitted ? version : version - 1));
    _ownCommit.store(0);
}

void VersionCounter::heal(Stamp stamp, std::uint64_t version) {
    _shared->compare_exchange_strong(stamp, settled(version));
}

} // namespace array
