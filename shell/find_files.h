// The blocking form of the find dialog, for a caller that wants the name of one file.
#pragma once

#include "module/module_api.h"
#include "platform/win.h"

// Returns when the user has closed the dialog. `name` (may be null) gets the full name of the first
// file picked last, of at most `nameSize` - 1 units, else it is empty and the result false. True
// without a `name`, and, with `name` as it was, when there is no memory for the dialog.
extern "C" SR_API bool FindFiles(HWND owner, WCHAR* name, unsigned nameSize, bool multiSelect);
