// Md.dll: aids for windows.
#pragma once

#include "outside/library_api.h"
#include "platform/win.h"

// Makes the first `columns` columns of a list view as wide as their texts.
MD_API void SetListWidth(HWND dialog, int control, int columns);

// A dialog in the shell's font.
MD_API void MDxSubstituteShellFont(HWND dialog);
// Brings a dialog that sticks out of the screen back into view, its upper left corner first.
// `keepSize` is true.
MD_API void MDxCalcSizeDialog(HWND dialog, bool keepSize);
// Shows the help text for what `info` points to: its context, or that of the windows around it.
// `command` is HELP_WM_HELP, HELP_CONTEXTPOPUP or HELP_CONTENTS. False when there is no text.
MD_API bool MDxHelp(const HELPINFO* info, UINT command);
// The filter of a file dialog over documents: pairs of a text and a pattern, each with its
// terminator, and one more at the end; `cch` units. Empty when they don't fit.
MD_API void GetDataFileFilter(WCHAR* buffer, DWORD cch);
// The hook of that dialog: it is shown in the middle of its owner.
MD_API UINT_PTR CALLBACK BrowseFileCallbackProc(HWND hook, UINT message, WPARAM wParam,
                                                LPARAM lParam);

// Makes a combo box's drop-down wide enough for its longest entry.
MD_API void SetDropWidth(HWND dialog, int control);
