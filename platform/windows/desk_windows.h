// Windows build: what the hooks of the desk tell the one who works the dialogs for files and
// folders.
#pragma once

#include "platform/desk.h"
#include "platform/win.h"

namespace platform {

// The desk of this thread; null for none.
Desk* CurrentDesk();
WText TextOfWindow(HWND window);

// A dialog has become active: when it turns out to be one for files or folders, the desk answers.
void WatchDialog(HWND dialog);
// The program chooses a folder in its dialog.
void NoteSelection(HWND dialog, LPCWSTR folder);
// The program lets OK not be pressed on the folder that is chosen. The button alone doesn't tell:
// Wine's dialog enables it again behind the program's back.
void NoteOkDisabled(HWND dialog);
void StopWatching();

}  // namespace platform
