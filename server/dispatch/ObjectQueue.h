// The results of an enumeration between the thread that makes them and the requests that pull them.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>

namespace smisd {

// An instance and its path, or a path alone.
struct PulledObject {
    Pegasus::CIMObjectPath path;
    Pegasus::CIMInstance instance;
};

// Thrown at the producer when nobody will pull any more.
class Abandoned : public std::exception {
public:
    const char* what() const noexcept override { return "the enumeration was abandoned"; }
};

// Holds few objects: the producer waits until they are pulled. When no request pulls for the time
// that the client may take between two of them, the queue closes. Thread-safe.
class ObjectQueue {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::size_t maximumSize = 100;

    explicit ObjectQueue(std::chrono::milliseconds timeBetweenPulls);

    // Producer

    // Of the instances that follow, what is to be shown.
    void limitProperties(const Pegasus::CIMPropertyList& properties);
    // Waits for room. Throws Abandoned once the queue is closed.
    void push(const PulledObject& object);
    // There are no more objects, perhaps because of an error.
    void end(std::exception_ptr error);
    // Returns once the queue is closed.
    void awaitClose();

    // Requests

    // One at a time: throws CIM_ERR_FAILED when another one is pulling.
    void beginPull();
    // From now on the client's time runs.
    void endPull();

    // Waits for the next object; nothing at the end. Throws the producer's error, and
    // CIM_ERR_INVALID_ENUMERATION_CONTEXT when the queue is closed.
    std::optional<PulledObject> pop();
    // Wait until it is known whether there are more objects, or an error.
    bool atEnd();
    void requireNoError(); // throws it
    Pegasus::CIMPropertyList properties() const;

    void close();
    // By close(), or because the client took too long.
    bool isClosed();

private:
    using Lock = std::unique_lock<std::mutex>;

    void awaitNext(Lock& lock);
    void throwError() const;
    template<class Ready>
    bool awaitOrClose(Lock& lock, Ready ready);
    bool closeWhenLate();

    const std::chrono::milliseconds _timeBetweenPulls;

    mutable std::mutex _mutex; // guards what follows
    std::condition_variable _changed;
    std::deque<PulledObject> _objects;
    Pegasus::CIMPropertyList _properties;
    bool _ended = false;
    std::exception_ptr _error; // that ended it
    bool _closed = false;
    bool _pulling = false;
    Clock::time_point _deadline; // of the next pull, while none is in progress
};

} // namespace smisd
