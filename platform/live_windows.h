// The windows of this thread, for tests that look for leaks and for dialogs.
#pragma once

#include "platform/win.h"

// The windows of this thread that are alive, with their children, shown or not.
int CountLiveWindows();

// The dialog of this thread that is shown and has a control of this number; null for none.
HWND ShownDialogWith(int control);
