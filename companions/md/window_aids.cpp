#include "outside/md_window_aids.h"

#include <algorithm>

void SetListWidth(HWND dialog, int control, int columns) {
    for (int column = 0; column < columns; ++column) {
        SendDlgItemMessageW(dialog, control, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column),
                            LVSCW_AUTOSIZE);
    }
}

void SetDropWidth(HWND dialog, int control) {
    constexpr int kUnitsOfLetter = 4;     // the average width in dialog units
    constexpr int kUnitsOfScrollBar = 8;  // and of the edge
    const LRESULT count = SendDlgItemMessageW(dialog, control, CB_GETCOUNT, 0, 0);
    LRESULT longest = 0;
    for (LRESULT item = 0; item < count; ++item) {
        longest = std::max(longest, SendDlgItemMessageW(dialog, control, CB_GETLBTEXTLEN,
                                                        static_cast<WPARAM>(item), 0));
    }
    RECT rect{};
    rect.right = static_cast<LONG>(longest) * kUnitsOfLetter + kUnitsOfScrollBar;
    if (!MapDialogRect(dialog, &rect)) return;
    // A drop-down is never narrower than its box.
    SendDlgItemMessageW(dialog, control, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(rect.right), 0);
}
