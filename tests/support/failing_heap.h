// A heap that counts the program's C++ allocations and makes one of them fail: linking
// failing_heap.cpp into a test replaces the global allocation functions. Counting runs only while
// armed, and only on the armed thread (by default the caller's; a dialog driver arms the dialog's).
// The allocation numbered `failAt` (from 1) gives null.
#pragma once

#include <thread>

namespace tessellum::test {

struct FailingHeap {
    bool armed = false;
    long allocations = 0, live = 0,
         failAt = 0;  // counted since arming; 0: none fails
    std::thread::id owner;

    void Arm(long failing, std::thread::id thread = std::this_thread::get_id()) {
        allocations = live = 0, failAt = failing, owner = thread, armed = true;
    }
    void Disarm() { armed = false; }
};

extern FailingHeap failingHeap;

}  // namespace tessellum::test
