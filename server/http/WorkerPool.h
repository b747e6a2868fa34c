// Threads that carry operations out.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace smisd {

// Runs jobs, a fixed number at a time. Users take turns, and one with a name has half of the
// workers at most, and no more than there are processors, so that nobody keeps the others waiting;
// a user's own jobs begin in the order in which they come. A job that waits for its client says so
// and does not count meanwhile; there are as many threads as jobs that run or wait. Thread-safe.
class WorkerPool {
public:
    using Job = std::function<void()>;

    explicit WorkerPool(unsigned workers);
    ~WorkerPool(); // as join()
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // What a job throws ends the program. Without a name all are one user, who may have all
    // workers.
    void post(Job job, const std::string& user = {});

    // In a job: runs `wait`, which must not throw, and returns when it has returned and a worker is
    // free again. Jobs that go on take precedence over jobs that begin. Within such a wait, another
    // one is a part of it.
    void whileWaiting(const std::function<void()>& wait);

    // The jobs that run now.
    unsigned running() const;

    // Waits until all jobs have ended, and ends the threads. No job is posted afterwards.
    void join();

private:
    // What a user has in the pool.
    struct Share {
        unsigned most = 0; // of its jobs at once
        std::deque<Job> jobs;
        unsigned running = 0;
        unsigned waiting = 0;   // for their clients
        unsigned returning = 0; // have waited and want to go on
        std::condition_variable mayReturn{};
    };
    using Shares = std::map<std::string, Share>;

    void enqueue(Shares::iterator share, Job job);
    void work();
    bool hasRoom(const Share& share) const;
    unsigned awaited() const;
    Shares::iterator next();
    void startThreadIfNeeded();
    void wakeForNextJob();
    void begin(Share& share);
    void end(Share& share);
    void wakeReturning();
    void forgetIfUnused(Shares::iterator share);

    const unsigned _workers;

    mutable std::mutex _mutex; // guards what follows
    std::condition_variable _jobPosted;
    Shares _shares; // of users who have any job
    std::list<Shares::iterator>
        _turns;                        // of users with jobs that have not begun, the next one first
    std::vector<std::thread> _threads; // once started, they stay
    unsigned _running = 0;
    unsigned _idle = 0; // threads without a job
    bool _ending = false;
};

} // namespace smisd
