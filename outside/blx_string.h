// BLxShared.dll: the string type of all closed interfaces. Its memory comes from one library, so
// that a string made in one module can be freed in another.
#pragma once

#include <cstddef>
#include <limits>
#include <new>
#include <string>

#include "outside/library_api.h"
#include "platform/system.h"

namespace BLxShared {
// Null when there is no memory.
BLXSHARED_API void* StringAllocate(std::size_t cb);
BLXSHARED_API void StringDeallocate(void* block);
// The bytes that an allocation of `cb` really takes, at least `cb`.
BLXSHARED_API std::size_t StringAllocHint(std::size_t cb);
}  // namespace BLxShared

template <typename T>
class BLxStringAllocator {
public:
    using value_type = T;

    BLxStringAllocator() noexcept = default;
    template <typename U>
    BLxStringAllocator(const BLxStringAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) throw std::bad_alloc();
        void* block = BLxShared::StringAllocate(count * sizeof(T));
        if (block == nullptr) throw std::bad_alloc();
        return static_cast<T*>(block);
    }
    void deallocate(T* block, std::size_t) noexcept { BLxShared::StringDeallocate(block); }

    friend bool operator==(const BLxStringAllocator&, const BLxStringAllocator&) { return true; }
};

using BLxWString = std::basic_string<WCHAR, std::char_traits<WCHAR>, BLxStringAllocator<WCHAR>>;
