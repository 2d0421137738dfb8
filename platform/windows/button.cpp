// Native build: static texts and buttons.
#include <utility>

#include "platform/windows/window_object.h"

namespace platform {

namespace {

class Static : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_GETDLGCODE) return DLGC_STATIC;
        return Window::Receive(message, wParam, lParam);
    }
};

class Button : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    DWORD Type() const { return style & BS_TYPEMASK; }
    bool IsRadio() const { return Type() == BS_RADIOBUTTON || Type() == BS_AUTORADIOBUTTON; }
    bool CanBeChecked() const {
        return Type() == BS_CHECKBOX || Type() == BS_AUTOCHECKBOX || IsRadio();
    }
    bool TakesIcon(WPARAM kind) const { return kind == IMAGE_ICON && Has(BS_ICON); }
    LRESULT DialogCode() const;
    void SetCheck(WPARAM value);
    void Click();
    void CheckAloneInGroup();

    WPARAM check_ = BST_UNCHECKED;
    LRESULT icon_ = 0;
};

LRESULT Button::DialogCode() const {
    switch (Type()) {
        case BS_PUSHBUTTON:
            return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
        case BS_DEFPUSHBUTTON:
            return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return DLGC_BUTTON | DLGC_RADIOBUTTON;
        case BS_GROUPBOX:
            return DLGC_STATIC;
        default:
            return DLGC_BUTTON;
    }
}

void Button::SetCheck(WPARAM value) {
    if (!CanBeChecked()) return;
    check_ = value != BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED;
    // The checked one of a group is where Tab goes.
    if (IsRadio()) style = check_ != BST_UNCHECKED ? style | WS_TABSTOP : style & ~WS_TABSTOP;
}

void Button::CheckAloneInGroup() {
    const HWND dialog = parent;
    HWND other = handle;
    // The count bounds a walk that a child's end in mid-way would keep from coming round.
    const auto dialogWindow = FindWindowObject(dialog);
    std::size_t left = dialogWindow != nullptr ? dialogWindow->children.size() : 0;
    do {
        if (other != handle &&
            SendMessageW(other, WM_GETDLGCODE, 0, 0) == (DLGC_BUTTON | DLGC_RADIOBUTTON)) {
            SendMessageW(other, BM_SETCHECK, BST_UNCHECKED, 0);
        }
        other = GetNextDlgGroupItem(dialog, other, FALSE);
    } while (other != nullptr && other != handle && left-- > 0);
    SetCheck(BST_CHECKED);
}

void Button::Click() {
    SetFocus(handle);
    if (Type() == BS_AUTOCHECKBOX) SetCheck(check_ == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED);
    if (Type() == BS_AUTORADIOBUTTON) CheckAloneInGroup();
    NotifyParent(BN_CLICKED);
}

LRESULT Button::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DialogCode();
        case BM_GETCHECK:
            return static_cast<LRESULT>(check_);
        case BM_SETCHECK:
            SetCheck(wParam);
            return 0;
        case BM_SETSTYLE:
            style = (style & ~BS_TYPEMASK) | (static_cast<DWORD>(wParam) & BS_TYPEMASK);
            return 0;
        case BM_GETIMAGE:
            return TakesIcon(wParam) ? icon_ : 0;
        case BM_SETIMAGE:
            return TakesIcon(wParam) ? std::exchange(icon_, lParam) : 0;
        case BM_CLICK:
            Click();
            return 0;
        case WM_KEYUP:
            if (wParam == VK_SPACE) Click();
            return 0;
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeStatic() {
    return std::make_shared<Static>();
}

std::shared_ptr<Window> MakeButton() {
    return std::make_shared<Button>();
}

}  // namespace platform
