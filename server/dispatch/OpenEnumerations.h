// The enumerations whose results are pulled.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/String.h>

#include "server/dispatch/ObjectQueue.h"
#include "server/operation/MemoryBudget.h"
#include "server/operation/Operation.h"

namespace smisd {

// Who opened what; constant.
struct EnumerationTraits {
    Pegasus::String user;
    Pegasus::CIMNamespaceName nameSpace;
    Pulled kind = Pulled::instancesWithPath;
    bool includeClassOrigin = false;
    std::chrono::milliseconds timeBetweenPulls{0};
    std::size_t operationBytes = 0; // of memory, for what was asked
};

// An enumeration context.
struct PulledEnumeration {
    PulledEnumeration(std::string theId, const EnumerationTraits& theTraits,
                      MemoryBudget::Reservation theMemory)
        : id(std::move(theId)), traits(theTraits), memory(std::move(theMemory)),
          queue(theTraits.timeBetweenPulls) {}

    const std::string id; // what the client knows it by
    const EnumerationTraits traits;
    const MemoryBudget::Reservation memory; // for the queue and the operation
    ObjectQueue queue;
};

// Each has a thread of its own, which waits most of the time, so their number is limited, and a
// user with a name has half of them at most. It ends when its queue is closed. Thread-safe.
class OpenEnumerations {
public:
    // Fills the queue; what it throws is the error that ends the enumeration.
    using Producer = std::function<void(ObjectQueue& queue)>;

    explicit OpenEnumerations(unsigned limit, std::shared_ptr<MemoryBudget> memory =
                                                  std::make_shared<MemoryBudget>(defaultMemory))
        : _limit(limit), _memory(std::move(memory)) {}
    ~OpenEnumerations(); // closes all and waits for their producers
    OpenEnumerations(const OpenEnumerations&) = delete;
    OpenEnumerations& operator=(const OpenEnumerations&) = delete;

    // Throws CIM_ERR_SERVER_LIMITS_EXCEEDED when too many are open, or there is no memory for one
    // more.
    std::shared_ptr<PulledEnumeration> open(const EnumerationTraits& traits, Producer produce);

    // Throws CIM_ERR_INVALID_ENUMERATION_CONTEXT unless it is open and the user's own.
    std::shared_ptr<PulledEnumeration> find(const Pegasus::String& id, const Pegasus::String& user);

    unsigned count() const; // of those that are open

private:
    struct Entry {
        std::shared_ptr<PulledEnumeration> enumeration;
        std::thread thread;
    };

    void requireRoom(const Pegasus::String& user) const;
    void run(PulledEnumeration& enumeration, const Producer& produce);
    void joinEnded(std::list<std::thread> ended);

    const unsigned _limit;
    const std::shared_ptr<MemoryBudget> _memory;

    mutable std::mutex _mutex; // guards what follows
    std::condition_variable _left;
    std::map<std::string, Entry> _entries; // as long as their threads run
    std::list<std::thread> _ended;
};

} // namespace smisd
