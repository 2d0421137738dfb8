// Native build: what the keyboard does in a dialog: Tab, arrows, Return, Escape and access keys.
#include <algorithm>

#include "platform/windows/dialog.h"

using platform::Dialog;
using platform::FindWindowObject;

namespace {

constexpr LRESULT kRadioButton = DLGC_BUTTON | DLGC_RADIOBUTTON;

LRESULT CodeOf(HWND window) {
    return SendMessageW(window, WM_GETDLGCODE, 0, 0);
}

// Shown and enabled: the keyboard reaches it.
bool IsReachable(HWND control) {
    const auto window = FindWindowObject(control);
    return window != nullptr && window->Has(WS_VISIBLE) && !window->Has(WS_DISABLED);
}

// The dialog's child that `control` is or lies in, as its place among the children; -1 for none.
std::ptrdiff_t PlaceOf(const platform::Window& dialog, HWND control) {
    for (std::size_t i = 0; control != nullptr && i < dialog.children.size(); ++i) {
        if (platform::IsWithin(control, dialog.children[i])) return static_cast<std::ptrdiff_t>(i);
    }
    return -1;
}

void Press(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    if (control != nullptr && !IsWindowEnabled(control)) return;
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), BN_CLICKED),
                 reinterpret_cast<LPARAM>(control));
}

void PressReturn(HWND dialog) {
    const HWND focus = GetFocus();
    if (focus != nullptr && platform::IsWithin(focus, dialog) && focus != dialog &&
        (CodeOf(focus) & DLGC_DEFPUSHBUTTON) != 0) {
        Press(dialog, GetDlgCtrlID(focus));
        return;
    }
    const LRESULT answer = SendMessageW(dialog, DM_GETDEFID, 0, 0);
    const bool has = HIWORD(static_cast<ULONG_PTR>(answer)) == DC_HASDEFID;
    Press(dialog, has ? LOWORD(static_cast<ULONG_PTR>(answer)) : IDOK);
}

void PressArrow(HWND dialog, HWND control, bool previous) {
    const HWND next = GetNextDlgGroupItem(dialog, control, previous);
    if (next == nullptr) return;
    if (CodeOf(next) != kRadioButton) {
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), 1);
        return;
    }
    SetFocus(next);
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(next, GWL_STYLE));
    if ((style & BS_TYPEMASK) == BS_AUTORADIOBUTTON && SendMessageW(next, BM_GETCHECK, 0, 0) == 0) {
        SendMessageW(next, BM_CLICK, 0, 0);
    }
}

// True when the key was the dialog manager's.
bool TakeKey(HWND dialog, const MSG& message) {
    const LRESULT code = CodeOf(message.hwnd);
    switch (message.wParam) {
        case VK_TAB:
            if ((code & DLGC_WANTTAB) != 0) return false;
            SendMessageW(dialog, WM_NEXTDLGCTL, GetKeyState(VK_SHIFT) < 0 ? TRUE : FALSE, 0);
            return true;
        case VK_RIGHT:
        case VK_DOWN:
        case VK_LEFT:
        case VK_UP:
            if ((code & DLGC_WANTARROWS) != 0) return false;
            PressArrow(dialog, message.hwnd, message.wParam == VK_LEFT || message.wParam == VK_UP);
            return true;
        case VK_ESCAPE:
            Press(dialog, IDCANCEL);
            return true;
        case VK_RETURN:
            PressReturn(dialog);
            return true;
        default:
            return false;
    }
}

// The letter behind the first single ampersand, in lower case; 0 for none.
WCHAR AccessKeyOf(WTextView text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '&') continue;
        if (text[i + 1] != '&') return text[i + 1];
        ++i;
    }
    return 0;
}

bool IsSameLetter(WCHAR a, WCHAR b) {
    return a != 0 && CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH, &a, 1,
                                    &b, 1) == CSTR_EQUAL;
}

