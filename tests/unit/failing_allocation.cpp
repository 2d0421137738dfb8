// In a source of its own: beside its callers the compiler takes the pair below for a mismatch.
#include "tests/unit/failing_allocation.h"

#include <cstdlib>
#include <new>

std::size_t failingSize = 0;

void* operator new(std::size_t size) {
    if (failingSize != 0 && size == failingSize) {
        failingSize = 0;
        throw std::bad_alloc();
    }
    if (void* block = std::malloc(size != 0 ? size : 1)) return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size != 0 ? size : 1);
}
void operator delete(void* block) noexcept {
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
