#pragma once

#include <cstdint>

namespace cli {

// The names of the engine's codes: DRAVDigest_e and DRAVAuth_e.
const char* digestText(std::uint16_t code);
const char* authText(std::uint16_t code);

} // namespace cli
