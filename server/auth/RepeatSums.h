// Lines that clients cause again and again, summed, so that no client fills a disk with them.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <new>
#include <thread>
#include <utility>
#include <vector>

namespace smisd {

// The first event of a kind is to be written at once; those that follow within a period are
// counted, and the sum is written at its end. As long as there are any, the next period follows.
//
// So many kinds at most are told apart; the events of further ones are summed by a wider kind, and
// when there are as many of these too, all together by the default Kind.
//
// Thread-safe. Kind has a < and a default.
template<class Kind>
class RepeatSums {
public:
    using Clock = std::chrono::steady_clock;
    // Gets a kind and how many of it were counted.
    using Write = std::function<void(const Kind&, std::uint64_t)>;
    static constexpr std::chrono::seconds period{10};
    static constexpr std::size_t mostKinds = 256;

    // `write` is called by a thread that this has, and by the destructor for what is left.
    explicit RepeatSums(Write write, Clock::time_point (*now)() = Clock::now)
        : _write(std::move(write)), _now(now), _thread([this] { work(); }) {}
    ~RepeatSums() {
        {
            const std::lock_guard lock(_mutex);
            _ending = true;
        }
        _changed.notify_one();
        _thread.join();
        writeAll(takeSums([](const Sum&) { return true; }));
    }
    RepeatSums(const RepeatSums&) = delete;
    RepeatSums& operator=(const RepeatSums&) = delete;

    // Whether the caller is to write the event; else it was counted.
    bool isFirst(const Kind& kind, const Kind& wider) {
        const std::lock_guard lock(_mutex);
        const auto [found, isNew] = _sums.try_emplace(placeFor(kind, wider));
        if (!isNew) {
            ++found->second.count;
            return false;
        }
        found->second.end = _now() + period;
        if (_sums.size() == 1) {
            _changed.notify_one();
        }
        return true;
    }

    // Writes the sums of the periods that have ended, as the thread does each second.
    void writeEnded() {
        const std::lock_guard lock(_writing);
        const auto now = _now();
        writeAll(takeSums([now](const Sum& sum) { return sum.end <= now; }));
    }

private:
    struct Sum {
        std::uint64_t count = 0; // of events that were not written
        Clock::time_point end;   // of the period
    };
    using Counts = std::vector<std::pair<Kind, std::uint64_t>>;

    // The lock is held.
    Kind placeFor(const Kind& kind, const Kind& wider) const {
        if (_sums.size() < mostKinds || _sums.contains(kind)) {
            return kind;
        }
        return _sums.size() < 2 * mostKinds || _sums.contains(wider) ? wider : Kind();
    }

    // A kind that did not occur in its period is forgotten.
    template<class Chosen>
    Counts takeSums(Chosen chosen) {
        Counts counts;
        const std::lock_guard lock(_mutex);
        for (auto at = _sums.begin(); at != _sums.end();) {
            auto& [kind, sum] = *at;
            if (!chosen(sum)) {
                ++at;
            } else if (sum.count == 0) {
                at = _sums.erase(at);
            } else {
                counts.emplace_back(kind, std::exchange(sum.count, 0));
                sum.end = _now() + period;
                ++at;
            }
        }
        return counts;
    }

    void writeAll(const Counts& counts) {
        for (const auto& [kind, count] : counts) {
            _write(kind, count);
        }
    }

    void work() {
        std::unique_lock lock(_mutex);
        while (!_ending) {
            if (_sums.empty()) {
                _changed.wait(lock);
            } else if (!_changed.wait_for(lock, std::chrono::seconds(1), [&] { return _ending; })) {
                lock.unlock();
                try {
                    writeEnded();
                } catch (const std::bad_alloc&) { // the sums go on
                }
                lock.lock();
            }
        }
    }

    const Write _write;
    Clock::time_point (*const _now)();

    std::mutex _writing; // held by who takes sums and writes them

    std::mutex _mutex; // guards what follows
    std::condition_variable _changed;
    std::map<Kind, Sum> _sums;
    bool _ending = false;

    std::thread _thread; // last: it uses the others
};

} // namespace smisd
