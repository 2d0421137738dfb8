// Native build: paths, folders and files under their Windows names. Paths look like those of
// Windows: Z:\ is the root of the file system (see path_mapping.h for names that Windows forbids).
#pragma once

#include "platform/base/types.h"

BOOL SetCurrentDirectoryW(LPCWSTR path);
// The text behind the last separator; the whole text when nothing stands behind it.
LPWSTR PathFindFileNameW(LPCWSTR path);
// The last point of the last component, or the end of the text.
LPWSTR PathFindExtensionW(LPCWSTR path);
// Cuts the last component in place; true when something was cut.
BOOL PathRemoveFileSpecW(LPWSTR path);
BOOL PathFileExistsW(LPCWSTR path);
BOOL PathIsDirectoryW(LPCWSTR path);

// `module` null: the program. Units written, and the last error ERROR_SUCCESS; a buffer that is too
// small is filled and terminated, with ERROR_INSUFFICIENT_BUFFER.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD cch);
inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT = 0x00000002;
inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS = 0x00000004;
// Only FROM_ADDRESS | UNCHANGED_REFCOUNT: the module that holds `address`, the
// program for null. The handle serves GetModuleFileNameW alone.
BOOL GetModuleHandleExW(DWORD flags, LPCWSTR address, HMODULE* module);
DWORD GetCurrentProcessId();
