#pragma once

#include <filesystem>
#include <utility>

#include <SQLiteCpp/Exception.h>

namespace array {

// Throws DRAVOperationFailedException for a system call that failed with an errno, of a file of the
// array or of its directory: ErrorCode::StateExists, StateFull, StateFailed or StateUnreadable,
// with the path, what failed if that is given, what the system says, and what to do about it.
[[noreturn]] void failFile(const std::filesystem::path& path, int error, const char* what = "");

// Throws DRAVOperationFailedException for a failure of SQLite: with the file, what SQLite says, and
// what to do about it.
[[noreturn]] void failSqlite(const SQLite::Exception& failure, const std::filesystem::path& file);

// Returns what `work` returns.
template<class Work>
decltype(auto) withSqlite(const std::filesystem::path& file, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const SQLite::Exception& failure) {
        failSqlite(failure, file);
    }
}

} // namespace array
