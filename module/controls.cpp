#include "module/controls.h"

namespace {

WText ReadEntry(HWND dialog, int control, LRESULT item, UINT lengthMessage, UINT textMessage) {
    const auto index = static_cast<WPARAM>(item);
    const LRESULT length = SendDlgItemMessageW(dialog, control, lengthMessage, index, 0);
    if (length <= 0) return {};
    WText text(static_cast<std::size_t>(length) + 1, 0);
    SendDlgItemMessageW(dialog, control, textMessage, index, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

}  // namespace

BLxWString ReadControlText(HWND dialog, int control) {
    const LRESULT length = SendDlgItemMessageW(dialog, control, WM_GETTEXTLENGTH, 0, 0);
    BLxWString text(static_cast<std::size_t>(length) + 1, 0);
    text.resize(GetDlgItemTextW(dialog, control, text.data(), static_cast<int>(text.size())));
    return text;
}

WText ReadControlText(HWND dialog, int control, std::size_t cch) {
    WText text(cch, 0);
    text.resize(GetDlgItemTextW(dialog, control, text.data(), static_cast<int>(cch)));
    return text;
}

WText ReadComboEntry(HWND dialog, int control, LRESULT item) {
    return ReadEntry(dialog, control, item, CB_GETLBTEXTLEN, CB_GETLBTEXT);
}

WText ReadListEntry(HWND dialog, int control, LRESULT item) {
    return ReadEntry(dialog, control, item, LB_GETTEXTLEN, LB_GETTEXT);
}

LRESULT SendTo(HWND dialog, int control, UINT message, WPARAM wParam, LPARAM lParam) {
    return SendDlgItemMessageW(dialog, control, message, wParam, lParam);
}

LRESULT SendTo(HWND dialog, int control, UINT message, WPARAM wParam, const void* pointer) {
    return SendTo(dialog, control, message, wParam, reinterpret_cast<LPARAM>(pointer));
}

LONG SelectedData(HWND dialog, int comboBox) {
    const LRESULT item = SendTo(dialog, comboBox, CB_GETCURSEL);
    if (item < 0) return -1;
    return static_cast<LONG>(SendTo(dialog, comboBox, CB_GETITEMDATA, static_cast<WPARAM>(item)));
}
