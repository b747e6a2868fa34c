#pragma once

#include <cstddef>
#include <fstream>
#include <sched.h>
#include <string>
#include <sys/mount.h>

#include "tests/array/ArrayFixture.h"

namespace array {

// A file system of its own in memory, which only this process and its children see. Only root may
// have one.
class SmallFileSystem {
public:
    explicit SmallFileSystem(std::size_t kibibytes)
        : _options("mode=0700,nr_inodes=64,size=" + std::to_string(kibibytes) + "k") {
        // Mounts of this process are not to be seen outside.
        _isThere = unshare(CLONE_NEWNS) == 0 &&
                   mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                   mount("tmpfs", path().c_str(), "tmpfs", 0, _options.c_str()) == 0;
    }
    SmallFileSystem(const SmallFileSystem&) = delete;
    SmallFileSystem& operator=(const SmallFileSystem&) = delete;
    ~SmallFileSystem() {
        if (_isThere) {
            umount2(path().c_str(), MNT_DETACH);
        }
    }

    // False if this process may not have one.
    bool isThere() const { return _isThere; }
    const fs::path& path() const { return _place.path(); }

    void makeReadOnly() {
        ASSERT_EQ(mount(nullptr, path().c_str(), nullptr, MS_REMOUNT | MS_RDONLY, _options.c_str()),
                  0);
    }

    // Leaves no room for another byte; for another file or directory; gives the room back.
    void fill() {
        fs::create_directory(ballast());
        std::ofstream file(ballast() / "bytes", std::ios::binary);
        while (file.put('x').flush()) {
        }
    }
    void fillWithFiles() {
        fs::create_directory(ballast());
        for (int i = 0; std::ofstream(ballast() / std::to_string(i)); ++i) {
        }
    }
    void empty() { fs::remove_all(ballast()); }

private:
    fs::path ballast() const { return path() / "ballast"; }

    TemporaryDirectory _place;
    const std::string _options;
    bool _isThere = false;
};

} // namespace array
