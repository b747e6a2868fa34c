#pragma once

// Which mutant a process runs with; the copy of the sources that has them all includes it.

#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace mutants {

constexpr std::size_t NUMBERS = 4096;

// A byte per mutant in the file that ACCESS_MUTANTS_REACHED names; null without one.
inline volatile unsigned char* reachedBytes() {
    const char* file = std::getenv("ACCESS_MUTANTS_REACHED");
    const int descriptor = file == nullptr ? -1 : open(file, O_RDWR | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    void* bytes = mmap(nullptr, NUMBERS, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    close(descriptor);
    return bytes == MAP_FAILED ? nullptr : static_cast<unsigned char*>(bytes);
}

inline int chosen() {
    const char* number = std::getenv("ACCESS_MUTANT");
    return number == nullptr ? 0 : std::atoi(number);
}

// Whether this process runs with the mutant of that number; the environment is read once.
inline bool on(int number) {
    static const int switchedOn = chosen();
    static volatile unsigned char* const reached = reachedBytes();
    if (reached != nullptr)
        reached[number] = 1;
    return number == switchedOn;
}

} // namespace mutants
