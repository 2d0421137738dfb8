// The help messages that every dialog of the module answers alike.
#pragma once

#include "platform/win.h"

// WM_HELP, with what its parameter points to.
void AnswerHelp(LPARAM lParam);
// WM_CONTEXTMENU on a control: the help text of the control, or of the dialog around it.
void AnswerContextMenu(HWND control);
// The help button: the text of the whole dialog.
void ShowDialogHelp(HWND dialog, DWORD context);
