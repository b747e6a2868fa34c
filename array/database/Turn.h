#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>

#include "array/database/WalIndex.h"

namespace array {

// The process that has the writer's turn of an array.db, as the system lists it among its file
// locks: "process 4711 (arrayctl)". Nothing if none has, or one that this process cannot see.
std::optional<std::string> turnHolder(const std::filesystem::path& database);

// The holder, if one process keeps the turn for a second from now on and commits nothing; nothing
// as soon as that is not so.
std::optional<std::string> holderThatHangs(const std::filesystem::path& database,
                                           const WalIndex& index);

} // namespace array
