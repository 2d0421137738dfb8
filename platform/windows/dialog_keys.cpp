// Native build: what the keyboard does in a dialog: Tab goes on, Return presses the default button,
// Escape cancels. Other keys are the desktop's matter: nobody types here.
#include "platform/windows/dialog.h"

using platform::Dialog;
using platform::eRole;
using platform::FindWindowObject;

namespace {

void Press(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    if (control != nullptr && !IsWindowEnabled(control)) return;
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), BN_CLICKED),
                 reinterpret_cast<LPARAM>(control));
}

void PressReturn(const Dialog& dialog) {
    const auto focus = FindWindowObject(GetFocus());
    const bool isOnDefault = focus != nullptr && platform::IsWithin(focus->handle, dialog.handle) &&
                             focus->Role() == eRole::defaultButton;
    if (isOnDefault) {
        Press(dialog.handle, static_cast<int>(focus->id));
    } else {
        Press(dialog.handle, dialog.defaultId != 0 ? dialog.defaultId : IDOK);
    }
}

// True when the key was the dialog manager's.
bool TakeKey(Dialog& dialog, WPARAM key) {
    switch (key) {
        case VK_TAB:
            if (const HWND next = dialog.NextTabStop(GetFocus())) dialog.MoveFocus(next);
            return true;
        case VK_ESCAPE:
            Press(dialog.handle, IDCANCEL);
            return true;
        case VK_RETURN:
            PressReturn(dialog);
            return true;
        default:
            return false;
    }
}

}  // namespace

HWND Dialog::NextTabStop(HWND control) const {
    std::size_t at = 0;
    while (at < children.size() && !IsWithin(control, children[at]))
        ++at;
    // From none it begins with the first.
    if (at == children.size()) at = children.size() - 1;
    for (std::size_t step = 1; step <= children.size(); ++step) {
        const auto window = FindWindowObject(children[(at + step) % children.size()]);
        if (window->Has(WS_VISIBLE | WS_TABSTOP) && !window->Has(WS_DISABLED))
            return window->handle;
    }
    return nullptr;
}

std::vector<HWND> platform::GroupOf(HWND dialog, HWND control) {
    std::vector<HWND> group;
    const auto window = FindWindowObject(dialog);
    if (window == nullptr) return group;
    // It reaches from a control with WS_GROUP to the one before the next.
    bool found = false;
    for (const HWND child : window->children) {
        if (FindWindowObject(child)->Has(WS_GROUP)) {
            if (found) break;
            group.clear();
        }
        group.push_back(child);
        found = found || child == control;
    }
    return group;
}

BOOL IsDialogMessageW(HWND dialog, MSG* message) {
    const auto window = FindWindowObject(dialog);
    if (window == nullptr || !window->IsDialog() || message->hwnd == nullptr ||
        !platform::IsWithin(message->hwnd, dialog)) {
        return FALSE;
    }
    if (message->message == WM_KEYDOWN && TakeKey(static_cast<Dialog&>(*window), message->wParam)) {
        return TRUE;
    }
    TranslateMessage(message);
    DispatchMessageW(message);
    return TRUE;
}
