// Md.dll: aids for windows.
#pragma once

#include "outside/library_api.h"
#include "platform/win.h"

// Makes the first `columns` columns of a list view as wide as their texts.
MD_API void SetListWidth(HWND dialog, int control, int columns);

// Makes a combo box's drop-down wide enough for its longest entry.
MD_API void SetDropWidth(HWND dialog, int control);
