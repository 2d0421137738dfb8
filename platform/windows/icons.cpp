// Native build: icons from a resource library, and the system's sizes. An icon is a handle; that
// the library has one of its number is all that is looked up.
#include <set>

#include "platform/live_windows.h"
#include "platform/resources/library.h"
#include "platform/resources/resource_image.h"
#include "platform/windows/system_names.h"
#include "platform/windows/windows_api.h"

namespace {

// The desktop that no one sees.
constexpr int kScreenWidth = 1024;
constexpr int kScreenHeight = 768;

// The icons that are loaded and not yet destroyed.
std::set<HICON>& LiveIcons() {
    static std::set<HICON> icons;
    return icons;
}

}  // namespace

HANDLE LoadImageW(HINSTANCE module, LPCWSTR name, UINT type, int, int, UINT flags) {
    static ULONG_PTR lastHandle = 0x20000;
    if (type != IMAGE_ICON || (flags & ~LR_DEFAULTSIZE) != 0 || !IS_INTRESOURCE(name)) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    const auto id = static_cast<std::uint32_t>(reinterpret_cast<ULONG_PTR>(name));
    if (platform::FindLibraryResource(module, platform::kResourceIconGroup, id).empty()) {
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
        case SM_CXSMICON:
        case SM_CYSMICON:
            return 16;
        default:
            // 0 is all that tells of a failure.
            return 0;
    }
}

int CountDrawingObjects() {
    return static_cast<int>(LiveIcons().size());
}
