#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace array {

// What is wrong with an array.db, one line of text each: first with the file, then, if it can be
// read, with its content. Throws DRAVOperationFailedException if it cannot be opened at all.
std::vector<std::string> findDamage(const std::filesystem::path& database);

} // namespace array
