// What a process has taken of the processor: a measure that the load of the machine doesn't change.
// In the Windows build it is the time that has passed.
#pragma once

#include <ctime>

inline double ProcessSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}
