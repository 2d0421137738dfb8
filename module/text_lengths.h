// The lengths of the fixed buffers, in units with their terminator.
#pragma once

#include <cstddef>

inline constexpr std::size_t kLabelLength = 128;      // a label, a name, a loaded string
inline constexpr std::size_t kPathLength = 260;       // a path
inline constexpr std::size_t kComposedLength = 4000;  // a composed text
