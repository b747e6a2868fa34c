// A mistake in a MOF file.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace smisd {

// what() is "FILE:LINE:COLUMN: TEXT", where TEXT says what was expected there. Lines and columns
// count from 1; columns in bytes.
class MofError : public std::runtime_error {
public:
    MofError(const std::string& file, size_t line, size_t column, const std::string& text)
        : std::runtime_error(file + ":" + std::to_string(line) + ":" + std::to_string(column) +
                             ": " + text) {}
};

} // namespace smisd
