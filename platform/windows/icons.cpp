// Native build: icons from a resource library, and the system's sizes. An icon is a handle and the
// size that it was asked for; its picture is looked up and checked, but never drawn.
#include <cstring>
#include <optional>
#include <set>
#include <span>

#include "platform/live_windows.h"
#include "platform/resources/library.h"
#include "platform/resources/resource_image.h"
#include "platform/windows/windows_api.h"

namespace {

constexpr std::size_t kGroupHeaderBytes = 6;
constexpr std::size_t kGroupEntryBytes = 14;
constexpr std::uint16_t kGroupOfIcons = 1;
constexpr int kLargeIcon = 32;
constexpr int kSmallIcon = 16;
// The desktop that no one sees.
constexpr int kScreenWidth = 1024;
constexpr int kScreenHeight = 768;

// The icons that are loaded and not yet destroyed.
std::set<HICON>& LiveIcons() {
    static std::set<HICON> icons;
    return icons;
}

std::uint16_t WordAt(std::span<const std::byte> bytes, std::size_t at) {
    std::uint16_t word = 0;
    std::memcpy(&word, bytes.data() + at, sizeof word);
    return word;
}

// A side of 256 pixels stands as 0 in a group's entry.
int SideAt(std::span<const std::byte> bytes, std::size_t at) {
    const int side = std::to_integer<int>(bytes[at]);
    return side != 0 ? side : 256;
}

int Distance(int a, int b) {
    return a < b ? b - a : a - b;
}

// The number of the group's picture that comes nearest to a size, the first of several; none for a
// damaged group. A size of 0 takes the first picture as it is.
std::optional<std::uint32_t> NearestPicture(std::span<const std::byte> group, int width,
                                            int height) {
    if (group.size() < kGroupHeaderBytes || WordAt(group, 2) != kGroupOfIcons) return std::nullopt;
    const std::size_t count = WordAt(group, 4);
    if ((group.size() - kGroupHeaderBytes) / kGroupEntryBytes < count) return std::nullopt;
    std::optional<std::uint32_t> nearest;
    int best = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto entry = group.subspan(kGroupHeaderBytes + i * kGroupEntryBytes);
        const int off = (width != 0 ? Distance(SideAt(entry, 0), width) : 0) +
                        (height != 0 ? Distance(SideAt(entry, 1), height) : 0);
        if (nearest && off >= best) continue;
        nearest = WordAt(entry, 12);
        best = off;
    }
    return nearest;
}

}  // namespace

HANDLE LoadImageW(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags) {
    static ULONG_PTR lastHandle = 0x20000;
    if (type != IMAGE_ICON || (flags & ~LR_DEFAULTSIZE) != 0 || !IS_INTRESOURCE(name)) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    if ((flags & LR_DEFAULTSIZE) != 0) {
        if (width == 0) width = kLargeIcon;
        if (height == 0) height = kLargeIcon;
    }
    const auto group = platform::FindLibraryResource(
        module, platform::kResourceIconGroup,
        static_cast<std::uint32_t>(reinterpret_cast<ULONG_PTR>(name)));
    if (group.empty()) return nullptr;
    const auto picture = NearestPicture(group, width, height);
    if (!picture) {
        SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
        return nullptr;
    }
    if (platform::FindLibraryResource(module, platform::kResourceIcon, *picture).empty()) {
        return nullptr;
    }
    lastHandle += 2;
    return *LiveIcons().insert(reinterpret_cast<HICON>(lastHandle)).first;
}

BOOL DestroyIcon(HICON icon) {
    if (LiveIcons().erase(icon) > 0) return TRUE;
    SetLastError(ERROR_INVALID_CURSOR_HANDLE);
    return FALSE;
}

int GetSystemMetrics(int index) {
    switch (index) {
        case SM_CXSCREEN:
            return kScreenWidth;
        case SM_CYSCREEN:
            return kScreenHeight;
        case SM_CXVSCROLL:
            return 17;
        case SM_CXBORDER:
        case SM_CYBORDER:
            return 1;
        case SM_CXEDGE:
        case SM_CYEDGE:
            return 2;
        case SM_CXICON:
        case SM_CYICON:
            return kLargeIcon;
        case SM_CXSMICON:
        case SM_CYSMICON:
            return kSmallIcon;
        default:
            // 0 is all that tells of a failure.
            return 0;
    }
}

int CountDrawingObjects() {
    return static_cast<int>(LiveIcons().size());
}
