#include "server/dispatch/OpenEnumerations.h"

#include <algorithm>
#include <random>
#include <utility>

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include "server/operation/Utf8.h"

using namespace Pegasus;

namespace smisd {
namespace {

// One that a client cannot guess, and that did not exist before the server was started anew.
std::string newId() {
    std::random_device random;
    return std::to_string((std::uint64_t{random()} << 32) | random());
}

// The objects that wait to be pulled, and the stack of the thread that makes them.
constexpr std::size_t enumerationBytes = 512 * 1024;

[[noreturn]] void failTooMany(const char* whose) {
    throw CIMException(CIM_ERR_SERVER_LIMITS_EXCEEDED,
                       String(whose) + String("; close one, or wait until one has timed out."));
}

} // namespace

OpenEnumerations::~OpenEnumerations() {
    std::unique_lock lock(_mutex);
    for (auto& [id, entry] : _entries) {
        entry.enumeration->queue.close();
    }
    _left.wait(lock, [this] { return _entries.empty(); });
    std::list<std::thread> ended = std::move(_ended);
    lock.unlock();
    joinEnded(std::move(ended));
}

std::shared_ptr<PulledEnumeration> OpenEnumerations::open(const EnumerationTraits& traits,
                                                          Producer produce) {
    std::unique_lock lock(_mutex);
    requireRoom(traits.user);
    MemoryBudget::Reservation memory(*_memory, toUtf8(traits.user));
    if (!memory.resize(enumerationBytes + traits.operationBytes)) {
        failTooMany("There is no memory for another enumeration");
    }
    auto enumeration = std::make_shared<PulledEnumeration>(newId(), traits, std::move(memory));
    Entry& entry = _entries[enumeration->id];
    entry.enumeration = enumeration;
    try {
        entry.thread = std::thread(
            [this, enumeration, produce = std::move(produce)] { run(*enumeration, produce); });
    } catch (...) {
        _entries.erase(enumeration->id);
        throw;
    }
    std::list<std::thread> ended = std::exchange(_ended, {});
    lock.unlock();
    joinEnded(std::move(ended));
    return enumeration;
}

void OpenEnumerations::requireRoom(const String& user) const {
    if (_entries.size() >= _limit) {
        failTooMany("Too many enumerations are open");
    }
    const auto own = std::count_if(_entries.begin(), _entries.end(), [&](const auto& entry) {
        return entry.second.enumeration->traits.user == user;
    });
    if (user.size() > 0 && own >= (_limit + 1) / 2) {
        failTooMany("Too many enumerations of this user are open");
    }
}

std::shared_ptr<PulledEnumeration> OpenEnumerations::find(const String& id, const String& user) {
    const std::lock_guard lock(_mutex);
    const auto found = _entries.find(toUtf8(id));
    if (found == _entries.end() || found->second.enumeration->traits.user != user ||
        found->second.enumeration->queue.isClosed()) {
        throw CIMException(CIM_ERR_INVALID_ENUMERATION_CONTEXT, String("Context undefined."));
    }
    return found->second.enumeration;
}

// The thread of one enumeration.
void OpenEnumerations::run(PulledEnumeration& enumeration, const Producer& produce) {
    std::exception_ptr error;
    try {
        produce(enumeration.queue);
    } catch (...) {
        error = std::current_exception();
    }
    enumeration.queue.end(error);
    enumeration.queue.awaitClose();
    const std::lock_guard lock(_mutex);
    const auto entry = _entries.find(enumeration.id);
    _ended.push_back(std::move(entry->second.thread));
    _entries.erase(entry);
    _left.notify_all();
}

void OpenEnumerations::joinEnded(std::list<std::thread> ended) {
    for (std::thread& thread : ended) {
        thread.join();
    }
}

unsigned OpenEnumerations::count() const {
    const std::lock_guard lock(_mutex);
    return static_cast<unsigned>(_entries.size());
}

} // namespace smisd
