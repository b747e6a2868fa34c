#include "array/state/FileFailure.h"

#include "tests/array/ArrayFixture.h"

#include <cerrno>

namespace array {
namespace {

TEST(FileFailure, SaysWhatToDoAboutAFileThatMayNotBeOpened) {
    const Failure failure = failureOf([] { failFile("/srv/array.db", EACCES); });
    EXPECT_EQ(failure.code, ErrorCode::StateUnreadable);
    EXPECT_EQ(failure.message, "/srv/array.db: Permission denied. Look at its owner and mode.");
}

} // namespace
} // namespace array
