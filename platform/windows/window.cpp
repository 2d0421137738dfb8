// Native build: windows by their handles: making them, their state, place and text.
#include <algorithm>
#include <utility>

#include "platform/windows/window_object.h"

using platform::FindWindowObject;
using platform::RequireWindow;

namespace {

HWND focus = nullptr;

// The screen position of the window's parent's client area.
POINT OriginOf(const platform::Window& window) {
    POINT origin = {0, 0};
    const platform::Window* at = &window;
    std::shared_ptr<platform::Window> parent;
    while (at->IsChild()) {
        parent = FindWindowObject(at->parent);
        if (parent == nullptr) break;
        origin.x += parent->place.left;
        origin.y += parent->place.top;
        at = parent.get();
    }
    return origin;
}

void Place(platform::Window& window, const RECT& place) {
    const bool sized = place.right - place.left != window.place.right - window.place.left ||
                       place.bottom - place.top != window.place.bottom - window.place.top;
    window.place = place;
    if (!sized) return;
    SendMessageW(window.handle, WM_SIZE, 0,
                 MAKELPARAM(static_cast<WORD>(place.right - place.left),
                            static_cast<WORD>(place.bottom - place.top)));
}

}  // namespace

void platform::ForgetFocusOf(HWND window) {
    if (focus == window) focus = nullptr;
}

HWND GetParent(HWND window) {
    const auto found = RequireWindow(window);
    return found != nullptr && (found->IsChild() || found->Has(WS_POPUP)) ? found->parent : nullptr;
}

int GetDlgCtrlID(HWND window) {
    const auto found = RequireWindow(window);
    return found != nullptr ? static_cast<int>(found->id) : 0;
}

BOOL EnableWindow(HWND window, BOOL enable) {
    const auto found = RequireWindow(window);
    if (found == nullptr) return FALSE;
    const bool wasDisabled = found->Has(WS_DISABLED);
    if (enable != FALSE && wasDisabled) {
        found->style &= ~WS_DISABLED;
        SendMessageW(window, WM_ENABLE, TRUE, 0);
    } else if (enable == FALSE && !wasDisabled) {
        found->style |= WS_DISABLED;
        if (focus == window) SetFocus(nullptr);
        SendMessageW(window, WM_ENABLE, FALSE, 0);
    }
    return wasDisabled;
}

BOOL IsWindowEnabled(HWND window) {
    const auto found = RequireWindow(window);
    return found != nullptr && !found->Has(WS_DISABLED);
}

BOOL ShowWindow(HWND window, int show) {
    const auto found = RequireWindow(window);
    if (found == nullptr) return FALSE;
    if (show != SW_HIDE && show != SW_SHOW) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    const bool wasVisible = found->Has(WS_VISIBLE);
    if (show != SW_HIDE) {
        found->style |= WS_VISIBLE;
    } else {
        found->style &= ~WS_VISIBLE;
        if (wasVisible && focus != nullptr && platform::IsWithin(focus, window)) {
            SetFocus(found->IsChild() ? found->parent : nullptr);
        }
    }
    return wasVisible;
}

BOOL IsWindowVisible(HWND window) {
    auto found = RequireWindow(window);
    while (found != nullptr) {
        if (!found->Has(WS_VISIBLE)) return FALSE;
        if (!found->IsChild()) return TRUE;
        found = FindWindowObject(found->parent);
    }
    return FALSE;
}

HWND SetFocus(HWND window) {
    if (window == focus) return focus;
    if (window != nullptr) {
        auto at = RequireWindow(window);
        if (at == nullptr) return nullptr;
        // A disabled window takes no focus, nor does anything within it.
        while (at != nullptr) {
            if (at->Has(WS_DISABLED)) return nullptr;
            at = at->IsChild() ? FindWindowObject(at->parent) : nullptr;
        }
    }
    const HWND earlier = std::exchange(focus, window);
    if (earlier != nullptr) {
        SendMessageW(earlier, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    }
    // The one who lost it may have moved it on.
    if (window != nullptr && focus == window) {
        SendMessageW(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(earlier), 0);
    }
    return earlier;
}

HWND GetFocus() {
    return focus;
}

LONG_PTR GetWindowLongPtrW(HWND window, int index) {
    const auto found = RequireWindow(window);
    if (found == nullptr) return 0;
    if (index == GWL_STYLE) return static_cast<LONG_PTR>(found->style);
    if (found->IsDialog() && index >= 0) return platform::GetDialogNumber(*found, index);
    SetLastError(ERROR_INVALID_INDEX);
    return 0;
}

LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value) {
    const auto found = RequireWindow(window);
    if (found == nullptr) return 0;
    if (index == GWL_STYLE) {
        return static_cast<LONG_PTR>(std::exchange(found->style, static_cast<DWORD>(value)));
    }
    if (found->IsDialog() && index >= 0) return platform::SetDialogNumber(*found, index, value);
    SetLastError(ERROR_INVALID_INDEX);
    return 0;
}

