#pragma once

#include <cstdlib>
#include <functional>
#include <sys/types.h>

namespace array {

// How often a test kills its processes: ARRAY_CRASHES of the environment, or few enough for every
// day.
inline int crashes() {
    const char* const given = std::getenv("ARRAY_CRASHES");
    return given ? std::atoi(given) : 50;
}

// A process of its own that does `work` until it is killed or done; it ends with its parent.
class Child {
public:
    // What the child can say: one byte for each thing that was acknowledged to it.
    class Voice {
    public:
        explicit Voice(int descriptor) : _descriptor(descriptor) {}
        void acknowledge() const;

    private:
        const int _descriptor;
    };

    explicit Child(const std::function<void(const Voice&)>& work);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    // Waits until the child has acknowledged one more thing; false if it is gone instead.
    bool waitForAcknowledgement();

    // Stops it wherever it is; waits until it is stopped.
    void stopNow() const;

    // Kills it and waits until it is gone. False if it had come to an end by itself.
    bool killNow();

    // Waits until it is gone. True if it did all its work, false if something killed it.
    bool finish();

    // How much was acknowledged to it in its life; it must be gone.
    int acknowledged();

private:
    int waitForEnd();

    pid_t _process = -1; // -1: gone
    int _pipe = -1;
    int _heard = 0;
};

} // namespace array
