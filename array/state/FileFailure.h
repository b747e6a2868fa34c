#ifndef ARRAY_STATE_FILE_FAILURE_H
#define ARRAY_STATE_FILE_FAILURE_H

#include <filesystem>

namespace array {

// Throws DRAVOperationFailedException for a system call of a file of the array that failed with an
// errno: ErrorCode::StateExists, StateFull or StateUnreadable, with the file and what the system
// says.
[[noreturn]] void failFile(const std::filesystem::path& file, int error);

} // namespace array

#endif
