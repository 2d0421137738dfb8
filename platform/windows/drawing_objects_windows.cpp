// Windows build: the process's table of drawing objects, since GetGuiResources counts nothing under
// Wine.
#include "platform/live_windows.h"

namespace {

// An entry of the table that the process environment block leads to (GdiSharedHandleTable), as
// kernel debuggers show it. One that is free has no type.
struct DrawingObject {
    std::uint64_t object;
    std::uint32_t owner;  // the process
    std::uint16_t unique;
    std::uint8_t type;
    std::uint8_t flags;
    std::uint64_t user;
};
static_assert(sizeof(DrawingObject) == 24);
constexpr std::size_t kTableInBlock = 0xF8;
constexpr std::size_t kEntries = 16384;  // more under Windows, whose first ones are as good

}  // namespace

int CountDrawingObjects() {
    using BlockOfProcess = const std::byte*(NTAPI*)();
    const auto find = reinterpret_cast<BlockOfProcess>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb"));
    const std::byte* block = find();
    const auto* table = *reinterpret_cast<const DrawingObject* const*>(block + kTableInBlock);
    int count = 0;
    for (std::size_t entry = 0; table != nullptr && entry < kEntries; ++entry) {
        const std::uint32_t owner = table[entry].owner & 0xFFFF;
        if (table[entry].type != 0 && (owner == 0 || owner == (GetCurrentProcessId() & 0xFFFF))) {
            ++count;
        }
    }
    return count;
}

int CountOpenHandles() {
    DWORD count = 0;
    return GetProcessHandleCount(GetCurrentProcess(), &count) ? static_cast<int>(count) : -1;
}
