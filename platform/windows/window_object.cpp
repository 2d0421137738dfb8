#include "platform/windows/window_object.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "platform/live_windows.h"

namespace platform {

namespace {

using Table = std::unordered_map<HWND, std::shared_ptr<Window>>;

Table& Windows() {
    static Table table;
    return table;
}

using Maker = std::shared_ptr<Window> (*)();

Maker MakerOf(WTextView name) {
    static constexpr struct {
        const WCHAR* name;
        Maker make;
    } kClasses[] = {
        {TEXT("Static"), std::make_shared<Window>},
        {TEXT("Button"), MakeButton},
        {TEXT("Edit"), MakeEdit},
        {TEXT("ComboBox"), MakeComboBox},
        {TEXT("ListBox"), MakeListBox},
        {TEXT("SysListView32"), MakeListView},
        {TEXT("msctls_statusbar32"), MakeStatusBar},
        {TEXT("SysDateTimePick32"), MakeDateField},
    };
    for (const auto& row : kClasses) {
        if (wtext::EqualsAsciiFold(name, row.name)) return row.make;
    }
    return nullptr;
}

// Children go behind their parent's WM_DESTROY and before it leaves the table, as on Windows.
void Destroy(HWND handle) {
    const std::shared_ptr<Window> window = FindWindowObject(handle);
    if (window == nullptr) return;
    std::vector<HWND> owned;
    for (const auto& [other, object] : Windows()) {
        if (object->parent == handle && !object->IsChild()) owned.push_back(other);
    }
    for (const HWND popup : owned)
        Destroy(popup);
    SendMessageW(handle, WM_DESTROY, 0, 0);
    while (!window->children.empty()) {
        const HWND child = window->children.front();
        Destroy(child);
        std::erase(window->children, child);
    }
    ForgetFocusOf(handle);
    ForgetMessagesOf(handle);
    if (const auto parent = FindWindowObject(window->parent)) std::erase(parent->children, handle);
    Windows().erase(handle);
}

}  // namespace

LRESULT CopyWindowText(const WText& text, WPARAM cch, LPARAM buffer) {
    if (cch == 0 || buffer == 0) return 0;
    auto* out = reinterpret_cast<LPWSTR>(buffer);
    const std::size_t length = std::min<std::size_t>(text.size(), cch - 1);
    text.copy(out, length);
    out[length] = 0;
    return static_cast<LRESULT>(length);
}

LRESULT Window::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETTEXT:
            text = lParam != 0 ? reinterpret_cast<LPCWSTR>(lParam) : TEXT("");
            return TRUE;
        case WM_GETTEXT:
            return CopyWindowText(text, wParam, lParam);
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(text.size());
        case WM_CONTEXTMENU:
            if (IsChild()) SendMessageW(parent, WM_CONTEXTMENU, wParam, lParam);
            return 0;
        case WM_SETICON:
            return wParam < std::size(icons) ? std::exchange(icons[wParam], lParam) : 0;
        case WM_CLOSE:
            DestroyWindow(handle);
            return 0;
        default:
            return 0;
    }
}

void Window::NotifyParent(WORD code) const {
    SendMessageW(parent, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), code),
                 reinterpret_cast<LPARAM>(handle));
}

std::shared_ptr<Window> FindWindowObject(HWND handle) {
    const auto found = Windows().find(handle);
    return found != Windows().end() ? found->second : nullptr;
}

std::shared_ptr<Window> RequireWindow(HWND handle) {
    auto window = FindWindowObject(handle);
    if (window == nullptr) SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return window;
}

void EnterTree(const std::shared_ptr<Window>& window, const WindowPlan& plan) {
    static ULONG_PTR lastHandle = 0x10000;
    lastHandle += 2;
    window->handle = reinterpret_cast<HWND>(lastHandle);
    window->parent = plan.parent;
    window->style = plan.style;
    window->id = plan.id;
    window->place = {plan.x, plan.y, plan.x + plan.width, plan.y + plan.height};
    if (plan.text != nullptr) window->text = plan.text;
    Windows()[window->handle] = window;
    if (!window->IsChild()) return;
    if (const auto parent = FindWindowObject(plan.parent)) {
        parent->children.push_back(window->handle);
    }
}

std::shared_ptr<Window> MakeWindow(const WindowPlan& plan) {
    const Maker make = MakerOf(plan.className);
    if (make == nullptr) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const std::shared_ptr<Window> window = make();
    EnterTree(window, plan);
    window->OnCreated();
    return window;
}

bool IsWithin(HWND window, HWND ancestor) {
    while (window != ancestor) {
        const auto object = FindWindowObject(window);
        if (object == nullptr || !object->IsChild()) return false;
        window = object->parent;
    }
    return true;
}

}  // namespace platform

BOOL DestroyWindow(HWND window) {
    if (platform::RequireWindow(window) == nullptr) return FALSE;
    platform::Destroy(window);
    return TRUE;
}

BOOL IsWindow(HWND window) {
    return platform::FindWindowObject(window) != nullptr;
}

int CountLiveWindows() {
    return static_cast<int>(platform::Windows().size());
}

HWND ShownDialogWith(int control) {
    for (const auto& [handle, object] : platform::Windows()) {
        if (object->IsDialog() && IsWindowVisible(handle) && GetDlgItem(handle, control) != nullptr)
            return handle;
    }
    return nullptr;
}
