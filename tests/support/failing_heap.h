// A heap that counts the program's C++ allocations and makes one of them fail: linking
// failing_heap.cpp into a test replaces the global allocation functions. Counting runs
// only while armed, and only on the thread that armed it (another thread of the test,
// such as a dialog driver, allocates as usual). The allocation numbered `failAt` (from
// 1) gives null, which a plain new turns into std::bad_alloc.
#pragma once

#include <thread>

namespace tessellum::test {

struct FailingHeap {
    bool armed = false;
    long allocations = 0;  // counted since arming
    long live = 0;         // counted blocks not yet freed
    long failAt = 0;       // 0: none fails
    std::thread::id owner;

    // Counts the allocations of `thread`: by default the caller's, or that of a dialog
    // which the calling driver is about to give a command.
    void Arm(long failing, std::thread::id thread = std::this_thread::get_id()) {
        allocations = live = 0;
        failAt = failing;
        owner = thread;
        armed = true;
    }
    void Disarm() { armed = false; }
};

extern FailingHeap failingHeap;

}  // namespace tessellum::test
