// PegasusCreateProvider when memory runs out.

#include <atomic>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <new>
#include <streambuf>
#include <utility>

#include <gtest/gtest.h>

#include "providers/frame/PegasusCreateProvider.h"

using namespace Pegasus;

namespace {

constexpr long NEVER = -1;

thread_local long allocationsUntilFailure = NEVER;
std::atomic<long> allocated;

} // namespace

void* operator new(std::size_t size) {
    if (allocationsUntilFailure != NEVER && allocationsUntilFailure-- == 0) {
        throw std::bad_alloc();
    }
    void* const memory = std::malloc(size);
    if (!memory) {
        throw std::bad_alloc();
    }
    ++allocated;
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    if (memory) {
        --allocated;
    }
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace {

// Swallows what is written to standard output, without memory of its own.
class Silence : std::streambuf {
public:
    Silence() : _previous(std::cout.rdbuf(this)) {}
    ~Silence() override { std::cout.rdbuf(_previous); }

private:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }

    std::streambuf* _previous;
};

// Makes a provider and deletes it again, while the allocation after so many fails. False if there
// was none so late.
bool failsAfter(long allocations, const String& name) {
    allocationsUntilFailure = allocations;
    try {
        const std::unique_ptr<CIMProvider> provider(PegasusCreateProvider(name));
        EXPECT_TRUE(provider);
    } catch (...) {
        allocationsUntilFailure = NEVER;
        throw;
    }
    return std::exchange(allocationsUntilFailure, NEVER) == NEVER;
}

TEST(AllocationFailureTest, PassesToTheCallerAndLeavesNothingBehind) {
    const Silence silence;
    for (const char* name : {"StorageHardwareIDManagementServiceProvider", "iSCSIPipesProvider"}) {
        const String providerName(name);
        failsAfter(NEVER, providerName); // what is made once only is made now

        int thrown = 0;
        bool failed = true;
        for (long allocations = 0; failed; ++allocations) {
            const long before = allocated;
            try {
                failed = failsAfter(allocations, providerName);
            } catch (const std::bad_alloc&) {
                ++thrown;
            }
            EXPECT_EQ(allocated, before) << name << " after " << allocations;
        }
        EXPECT_GT(thrown, 0) << name;
    }
}

} // namespace
