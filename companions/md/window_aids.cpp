#include "outside/md_window_aids.h"

void SetListWidth(HWND dialog, int control, int columns) {
    for (int column = 0; column < columns; ++column) {
        SendDlgItemMessageW(dialog, control, LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column),
                            LVSCW_AUTOSIZE);
    }
}
