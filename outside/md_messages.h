// Md.dll: message boxes with the texts of the resource library.
#pragma once

#include "outside/library_api.h"
#include "platform/win.h"

// `style` is 0, MB_YESNO (4) or MB_YESNOCANCEL (3). `kind` chooses the picture: 0 question,
// 1 information, 2 warning, 3 error. `context` is a help id. The result is the button pressed, 0
// when no box could be shown.
MD_API int DisplayMessageId(HINSTANCE instance, UINT id, UINT style, int kind, DWORD context,
                            HWND parent);
// True when the user agreed; a message that is no question is agreed to.
MD_API bool DisplayMessageString(const WCHAR* text, bool question, int kind, DWORD context,
                                 HWND parent);
MD_API int DisplayMessageStringEx(HINSTANCE instance, const WCHAR* text, UINT style, int kind,
                                  DWORD context, HWND parent);
// The string `id` holds one %s for the name.
MD_API int DisplayMessageFileName(HINSTANCE instance, const WCHAR* fileName, UINT id, DWORD context,
                                  HWND parent, UINT style);
