// The help messages that every dialog of the module answers alike.
#pragma once

#include "platform/win.h"

// True for WM_HELP and WM_CONTEXTMENU, with the message's parameters: the help text of the control
// at hand, or of the dialog around it, was shown.
bool AnswerHelpMessage(UINT message, WPARAM wParam, LPARAM lParam);
// The help button: the text of the whole dialog.
void ShowDialogHelp(HWND dialog, DWORD context);
