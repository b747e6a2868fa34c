// Threads that carry operations out.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace smisd {

// Runs jobs in the order in which they come, a fixed number at a time. A job that waits for its
// client says so and does not count meanwhile, so that slow clients keep no others waiting; there
// are as many threads as jobs that run or wait. Thread-safe.
class WorkerPool {
public:
    using Job = std::function<void()>;

    explicit WorkerPool(unsigned workers);
    ~WorkerPool(); // as join()
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // What a job throws ends the program.
    void post(Job job);

    // In a job: runs `wait`, which must not throw, and returns when it has returned and a worker is
    // free again. Jobs that go on take precedence over jobs that begin.
    void whileWaiting(const std::function<void()>& wait);

    // The jobs that run now.
    unsigned running() const;

    // Waits until all jobs have ended, and ends the threads. No job is posted afterwards.
    void join();

private:
    void work();
    bool canBegin() const; // the first job
    void startThreadIfNeeded();
    void wakeForNextJob();

    const unsigned _workers;

    mutable std::mutex _mutex; // guards what follows
    std::condition_variable _jobPosted;
    std::condition_variable _workerFree;
    std::deque<Job> _jobs;
    std::vector<std::thread> _threads; // once started, they stay
    unsigned _running = 0;
    unsigned _idle = 0;      // threads without a job
    unsigned _returning = 0; // jobs that have waited and want to go on
    bool _ending = false;
};

} // namespace smisd
