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

    void Arm(long failing) {
        allocations = live = 0;
        failAt = failing;
        owner = std::this_thread::get_id();
        armed = true;
    }
    void Disarm() { armed = false; }
};

extern FailingHeap failingHeap;

}  // namespace tessellum::test
