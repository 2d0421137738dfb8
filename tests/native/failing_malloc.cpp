#include "tests/native/failing_malloc.h"

#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

AllocationFaults allocationFaults;

// What the C library keeps behind the public names.
extern "C" {
void* __libc_malloc(std::size_t cb);
void* __libc_calloc(std::size_t count, std::size_t cb);
void* __libc_realloc(void* block, std::size_t cb);
void __libc_free(void* block);
}

namespace {

bool Contains(const char* text, const char* part) {
    return text != nullptr && std::strstr(text, part) != nullptr;
}

// Code of templates that any library may have brought.
bool IsStandard(const Dl_info& place) {
    const char* const symbol = place.dli_sname;
    if (symbol == nullptr) return false;
    for (const char* prefix : {"_ZNSt", "_ZNKSt", "_ZSt", "_ZN9__gnu_cxx", "_ZNK9__gnu_cxx"}) {
        if (std::strncmp(symbol, prefix, std::strlen(prefix)) == 0) return true;
    }
    return false;
}

// The helpers that both builds share belong to whoever calls them.
bool IsHelper(const Dl_info& place) {
    if (!Contains(place.dli_fname, "libplatform.")) return false;
    for (const char* helper : {"5wtext", "ResourceText", "FormatInserts", "FullWidePath"}) {
        if (Contains(place.dli_sname, helper)) return true;
    }
    return false;
}

// The name is null for code that no exported function holds: the nearest one in front says nothing.
bool FindPlace(const void* address, Dl_info& place) {
    const char* const inside = static_cast<const char*>(address) - 1;  // the call before the return
    void* entry = nullptr;
    if (dladdr1(inside, &place, &entry, RTLD_DL_SYMENT) == 0 || place.dli_fbase == nullptr) {
        return false;
    }
    const auto* symbol = static_cast<const ElfW(Sym)*>(entry);
    const bool holds = place.dli_sname != nullptr && symbol != nullptr &&
                       inside < static_cast<const char*>(place.dli_saddr) + symbol->st_size;
    if (!holds) place.dli_sname = nullptr;
    return true;
}

// By the code that asked, the first on the stack that isn't the language's own.
bool IsOurs(const void* caller) {
    constexpr int kFrames = 24;
    void* frames[kFrames];
    const int count = backtrace(frames, kFrames);
    for (int i = static_cast<int>(std::find(frames, frames + count, caller) - frames); i < count;
         ++i) {
        Dl_info place{};
        if (!FindPlace(frames[i], place)) return false;
        if (IsStandard(place)) continue;
        // A function without a name, called by the language's own, is one of these.
        Dl_info next{};
        const bool isInside = i + 1 < count && FindPlace(frames[i + 1], next);
        if (place.dli_sname == nullptr && isInside && IsStandard(next)) continue;
        if (Contains(place.dli_fname, "libstdc++")) continue;
        for (const char* library : {"libMd.", "libBLx", "libPS.", "_test"}) {
            if (Contains(place.dli_fname, library)) return true;
        }
        // A function that is not exported belongs to the one around it.
        if (Contains(place.dli_fname, "libplatform.") && place.dli_sname == nullptr) continue;
        if (!IsHelper(place)) return false;
    }
    return false;
}

bool Fails(const void* caller) {
    // Not what finding out allocates itself.
    static bool asking = false;
    if (!allocationFaults.counts || asking) return false;
    asking = true;
    const bool ours = IsOurs(caller);
    asking = false;
    if (!ours) return false;
    const AllocationFaults& faults = allocationFaults;
    ++allocationFaults.made;
    const bool isBehind = faults.lasts && faults.made > faults.failAt;
    if (faults.failAt == 0 || (faults.made != faults.failAt && !isBehind)) return false;
    errno = ENOMEM;
    return true;
}

void* Counted(void* block) {
    if (block != nullptr) ++allocationFaults.alive;
    return block;
}

}  // namespace

extern "C" {
void* malloc(std::size_t cb) {
    return Fails(__builtin_return_address(0)) ? nullptr : Counted(__libc_malloc(cb));
}
void* calloc(std::size_t count, std::size_t cb) {
    return Fails(__builtin_return_address(0)) ? nullptr : Counted(__libc_calloc(count, cb));
}
void* realloc(void* block, std::size_t cb) {
    if (Fails(__builtin_return_address(0))) return nullptr;
    void* const moved = __libc_realloc(block, cb);
    return block == nullptr ? Counted(moved) : moved;
}
void free(void* block) {
    if (block != nullptr) --allocationFaults.alive;
    __libc_free(block);
}
}

void* operator new(std::size_t size) {
    if (!Fails(__builtin_return_address(0))) {
        if (void* block = Counted(__libc_malloc(size != 0 ? size : 1))) return block;
    }
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    if (Fails(__builtin_return_address(0))) return nullptr;
    return Counted(__libc_malloc(size != 0 ? size : 1));
}
void* operator new[](std::size_t size) {
    if (!Fails(__builtin_return_address(0))) {
        if (void* block = Counted(__libc_malloc(size != 0 ? size : 1))) return block;
    }
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
    free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    free(block);
}
void operator delete[](void* block) noexcept {
    free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    free(block);
}
