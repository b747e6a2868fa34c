#pragma once

#include <cstddef>

#include "engine/Export.h"

// What an engine may define to tell a server why it cannot do its work: why changes are refused, or
// what they wait for. An engine that doesn't is taken to be well as long as it can be read.
//
// Writes at most `size` bytes of UTF-8, without a zero at their end, and returns how many; 0: all
// is well. Returns within two seconds, whatever hangs. From any thread.
extern "C" DRAV_EXPORT __attribute__((weak)) std::size_t
DRAVWhyNotHealthy(char* text, std::size_t size) noexcept;
