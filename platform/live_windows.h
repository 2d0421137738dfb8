// What of windows and drawings is alive, for tests that look for leaks and for dialogs.
#pragma once

#include "platform/win.h"

// The windows of this thread that are alive, with their children, shown or not.
int CountLiveWindows();

// What this process holds to draw with: fonts, brushes, bitmaps, the pictures of its icons;
// natively, where nothing is drawn, the icons.
int CountDrawingObjects();

// The handles that this process has open: registry keys and whatever else the system counts;
// natively the keys, timers and hooks.
int CountOpenHandles();

// The dialog of this thread that is shown and has a control of this number; null for none.
HWND ShownDialogWith(int control);