// Goes once round, from behind the control that has the focus.
bool TakeAccessKey(Dialog& dialog, HWND from, WCHAR letter) {
    const std::vector<HWND> controls = dialog.children;
    const auto start = static_cast<std::size_t>(PlaceOf(dialog, from) + 1);
    for (std::size_t step = 0; step < controls.size(); ++step) {
        const HWND control = controls[(start + step) % controls.size()];
        const auto window = FindWindowObject(control);
        if (window == nullptr || !IsReachable(control)) continue;
        const LRESULT code = CodeOf(control);
        const bool isLabel = (code & DLGC_STATIC) != 0;
        if (!isLabel && (code & DLGC_BUTTON) == 0) continue;
        if (!IsSameLetter(AccessKeyOf(window->text), letter)) continue;
        if (isLabel) {
            SendMessageW(dialog.handle, WM_NEXTDLGCTL,
                         reinterpret_cast<WPARAM>(GetNextDlgTabItem(dialog.handle, control, FALSE)),
                         1);
        } else {
            if ((code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) == 0)
                dialog.MoveFocus(control);
            SendMessageW(control, BM_CLICK, 0, 0);
        }
        return true;
    }
    return false;
}

HWND NextWithin(const platform::Window& dialog, HWND control, bool previous, bool groupOnly) {
    const auto count = static_cast<std::ptrdiff_t>(dialog.children.size());
    if (count == 0) return nullptr;
    const std::ptrdiff_t start = PlaceOf(dialog, control);
    const std::ptrdiff_t step = previous ? -1 : 1;
    std::ptrdiff_t at = start;
    if (at < 0 && previous) at = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        at = (at + step + count) % count;
        const HWND child = dialog.children[static_cast<std::size_t>(at)];
        if (IsReachable(child) && (groupOnly || FindWindowObject(child)->Has(WS_TABSTOP))) {
            return child;
        }
    }
    return control;
}

}  // namespace

HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) {
    const auto window = platform::RequireWindow(dialog);
    return window != nullptr ? NextWithin(*window, control, previous != FALSE, false) : nullptr;
}

HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous) {
    const auto window = platform::RequireWindow(dialog);
    if (window == nullptr) return nullptr;
    const std::ptrdiff_t at = PlaceOf(*window, control);
    if (at < 0) return NextWithin(*window, control, previous != FALSE, true);
    const std::vector<HWND>& children = window->children;
    // The group reaches from a control with WS_GROUP to the one before the next.
    const auto count = static_cast<std::ptrdiff_t>(children.size());
    const auto begins = [&](std::ptrdiff_t i) {
        return FindWindowObject(children[static_cast<std::size_t>(i)])->Has(WS_GROUP);
    };
    std::ptrdiff_t first = at;
    while (first > 0 && !begins(first))
        --first;
    std::ptrdiff_t last = at + 1;
    while (last < count && !begins(last))
        ++last;
    const std::ptrdiff_t length = last - first;
    for (std::ptrdiff_t i = 1; i < length; ++i) {
        const std::ptrdiff_t step = previous != FALSE ? length - i : i;
        const HWND other = children[static_cast<std::size_t>(first + (at - first + step) % length)];
        if (IsReachable(other)) return other;
    }
    return control;
}

BOOL IsDialogMessageW(HWND dialog, MSG* message) {
    const auto window = FindWindowObject(dialog);
    if (window == nullptr || !window->IsDialog() || message->hwnd == nullptr ||
        !platform::IsWithin(message->hwnd, dialog)) {
        return FALSE;
    }
    if (message->message == WM_KEYDOWN && TakeKey(dialog, *message)) return TRUE;
    const bool isCharacter = message->message == WM_CHAR &&
                             (CodeOf(message->hwnd) & DLGC_WANTCHARS) == 0 &&
                             message->wParam != VK_TAB;
    if (isCharacter || message->message == WM_SYSCHAR) {
        if (TakeAccessKey(static_cast<Dialog&>(*window), message->hwnd,
                          static_cast<WCHAR>(message->wParam))) {
            return TRUE;
        }
    }
    TranslateMessage(message);
    DispatchMessageW(message);
    return TRUE;
}
