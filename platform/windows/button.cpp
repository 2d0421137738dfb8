// Native build: buttons.
#include <utility>

#include "platform/windows/window_object.h"

namespace platform {

namespace {

class Button : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;
    eRole Role() const override;
    void MakeDefault(bool isDefault) override {
        style = (style & ~BS_TYPEMASK) | (isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
    }

private:
    DWORD Type() const { return style & BS_TYPEMASK; }
    bool TakesIcon(WPARAM kind) const { return kind == IMAGE_ICON && Has(BS_ICON); }
    void SetCheck(WPARAM value);
    void Click();
    void CheckAloneInGroup();

    WPARAM check_ = BST_UNCHECKED;
    LRESULT icon_ = 0;
};

eRole Button::Role() const {
    switch (Type()) {
        case BS_PUSHBUTTON:
            return eRole::pushButton;
        case BS_DEFPUSHBUTTON:
            return eRole::defaultButton;
        case BS_AUTORADIOBUTTON:
            return eRole::radioButton;
        default:
            return eRole::other;
    }
}

void Button::SetCheck(WPARAM value) {
    if (Type() != BS_AUTOCHECKBOX && Type() != BS_AUTORADIOBUTTON) return;
    check_ = value != BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED;
    // The checked one of a group is where Tab goes.
    if (Role() == eRole::radioButton)
        style = check_ != BST_UNCHECKED ? style | WS_TABSTOP : style & ~WS_TABSTOP;
}

void Button::CheckAloneInGroup() {
    for (const HWND other : GroupOf(parent, handle)) {
        const auto window = FindWindowObject(other);
        if (other != handle && window != nullptr && window->Role() == eRole::radioButton) {
            SendMessageW(other, BM_SETCHECK, BST_UNCHECKED, 0);
        }
    }
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
        case BM_GETCHECK:
            return static_cast<LRESULT>(check_);
        case BM_SETCHECK:
            SetCheck(wParam);
            return 0;
        case BM_GETIMAGE:
            return TakesIcon(wParam) ? icon_ : 0;
        case BM_SETIMAGE:
            return TakesIcon(wParam) ? std::exchange(icon_, lParam) : 0;
        case BM_CLICK:
            Click();
            return 0;
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeButton() {
    return std::make_shared<Button>();
}

}  // namespace platform
