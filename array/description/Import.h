#pragma once

#include <functional>
#include <istream>

#include "array/Array.h"

namespace array::description {

// Fills an array that has no objects yet with what a description holds, in one change. Objects get
// their ids in the order of the text.
//
// Throws DescriptionError for a mistake in the description, and DRAVOperationFailedException for an
// array that has objects or cannot be changed; nothing is imported then. See read() for memory, for
// mistakes and for afterEach.
void importFrom(
    std::istream& text, Array& array, const std::function<void()>& afterEach = [] {});

} // namespace array::description
