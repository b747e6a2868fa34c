#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>

namespace array {

// Tells the processes that have a state directory open whether another one committed something, for
// the price of reading a word that they share: a file of 32 bits mapped into each of them. It is
// twice the array's version between commits, and odd while a commit goes on. It only saves the way
// to the database: whoever finds it neither current nor behind asks there.
//
// A process that dies in a commit leaves it odd; the next commit or heal() puts it right.
class VersionCounter {
public:
    // Opens the file, or makes it with mode 0600. Throws DRAVOperationFailedException.
    explicit VersionCounter(const std::filesystem::path& file);
    VersionCounter(const VersionCounter&) = delete;
    VersionCounter& operator=(const VersionCounter&) = delete;
    ~VersionCounter();

    // A reader takes a stamp first and then the version that it has; isNewest() says whether that
    // was the newest when the stamp was taken, as far as this process is not committing itself.
    using Stamp = std::uint32_t;
    Stamp read() const { return _shared->load(); }
    bool isNewest(Stamp stamp, std::uint64_t version) const {
        const auto ahead = static_cast<std::int32_t>(stamp - settled(version));
        return ahead <= 0 || (stamp % 2 != 0 && stamp == _ownCommit.load());
    }

    // Around the commit of a version; for the holder of the writer's turn.
    void beginCommit(std::uint64_t version);
    void endCommit(std::uint64_t version, bool isCommitted);

    // Sets a stamp right that an earlier process left behind. To be called by the holder of the
    // writer's turn, who knows the version.
    void heal(Stamp stamp, std::uint64_t version);

private:
    static Stamp settled(std::uint64_t version) { return static_cast<Stamp>(version << 1); }

    std::atomic<Stamp>* _shared;
    std::atomic<Stamp> _ownCommit{0}; // odd while this process commits: what it wrote
};

} // namespace array
