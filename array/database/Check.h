#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "array/model/Snapshot.h"

namespace array {

// What is wrong with an array.db, one line of text each: first with the file, then, if it can be
// read, with its content. Throws DRAVOperationFailedException if it cannot be opened at all.
std::vector<std::string> findDamage(const std::filesystem::path& database);

// What of a snapshot breaks the array's rules.
std::vector<std::string> findBrokenRules(const Snapshot& snapshot);

} // namespace array
