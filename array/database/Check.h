#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace array {

// By what array.db-wal may grow while the array is looked at for damage, in bytes.
constexpr std::uintmax_t usualLogGrowth = 64 << 20;

// What is wrong with an array.db, one line of text each: first with the file, then, if it can be
// read, with its content. Throws DRAVOperationFailedException if it cannot be opened at all, and
// with ErrorCode::StateBusy if the log grows by more.
std::vector<std::string> findDamage(const std::filesystem::path& database,
                                    std::uintmax_t logGrowth = usualLogGrowth);

} // namespace array
