#include "array/database/Turn.h"

#include <algorithm>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <sys/stat.h>
#include <thread>

namespace array {

namespace {

constexpr auto patience = std::chrono::seconds(1);
constexpr auto interval = std::chrono::milliseconds(20);

// The byte of array.db-shm that SQLite locks for who writes.
constexpr std::uint64_t turnByte = 120;

// A line of /proc/locks, such as "1: POSIX  ADVISORY  WRITE 4711 fe:00:1234 120 120": the process,
// if it has the turn; else 0. The file is known by its number alone, because the device of a file
// that is listed is not always the one that stat tells.
int holderIn(const std::string& line, ino_t file) {
    int process = 0;
    std::uint64_t number = 0;
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    return std::sscanf(line.c_str(),
                       "%*s POSIX ADVISORY WRITE %d %*x:%*x:%" SCNu64 " %" SCNu64 " %" SCNu64,
                       &process, &number, &first, &last) == 4 &&
                   number == file && first <= turnByte && turnByte <= last
               ? process
               : 0;
}

std::string nameOf(int process) {
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
    std::ranges::replace_if(
        name, [](char c) { return c < ' ' || c > '~'; }, '?');
    return "process " + std::to_string(process) + (name.empty() ? "" : " (" + name + ")");
}

} // namespace

std::optional<std::string> turnHolder(const std::filesystem::path& database) {
    struct stat status {};
    if (stat((database.string() + "-shm").c_str(), &status) != 0) {
        return std::nullopt;
    }
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        if (const int process = holderIn(line, status.st_ino); process > 0) {
            return nameOf(process);
        }
    }
    return std::nullopt;
}

std::optional<std::string> holderThatHangs(const std::filesystem::path& database,
                                           const WalIndex& index) {
    const std::optional<std::string> holder = turnHolder(database);
    const WalIndex::Stamp stamp = index.stamp();
    const auto end = std::chrono::steady_clock::now() + patience;
    while (holder && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(interval);
        if (index.stamp() != stamp || turnHolder(database) != holder) {
            return std::nullopt;
        }
    }
    return holder;
}

} // namespace array
