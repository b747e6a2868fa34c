// What the C library does with memory that was freed.
#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

namespace smisd {

// Gives freed memory to the system, on a thread of its own, since that takes milliseconds. Bodies
// and the like are given back at once from now on, and threads share few pools. Thread-safe.
class FreedMemory {
public:
    FreedMemory();
    ~FreedMemory();
    FreedMemory(const FreedMemory&) = delete;
    FreedMemory& operator=(const FreedMemory&) = delete;

    // Does so soon, and returns at once.
    void giveToSystem();

private:
    void work();

    std::mutex _mutex; // guards what follows
    std::condition_variable _changed;
    bool _wanted = false;
    bool _ending = false;
    std::thread _thread;
};

} // namespace smisd
