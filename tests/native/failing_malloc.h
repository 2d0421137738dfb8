// The allocation that fails on demand, and what is alive: for programs that link
// failing_malloc.cpp. It stands in front of malloc and operator new of the whole process.
// Allocations of the product and of its libraries fail; those of the layer that stands for the
// system, whose calls have failures of their own, and of the system's libraries don't.
#pragma once

#include <cstddef>

struct AllocationFaults {
    std::size_t made = 0;    // that could fail, since it was set to 0
    std::size_t failAt = 0;  // the number of the one that fails, counted from 1; 0 for none
    bool lasts = false;      // and all behind it
    bool counts = false;
    long alive = 0;
};
extern AllocationFaults allocationFaults;
