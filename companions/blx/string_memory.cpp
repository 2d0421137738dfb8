#include <cstdlib>

#include "outside/blx_string.h"

namespace BLxShared {

void* StringAllocate(std::size_t cb) {
    return std::malloc(cb != 0 ? cb : 1);
}

void StringDeallocate(void* block) {
    std::free(block);
}

std::size_t StringAllocHint(std::size_t cb) {
    constexpr std::size_t kGrain = 16;
    return (cb + kGrain - 1) / kGrain * kGrain;
}

}  // namespace BLxShared
