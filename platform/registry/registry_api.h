// Native build: the registry under its Windows names, kept in one text file of the user (see
// registry_file.h). Only HKEY_CURRENT_USER exists.
#pragma once

#include "platform/base/types.h"

using REGSAM = DWORD;
using LSTATUS = LONG;
inline HKEY const HKEY_CURRENT_USER = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000001u));
inline HKEY const HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000002u));
inline constexpr REGSAM KEY_QUERY_VALUE = 0x0001;
inline constexpr REGSAM KEY_SET_VALUE = 0x0002;
inline constexpr REGSAM KEY_CREATE_SUB_KEY = 0x0004;
inline constexpr REGSAM KEY_ENUMERATE_SUB_KEYS = 0x0008;
inline constexpr REGSAM KEY_READ = 0x00020019;
inline constexpr REGSAM KEY_WRITE = 0x00020006;
inline constexpr REGSAM KEY_ALL_ACCESS = 0x000F003F;
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;
inline constexpr DWORD REG_NONE = 0;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;

struct SECURITY_ATTRIBUTES;

// Each returns ERROR_SUCCESS or the error, and leaves the last error alone. Names and paths are
// null-terminated, compared without case; a null value name is the default value.
//
// Changes are in the file when the key that they were made through has been closed: RegCloseKey
// tells when that failed, and they are tried again with the next. Deleting a key is done at once.
LSTATUS RegOpenKeyExW(HKEY root, LPCWSTR path, DWORD options, REGSAM access, HKEY* key);
LSTATUS RegCreateKeyExW(HKEY root, LPCWSTR path, DWORD reserved, LPWSTR keyClass, DWORD options,
                        REGSAM access, const SECURITY_ATTRIBUTES* security, HKEY* key,
                        DWORD* disposition);
LSTATUS RegCloseKey(HKEY key);
// cb counts bytes; ERROR_MORE_DATA tells type and needed size. A stored text has its terminator.
LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data,
                         DWORD* cb);
LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD cb);
// Refuses a key with subkeys (ERROR_ACCESS_DENIED).
LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR path);
// Removes the key `path` and all below it.
LSTATUS RegDeleteTreeW(HKEY key, LPCWSTR path);
// *cch counts units: in, the buffer with room for the terminator; out, the name without it.
// Only with null reserved, class and time.
LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, DWORD* cch, DWORD* reserved,
                      LPWSTR keyClass, DWORD* cchClass, FILETIME* lastWrite);
