#pragma once

#include <functional>
#include <istream>
#include <stdexcept>
#include <string>

#include "array/description/Entries.h"

namespace array::description {

// Thrown by a receiver that refuses an entry.
struct Refusal {
    std::string member; // JSON pointer within the entry, such as "/target"; empty: the whole entry
    std::string message;
};

// Takes what a description holds. The entries of one section come in the order of the file, and
// after all entries of the sections that they refer to. Each operation may throw Refusal; reading
// then ends with an error at that entry.
class Receiver {
public:
    virtual ~Receiver() = default;

    virtual void setHost(const std::string& name) = 0;
    virtual void setSystem(const std::string& name) = 0;
    virtual void add(const EndpointEntry& entry) = 0;
    virtual void add(const VolumeEntry& entry) = 0;
    virtual void add(const TargetEntry& entry) = 0;
    virtual void add(const InitiatorEntry& entry) = 0;
    virtual void add(const GrantEntry& entry) = 0;
    virtual void add(const LogicalUnitEntry& entry) = 0;
    virtual void add(const SessionEntry& entry) = 0;
};

// A mistake in a description, or a text that cannot be read to its end. what() is the culprit's
// JSON pointer (RFC 6901), ": " and what is wrong with it; the pointer is left out where the whole
// document is the culprit. Never holds a secret.
class DescriptionError : public std::runtime_error {
public:
    DescriptionError(const std::string& pointer, const std::string& message)
        : std::runtime_error(pointer.empty() ? message : pointer + ": " + message) {}
};

// Reads a description and hands it to a receiver, entry by entry.
//
// Memory stays bounded however long the text is, as long as each section stands after those that it
// refers to; entries that come before them are kept until the end of the text.
//
// Throws DescriptionError at the first mistake; the receiver has had what stood before it.
// afterEach is called after each entry that was read, so that progress can be shown.
void read(
    std::istream& text, Receiver& receiver, const std::function<void()>& afterEach = [] {});

} // namespace array::description
