#include "server/dispatch/ObjectQueue.h"

#include <utility>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

using namespace Pegasus;

namespace smisd {

ObjectQueue::ObjectQueue(std::chrono::milliseconds timeBetweenPulls)
    : _timeBetweenPulls(timeBetweenPulls), _deadline(Clock::now() + timeBetweenPulls) {}

void ObjectQueue::limitProperties(const CIMPropertyList& properties) {
    const std::lock_guard lock(_mutex);
    _properties = properties;
}

void ObjectQueue::push(const PulledObject& object) {
    Lock lock(_mutex);
    if (!awaitOrClose(lock, [this] { return _objects.size() < maximumSize; })) {
        throw Abandoned();
    }
    _objects.push_back(object);
    _changed.notify_all();
}

void ObjectQueue::end(std::exception_ptr error) {
    const std::lock_guard lock(_mutex);
    _ended = true;
    _error = std::move(error);
    _changed.notify_all();
}

void ObjectQueue::awaitClose() {
    Lock lock(_mutex);
    awaitOrClose(lock, [] { return false; });
}

void ObjectQueue::beginPull() {
    const std::lock_guard lock(_mutex);
    if (_pulling) {
        throw CIMException(CIM_ERR_FAILED,
                           String("The enumeration context is in use by another request."));
    }
    _pulling = true;
}

void ObjectQueue::endPull() {
    const std::lock_guard lock(_mutex);
    _pulling = false;
    _deadline = Clock::now() + _timeBetweenPulls;
    _changed.notify_all();
}

std::optional<PulledObject> ObjectQueue::pop() {
    Lock lock(_mutex);
    awaitNext(lock);
    if (_objects.empty()) {
        throwError();
        return std::nullopt;
    }
    PulledObject object = std::move(_objects.front());
    _objects.pop_front();
    _changed.notify_all();
    return object;
}

bool ObjectQueue::atEnd() {
    Lock lock(_mutex);
    awaitNext(lock);
    return _objects.empty() && !_error;
}

void ObjectQueue::requireNoError() {
    Lock lock(_mutex);
    awaitNext(lock);
    if (_objects.empty()) {
        throwError();
    }
}

void ObjectQueue::throwError() const {
    if (_error) {
        std::rethrow_exception(_error);
    }
}

// Until there is an object, or none will come.
void ObjectQueue::awaitNext(Lock& lock) {
    _changed.wait(lock, [this] { return _closed || _ended || !_objects.empty(); });
    if (_closed) {
        throw CIMException(CIM_ERR_INVALID_ENUMERATION_CONTEXT,
                           String("Enumeration context closed when request received."));
    }
}

CIMPropertyList ObjectQueue::properties() const {
    const std::lock_guard lock(_mutex);
    return _properties;
}

void ObjectQueue::close() {
    const std::lock_guard lock(_mutex);
    _closed = true;
    _changed.notify_all();
}

bool ObjectQueue::isClosed() {
    const std::lock_guard lock(_mutex);
    return closeWhenLate();
}

// Returns false when the queue is closed before the producer is ready.
template<class Ready>
bool ObjectQueue::awaitOrClose(Lock& lock, Ready ready) {
    while (!closeWhenLate()) {
        if (ready()) {
            return true;
        }
        if (_pulling) {
            _changed.wait(lock);
        } else {
            _changed.wait_until(lock, _deadline);
        }
    }
    return false;
}

bool ObjectQueue::closeWhenLate() {
    _closed = _closed || (!_pulling && Clock::now() >= _deadline);
    return _closed;
}

} // namespace smisd
