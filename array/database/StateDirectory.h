#pragma once

#include <filesystem>

namespace array {

// The files of a state directory.
inline std::filesystem::path databaseIn(const std::filesystem::path& directory) {
    return directory / "array.db";
}
inline std::filesystem::path eventsIn(const std::filesystem::path& directory) {
    return directory / "events.jsonl";
}

// Throws DRAVOperationFailedException, with advice, unless this is a directory of this process's
// user that lets nobody else in.
void checkStateDirectory(const std::filesystem::path& directory);

// Makes the directory, with mode 0700, unless it is there. Its parent must be there.
void makeStateDirectory(const std::filesystem::path& directory);

// Makes the content of a file permanent. Throws DRAVOperationFailedException.
void syncFile(const std::filesystem::path& file);

// Makes permanent what was made, renamed or removed in a directory: without it, a loss of power may
// take that back. Throws DRAVOperationFailedException.
void syncDirectory(const std::filesystem::path& directory);

} // namespace array
