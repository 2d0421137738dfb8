// Native build: paths, folders and files under their Windows names. Paths look like those of
// Windows: Z:\ is the root of the file system (see path_mapping.h for names that Windows forbids).
#pragma once

#include "platform/base/types.h"

inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFFu;
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x00000001;
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x00000002;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x00000010;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x00000020;
inline constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x00000400;

// INVALID_FILE_ATTRIBUTES and the last error when there is no such path.
DWORD GetFileAttributesW(LPCWSTR path);

BOOL SetCurrentDirectoryW(LPCWSTR path);
// Units without the terminator; when `cch` is too small the units needed with it.
DWORD GetCurrentDirectoryW(DWORD cch, LPWSTR buffer);
// As GetCurrentDirectoryW; `filePart` may be null, else it gets the last component or null.
DWORD GetFullPathNameW(LPCWSTR path, DWORD cch, LPWSTR buffer, LPWSTR* filePart);

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
