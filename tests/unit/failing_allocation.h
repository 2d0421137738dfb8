// An allocation that fails on demand, for programs that link failing_allocation.cpp.
#pragma once

#include <cstddef>

// The next allocation of this size fails, and the size becomes 0; none fails for 0.
extern std::size_t failingSize;
