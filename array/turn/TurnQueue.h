#ifndef ARRAY_TURN_TURN_QUEUE_H
#define ARRAY_TURN_TURN_QUEUE_H

#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

namespace array {

// Where threads queue up with requests of which one at a time is worked on, or many at once for
// about the same price: the thread whose turn comes works for all that wait by then.
template<class Request>
class TurnQueue {
public:
    // Returns when the request was in a batch for which some thread has called its `work`, which
    // must not throw. Requests are in a batch in the order in which they came.
    template<class Work>
    void submit(Request& request, Work&& work) {
        Place place{&request, false};
        std::unique_lock lock(_mutex);
        _waiting.push_back(&place);
        _changed.wait(lock, [&] { return place.isDone || !_isTaken; });
        if (place.isDone)
            return;

        _isTaken = true;
        const std::vector<Place*> places = std::exchange(_waiting, {});
        lock.unlock();
        std::vector<Request*> batch;
        for (const Place* each : places)
            batch.push_back(each->request);
        work(batch);
        lock.lock();
        for (Place* each : places)
            each->isDone = true;
        _isTaken = false;
        _changed.notify_all();
    }

private:
    struct Place {
        Request* request;
        bool isDone;
    };

    std::mutex _mutex;
    std::condition_variable _changed;
    std::vector<Place*> _waiting; // guarded by _mutex, as is all below
    bool _isTaken = false;
};

} // namespace array

#endif
