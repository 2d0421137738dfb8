// Native build: list boxes of one selection.
#include <utility>

#include "platform/windows/item_list.h"
#include "platform/windows/window_object.h"

namespace platform {

namespace {

constexpr LONG kItemHeight = 16;

class ListBox : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT ItemRect(WPARAM at, RECT* rect) const;
    void PressButton(LPARAM point);

    ItemList items_;
    LRESULT extent_ = 0;
    bool isDown_ = false;
};

LRESULT ListBox::ItemRect(WPARAM at, RECT* rect) const {
    if (rect == nullptr || items_.TextAt(at) == nullptr) return LB_ERR;
    const LONG top = static_cast<LONG>(at) * kItemHeight;
    *rect = {0, top, place.right - place.left, top + kItemHeight};
    return LB_OKAY;
}

void ListBox::PressButton(LPARAM point) {
    if (GetFocus() != handle) SetFocus(handle);
    const auto down = static_cast<SHORT>(HIWORD(static_cast<ULONG_PTR>(point)));
    const auto at = static_cast<WPARAM>(down / kItemHeight);
    if (down < 0 || items_.TextAt(at) == nullptr) return;
    items_.Select(at);
    isDown_ = true;
}

LRESULT ListBox::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case LB_ADDSTRING:
            return items_.Append(lParam);
        case LB_INSERTSTRING:
            return items_.Insert(wParam, lParam);
        case LB_DELETESTRING:
            return items_.Delete(wParam);
        case LB_RESETCONTENT:
            items_.Clear();
            return LB_OKAY;
        case LB_GETCOUNT:
            return items_.Count();
        case LB_GETCURSEL:
            return items_.Selected();
        case LB_SETCURSEL:
            return items_.Select(wParam);
        case LB_GETTEXT:
            return items_.Copy(wParam, lParam);
        case LB_GETTEXTLEN:
            return items_.Length(wParam);
        case LB_GETITEMDATA:
            return items_.Data(wParam);
        case LB_SETITEMDATA:
            return items_.SetData(wParam, lParam) == LB_ERR ? LB_ERR : TRUE;
        case LB_GETHORIZONTALEXTENT:
            return extent_;
        case LB_SETHORIZONTALEXTENT:
            extent_ = static_cast<LRESULT>(wParam);
            return LB_OKAY;
        case LB_GETITEMRECT:
            return ItemRect(wParam, reinterpret_cast<RECT*>(lParam));
        case WM_LBUTTONDOWN:
            PressButton(lParam);
            return 0;
        case WM_LBUTTONUP:
            // The choice is told when the button goes up.
            if (std::exchange(isDown_, false) && Has(LBS_NOTIFY)) NotifyParent(LBN_SELCHANGE);
            return 0;
        case WM_LBUTTONDBLCLK:
            if (Has(LBS_NOTIFY)) NotifyParent(LBN_DBLCLK);
            return 0;
        case WM_KEYDOWN:
            if (items_.SelectByKey(wParam) != LB_ERR && Has(LBS_NOTIFY))
                NotifyParent(LBN_SELCHANGE);
            return 0;
        case WM_SETFOCUS:
            NotifyParent(LBN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            NotifyParent(LBN_KILLFOCUS);
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | DLGC_WANTCHARS;
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeListBox() {
    return std::make_shared<ListBox>();
}

}  // namespace platform
