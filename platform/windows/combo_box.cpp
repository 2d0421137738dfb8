// Native build: combo boxes, with an edit field (a child window of its own, as on Windows) and
// without one. The list is never seen dropped.
#include <algorithm>

#include "platform/windows/item_list.h"
#include "platform/windows/window_object.h"

namespace platform {

namespace {

constexpr int kFieldId = 1001;

class ComboBox : public Window {
public:
    void OnCreated() override;
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool HasField() const { return field_ != nullptr; }
    LRESULT ReceiveListMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT SelectItem(WPARAM at);
    LRESULT SelectByText(WPARAM behind, LPARAM wanted);
    void ShowText(const WText& shown);

    ItemList items_;
    HWND field_ = nullptr;
};

void ComboBox::OnCreated() {
    text.clear();
    if ((style & CBS_DROPDOWNLIST) != CBS_DROPDOWN) return;
    const auto field =
        MakeWindow({TEXT("Edit"), nullptr, WS_CHILD | WS_VISIBLE | (style & WS_DISABLED), 0, 0,
                    static_cast<int>(place.right - place.left),
                    static_cast<int>(place.bottom - place.top), handle, kFieldId});
    field_ = field->handle;
}

void ComboBox::ShowText(const WText& shown) {
    if (HasField()) SendMessageW(field_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(shown.c_str()));
}

LRESULT ComboBox::SelectItem(WPARAM at) {
    const LRESULT selected = items_.Select(at);
    const WText* item = items_.TextAt(at);
    ShowText(item != nullptr ? *item : TEXT(""));
    return selected;
}

LRESULT ComboBox::SelectByText(WPARAM behind, LPARAM wanted) {
    const LRESULT found = items_.Find(behind, wanted, false);
    return found != kNoItem ? SelectItem(static_cast<WPARAM>(found)) : kNoItem;
}

LRESULT ComboBox::ReceiveListMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case CB_ADDSTRING:
            return items_.Append(lParam);
        case CB_INSERTSTRING:
            return items_.Insert(wParam, lParam);
        case CB_DELETESTRING:
            return items_.Delete(wParam);
        case CB_RESETCONTENT:
            items_.Clear();
            ShowText(TEXT(""));
            return TRUE;
        case CB_GETCOUNT:
            return items_.Count();
        case CB_GETCURSEL:
            return items_.Selected();
        case CB_SETCURSEL:
            return SelectItem(wParam);
        case CB_SELECTSTRING:
            return SelectByText(wParam, lParam);
        case CB_FINDSTRING:
            return items_.Find(wParam, lParam, false);
        case CB_FINDSTRINGEXACT:
            return items_.Find(wParam, lParam, true);
        case CB_GETLBTEXTLEN:
            return items_.Length(wParam);
        case CB_GETLBTEXT:
            return items_.Copy(wParam, lParam);
        case CB_GETITEMDATA:
            return items_.Data(wParam);
        case CB_SETITEMDATA:
            return items_.SetData(wParam, lParam);
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

LRESULT ComboBox::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            // Of the field's notices its focus goes on; its text changes by the box alone.
            if (HIWORD(wParam) == EN_SETFOCUS) NotifyParent(CBN_SETFOCUS);
            if (HIWORD(wParam) == EN_KILLFOCUS) NotifyParent(CBN_KILLFOCUS);
            return 0;
        case WM_SETTEXT:
            if (!HasField()) return kNoItem;
            items_.Select(static_cast<WPARAM>(kNoItem));
            ShowText(lParam != 0 ? reinterpret_cast<LPCWSTR>(lParam) : TEXT(""));
            return TRUE;
        case WM_GETTEXT:
        case WM_GETTEXTLENGTH: {
            if (HasField()) return SendMessageW(field_, message, wParam, lParam);
            const WText* item = items_.TextAt(static_cast<WPARAM>(items_.Selected()));
            text = item != nullptr ? *item : TEXT("");
            return Window::Receive(message, wParam, lParam);
        }
        case WM_SETFOCUS:
            if (HasField()) {
                SetFocus(field_);
            } else {
                NotifyParent(CBN_SETFOCUS);
            }
            return 0;
        case WM_KILLFOCUS:
            if (!HasField()) NotifyParent(CBN_KILLFOCUS);
            return 0;
        case WM_ENABLE:
            if (HasField()) EnableWindow(field_, static_cast<BOOL>(wParam));
            return 0;
        case EM_LIMITTEXT:
        case CB_SETEXTENDEDUI:
            return 0;
        case CB_SETDROPPEDWIDTH:
            return std::max(static_cast<LRESULT>(wParam),
                            static_cast<LRESULT>(place.right - place.left));
        default:
            return ReceiveListMessage(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeComboBox() {
    return std::make_shared<ComboBox>();
}

}  // namespace platform
