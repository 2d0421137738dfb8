// Native build: list boxes of one selection.
#include "platform/windows/item_list.h"
#include "platform/windows/window_object.h"

namespace platform {

namespace {

class ListBox : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    ItemList items_;
};

LRESULT ListBox::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case LB_INSERTSTRING:
            return items_.Insert(wParam, lParam);
        case LB_DELETESTRING:
            return items_.Delete(wParam);
        case LB_RESETCONTENT:
            items_.Clear();
            return 0;
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
            return items_.SetData(wParam, lParam);
        case LB_SETHORIZONTALEXTENT:
            return 0;
        case WM_SETFOCUS:
            NotifyParent(LBN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            NotifyParent(LBN_KILLFOCUS);
            return 0;
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeListBox() {
    return std::make_shared<ListBox>();
}

}  // namespace platform
