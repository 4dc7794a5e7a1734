/// @file
/// Replaces a program's memory by one that counts what is live and fails when it is told to. For
/// one source file of a program.
#pragma once

#include <cstdlib>
#include <new>

namespace failing {

inline long live = 0;           // allocations that were not freed yet
inline long untilFailure = -1;  // how many more succeed; all of them when negative
inline bool failsForGood = false;
inline bool hasFailed = false;

inline void* allocate(std::size_t size) {
    if (untilFailure == 0) {
        hasFailed = true;
        if (!failsForGood) untilFailure = -1;
        return nullptr;
    }
    if (untilFailure > 0) --untilFailure;
    void* memory = std::malloc(size);
    if (memory != nullptr) ++live;
    return memory;
}

inline void release(void* memory) {
    if (memory != nullptr) --live;
    std::free(memory);
}

/// Does the work with allocation n failing, and with `forGood` all later ones; false when it throws
/// `std::bad_alloc`.
template <typename Work>
bool isDoneWithout(long n, bool forGood, const Work& work) {
    failsForGood = forGood;
    hasFailed = false;
    untilFailure = n;
    bool isDone = true;
    try {
        work();
    } catch (const std::bad_alloc&) {
        isDone = false;
    }
    untilFailure = -1;
    return isDone;
}

}  // namespace failing

// Not inlined: g++ takes an inlined `free` for a mistake where it sees the `new` alone.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* memory = failing::allocate(size)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    failing::release(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    failing::release(memory);
}
