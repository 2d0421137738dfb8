// The whole texts of controls and of the entries of their lists.
#pragma once

#include "outside/blx_string.h"
#include "platform/win.h"
#include "platform/wtext.h"

// Empty where there is no such control.
BLxWString ReadControlText(HWND dialog, int control);
// At most `cch` - 1 units of it.
WText ReadControlText(HWND dialog, int control, std::size_t cch);
// An entry of a combo box or a list box; empty where there is none.
WText ReadComboEntry(HWND dialog, int control, LRESULT item);
WText ReadListEntry(HWND dialog, int control, LRESULT item);
