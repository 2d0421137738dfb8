// Native build: windows made with CreateWindowExW, their texts and the state of their controls.
#include "platform/windows/windows_api.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/wtext.h"

namespace {

enum class eClass { Static, Button, Edit, ComboBox };

struct Window {
    eClass kind;
    HWND parent;
    int id;
    bool enabled;
    bool child;
    RECT rect;
    WText text;
    WPARAM check = BST_UNCHECKED;
    std::vector<WText> items;
    LRESULT selected = CB_ERR;
    std::vector<HWND> children;
};

class WindowTable {
public:
    HWND Add(std::unique_ptr<Window> window) {
        // Handles are numbers, never addresses, so that a stale one is told from a live one.
        nextHandle_ += 2;
        const auto handle = reinterpret_cast<HWND>(nextHandle_);
        windows_[handle] = std::move(window);
        return handle;
    }
    Window* Find(HWND handle) {
        const auto found = windows_.find(handle);
        return found != windows_.end() ? found->second.get() : nullptr;
    }
    // As Find; sets the last error when there is no such window.
    Window* Require(HWND handle) {
        Window* window = Find(handle);
        if (window == nullptr) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return window;
    }
    void Remove(HWND handle) {
        const std::unique_ptr<Window> window = std::move(windows_[handle]);
        windows_.erase(handle);
        for (const HWND child : window->children)
            Remove(child);
    }

private:
    ULONG_PTR nextHandle_ = 0x10000;
    std::map<HWND, std::unique_ptr<Window>> windows_;
};

WindowTable& Windows() {
    static WindowTable table;
    return table;
}

bool ClassFromName(LPCWSTR name, eClass& kind) {
    static constexpr struct {
        const WCHAR* name;
        eClass kind;
    } kClasses[] = {{TEXT("Static"), eClass::Static},
                    {TEXT("Button"), eClass::Button},
                    {TEXT("Edit"), eClass::Edit},
                    {TEXT("ComboBox"), eClass::ComboBox}};
    if (name == nullptr || IS_INTRESOURCE(name)) return false;
    for (const auto& row : kClasses) {
        if (wtext::EqualsAsciiFold(name, row.name)) {
            kind = row.kind;
            return true;
        }
    }
    return false;
}

LRESULT CopyText(const WText& text, WPARAM cch, LPARAM buffer) {
    if (cch == 0 || buffer == 0) return 0;
    auto* out = reinterpret_cast<LPWSTR>(buffer);
    const std::size_t length = std::min<std::size_t>(text.size(), cch - 1);
    text.copy(out, length);
    out[length] = 0;
    return static_cast<LRESULT>(length);
}

LRESULT SendToButton(Window& window, UINT message, WPARAM wParam) {
    if (message == BM_GETCHECK) return static_cast<LRESULT>(window.check);
    if (message == BM_SETCHECK) window.check = wParam;
    return 0;
}

LRESULT InsertItem(Window& window, std::size_t at, LPARAM text) {
    if (text == 0 || at > window.items.size()) return CB_ERR;
    window.items.emplace(window.items.begin() + static_cast<std::ptrdiff_t>(at),
                         reinterpret_cast<LPCWSTR>(text));
    if (window.selected >= static_cast<LRESULT>(at)) ++window.selected;
    return static_cast<LRESULT>(at);
}

LRESULT DeleteItem(Window& window, WPARAM at) {
    if (at >= window.items.size()) return CB_ERR;
    window.items.erase(window.items.begin() + static_cast<std::ptrdiff_t>(at));
    if (window.selected == static_cast<LRESULT>(at)) {
        window.selected = CB_ERR;
    } else if (window.selected > static_cast<LRESULT>(at)) {
        --window.selected;
    }
    return static_cast<LRESULT>(window.items.size());
}

LRESULT SelectItem(Window& window, WPARAM at) {
    if (at >= window.items.size()) {
        window.selected = CB_ERR;
        window.text.clear();
        return CB_ERR;
    }
    window.selected = static_cast<LRESULT>(at);
    window.text = window.items[at];
    return window.selected;
}

LRESULT SendToComboBox(Window& window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case CB_ADDSTRING:
            return InsertItem(window, window.items.size(), lParam);
        case CB_INSERTSTRING:
            return InsertItem(
                window, wParam == static_cast<WPARAM>(-1) ? window.items.size() : wParam, lParam);
        case CB_DELETESTRING:
            return DeleteItem(window, wParam);
        case CB_GETCOUNT:
            return static_cast<LRESULT>(window.items.size());
        case CB_GETCURSEL:
            return window.selected;
        case CB_SETCURSEL:
            return SelectItem(window, wParam);
        case CB_GETLBTEXTLEN:
            return wParam < window.items.size() ? static_cast<LRESULT>(window.items[wParam].size())
                                                : CB_ERR;
        case CB_GETLBTEXT:
            if (wParam >= window.items.size()) return CB_ERR;
            return CopyText(window.items[wParam], window.items[wParam].size() + 1, lParam);
        case CB_RESETCONTENT:
            window.items.clear();
            window.text.clear();
            window.selected = CB_ERR;
            return 1;
        default:
            return 0;
    }
}

}  // namespace

HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x,
                     int y, int width, int height, HWND parent, HMENU menuOrId, HINSTANCE,
                     LPVOID parameter) {
    eClass kind{};
    if (extendedStyle != 0 || parameter != nullptr) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    if (!ClassFromName(className, kind)) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const bool child = (style & WS_CHILD) != 0;
    Window* owner = parent != nullptr ? Windows().Require(parent) : nullptr;
    if (owner == nullptr && (parent != nullptr || child)) {
        if (parent == nullptr) SetLastError(ERROR_TLW_WITH_WSCHILD);
        return nullptr;
    }
    auto window = std::make_unique<Window>();
    window->kind = kind;
    window->parent = parent;
    window->child = child;
    window->id = child ? static_cast<int>(reinterpret_cast<ULONG_PTR>(menuOrId)) : 0;
    window->enabled = (style & WS_DISABLED) == 0;
    const LONG left = child && owner != nullptr ? owner->rect.left : 0;
    const LONG top = child && owner != nullptr ? owner->rect.top : 0;
    window->rect = {left + x, top + y, left + x + width, top + y + height};
    if (text != nullptr && kind != eClass::ComboBox) window->text = text;
    const HWND handle = Windows().Add(std::move(window));
    if (owner != nullptr) owner->children.push_back(handle);
    return handle;
}

BOOL DestroyWindow(HWND window) {
    Window* found = Windows().Require(window);
    if (found == nullptr) return FALSE;
    if (Window* parent = Windows().Find(found->parent)) std::erase(parent->children, window);
    Windows().Remove(window);
    return TRUE;
}

BOOL IsWindow(HWND window) {
    return Windows().Find(window) != nullptr;
}

BOOL EnableWindow(HWND window, BOOL enable) {
    Window* found = Windows().Require(window);
    if (found == nullptr) return FALSE;
    const bool wasDisabled = !found->enabled;
    found->enabled = enable != FALSE;
    return wasDisabled;
}

BOOL IsWindowEnabled(HWND window) {
    Window* found = Windows().Require(window);
    return found != nullptr && found->enabled;
}

HWND GetDlgItem(HWND dialog, int id) {
    Window* found = Windows().Require(dialog);
    if (found == nullptr) return nullptr;
    for (const HWND child : found->children) {
        const Window* control = Windows().Find(child);
        if (control->child && control->id == id) return child;
    }
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* found = Windows().Require(window);
    if (found == nullptr) return 0;
    switch (message) {
        case WM_SETTEXT:
            found->text = lParam != 0 ? reinterpret_cast<LPCWSTR>(lParam) : TEXT("");
            return TRUE;
        case WM_GETTEXT:
            return CopyText(found->text, wParam, lParam);
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(found->text.size());
        default:
            break;
    }
    if (found->kind == eClass::Button) return SendToButton(*found, message, wParam);
    if (found->kind == eClass::ComboBox) return SendToComboBox(*found, message, wParam, lParam);
    return 0;
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

BOOL GetWindowRect(HWND window, RECT* rect) {
    const Window* found = Windows().Require(window);
    if (found == nullptr) return FALSE;
    *rect = found->rect;
    return TRUE;
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
