#ifndef ARRAY_DESCRIPTION_RECEIVER_H
#define ARRAY_DESCRIPTION_RECEIVER_H

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

} // namespace array::description

#endif
