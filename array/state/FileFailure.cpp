#include "array/state/FileFailure.h"

#include <cerrno>
#include <cstring>

#include "array/ErrorCode.h"

namespace array {

namespace {

struct Row {
    int error;
    ErrorCode code;
    const char* advice;
};

constexpr Row ROWS[] = {
    {EACCES, ErrorCode::StateUnreadable, " Look at its owner and mode."},
    {EEXIST, ErrorCode::StateExists, ""},
    {ENOSPC, ErrorCode::StateFull, " Make room on the file system and try again."},
    {EROFS, ErrorCode::StateUnreadable, " An array needs one that can be written."},
    {EDQUOT, ErrorCode::StateFull, " Make room on the file system and try again."},
};

constexpr Row OTHER = {0, ErrorCode::StateUnreadable, ""};

} // namespace

void failFile(const std::filesystem::path& file, int error) {
    const Row* found = &OTHER;
    for (const Row& row : ROWS)
        if (row.error == error)
            found = &row;
    fail(found->code, file.string() + ": " + std::strerror(error) + '.' + found->advice);
}

} // namespace array