BOOL SetWindowContextHelpId(HWND window, DWORD id) {
    const auto found = RequireWindow(window);
    if (found == nullptr) return FALSE;
    found->helpId = id;
    return TRUE;
}

DWORD GetWindowContextHelpId(HWND window) {
    const auto found = RequireWindow(window);
    return found != nullptr ? found->helpId : 0;
}

BOOL GetWindowRect(HWND window, RECT* rect) {
    const auto found = RequireWindow(window);
    if (found == nullptr) return FALSE;
    const POINT origin = OriginOf(*found);
    *rect = {origin.x + found->place.left, origin.y + found->place.top,
             origin.x + found->place.right, origin.y + found->place.bottom};
    return TRUE;
}

BOOL GetClientRect(HWND window, RECT* rect) {
    const auto found = RequireWindow(window);
    if (found == nullptr) return FALSE;
    *rect = {0, 0, found->place.right - found->place.left, found->place.bottom - found->place.top};
    return TRUE;
}

BOOL SetWindowPos(HWND window, HWND, int x, int y, int width, int height, UINT flags) {
    const auto found = RequireWindow(window);
    if (found == nullptr) return FALSE;
    constexpr UINT kKnown =
        SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
    if ((flags & SWP_NOZORDER) == 0 || (flags & ~kKnown) != 0) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    const RECT& old = found->place;
    const int left = (flags & SWP_NOMOVE) != 0 ? old.left : x;
    const int top = (flags & SWP_NOMOVE) != 0 ? old.top : y;
    const int across = (flags & SWP_NOSIZE) != 0 ? old.right - old.left : width;
    const int down = (flags & SWP_NOSIZE) != 0 ? old.bottom - old.top : height;
    Place(*found, {left, top, left + std::max(across, 0), top + std::max(down, 0)});
    return TRUE;
}

BOOL InvalidateRect(HWND window, const RECT*, BOOL) {
    return RequireWindow(window) != nullptr;
}

BOOL UpdateWindow(HWND window) {
    return RequireWindow(window) != nullptr;
}

BOOL RedrawWindow(HWND window, const RECT* rect, HANDLE region, UINT flags) {
    constexpr UINT kKnown = RDW_INVALIDATE | RDW_INTERNALPAINT | RDW_UPDATENOW;
    if (rect != nullptr || region != nullptr || (flags & ~kKnown) != 0) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    return RequireWindow(window) != nullptr;
}

BOOL SetWindowTextW(HWND window, LPCWSTR text) {
    return static_cast<BOOL>(SendMessageW(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)));
}

HWND GetDlgItem(HWND dialog, int id) {
    const auto found = RequireWindow(dialog);
    if (found == nullptr) return nullptr;
    for (const HWND child : found->children) {
        if (FindWindowObject(child)->id == id) return child;
    }
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND control = GetDlgItem(dialog, id);
    return control != nullptr ? SendMessageW(control, message, wParam, lParam) : 0;
}

UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR buffer, int cch) {
    if (buffer == nullptr || cch <= 0) return 0;
    *buffer = 0;
    return static_cast<UINT>(SendDlgItemMessageW(dialog, id, WM_GETTEXT, static_cast<WPARAM>(cch),
                                                 reinterpret_cast<LPARAM>(buffer)));
}

BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text) {
    return static_cast<BOOL>(
        SendDlgItemMessageW(dialog, id, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)));
}

HCURSOR LoadCursorW(HINSTANCE module, LPCWSTR name) {
    // The system's cursors are shared and have their number for a handle here.
    if (module != nullptr || (name != IDC_ARROW && name != IDC_WAIT)) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    return reinterpret_cast<HCURSOR>(const_cast<WCHAR*>(name));
}

HCURSOR SetCursor(HCURSOR cursor) {
    static HCURSOR current = LoadCursorW(nullptr, IDC_ARROW);
    return std::exchange(current, cursor);
}

BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes) {
    return classes != nullptr && classes->dwSize == sizeof(INITCOMMONCONTROLSEX);
}
