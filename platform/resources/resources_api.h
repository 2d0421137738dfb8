// Native build: the resource library as a data file, read from the same SrRes.dll that ships.
#pragma once

#include "platform/base/types.h"

inline constexpr DWORD DONT_RESOLVE_DLL_REFERENCES = 0x00000001;

// Only with a null `file` and DONT_RESOLVE_DLL_REFERENCES: no code of the library runs. Null and
// the last error when the file is absent (ERROR_MOD_NOT_FOUND) or no sound image
// (ERROR_BAD_EXE_FORMAT).
HMODULE LoadLibraryExW(LPCWSTR path, HANDLE file, DWORD flags);
BOOL FreeLibrary(HMODULE module);

// Copies at most cch - 1 units and a terminator; returns the units without it, 0 for a missing
// string. With cch 0, `buffer` is an LPCWSTR* that gets a pointer to the read-only text, which is
// not terminated.
int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cch);
