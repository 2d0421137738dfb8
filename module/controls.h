// Messages to controls, and their texts.
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

// A control's answer to a message; 0 where there is no such control.
LRESULT SendTo(HWND dialog, int control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
LRESULT SendTo(HWND dialog, int control, UINT message, WPARAM wParam, const void* pointer);
// The item data of a combo box's selection, -1 without one.
LONG SelectedData(HWND dialog, int comboBox);
