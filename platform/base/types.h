// Native build: the basic types, error codes and the last-error value under their Windows names.
// Exact widths are those of 64-bit Windows (LONG and DWORD have 32 bits); a WCHAR is a UTF-16 unit.
#pragma once

#include <cstddef>
#include <cstdint>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using ULONG = std::uint32_t;
using LONG = std::int32_t;
using INT = std::int32_t;
using BOOL = std::int32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using LONGLONG = std::int64_t;
using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using SIZE_T = std::size_t;
using LPARAM = LONG_PTR;
using WPARAM = UINT_PTR;
using LRESULT = LONG_PTR;
using HRESULT = LONG;
using LCID = DWORD;
using DATE = double;
using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LPVOID = void*;
using LPCVOID = const void*;
using HANDLE = void*;

// Handles are distinct opaque types, as with STRICT.
#define SR_DECLARE_HANDLE(name) \
    struct name##__;            \
    using name = name##__*
SR_DECLARE_HANDLE(HINSTANCE);
SR_DECLARE_HANDLE(HWND);
SR_DECLARE_HANDLE(HKEY);
SR_DECLARE_HANDLE(HICON);
SR_DECLARE_HANDLE(HMENU);
SR_DECLARE_HANDLE(HRSRC);
#undef SR_DECLARE_HANDLE
using HMODULE = HINSTANCE;
using HCURSOR = HICON;
using HGLOBAL = HANDLE;

#define CALLBACK
#define WINAPI
#define STDMETHODCALLTYPE
#define FALSE 0
#define TRUE 1
#define MAX_PATH 260
#define SR_WIDE_(text) u##text
#define TEXT(text) SR_WIDE_(text)

struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

struct SYSTEMTIME {
    WORD wYear;
    WORD wMonth;
    WORD wDayOfWeek;
    WORD wDay;
    WORD wHour;
    WORD wMinute;
    WORD wSecond;
    WORD wMilliseconds;
};

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
using IID = GUID;
using CLSID = GUID;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

inline bool operator==(const GUID& a, const GUID& b) {
    if (a.Data1 != b.Data1 || a.Data2 != b.Data2 || a.Data3 != b.Data3) return false;
    for (int i = 0; i < 8; ++i) {
        if (a.Data4[i] != b.Data4[i]) return false;
    }
    return true;
}
inline bool operator!=(const GUID& a, const GUID& b) {
    return !(a == b);
}

struct POINT {
    LONG x;
    LONG y;
};
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

inline constexpr WORD LOWORD(ULONG_PTR value) {
    return static_cast<WORD>(value & 0xFFFFu);
}
inline constexpr WORD HIWORD(ULONG_PTR value) {
    return static_cast<WORD>((value >> 16) & 0xFFFFu);
}
inline constexpr ULONG_PTR MAKELONG(WORD low, WORD high) {
    return static_cast<ULONG_PTR>(low) | (static_cast<ULONG_PTR>(high) << 16);
}
inline WPARAM MAKEWPARAM(WORD low, WORD high) {
    return MAKELONG(low, high);
}
inline LPARAM MAKELPARAM(WORD low, WORD high) {
    return static_cast<LPARAM>(MAKELONG(low, high));
}
inline LPCWSTR MAKEINTRESOURCEW(ULONG_PTR id) {
    return reinterpret_cast<LPCWSTR>(id & 0xFFFFu);
}

// Error codes of the calls that the layer offers, with their values on Windows.
inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
inline constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
inline constexpr DWORD ERROR_ACCESS_DENIED = 5;
inline constexpr DWORD ERROR_INVALID_HANDLE = 6;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_INVALID_DATA = 13;
inline constexpr DWORD ERROR_GEN_FAILURE = 31;
inline constexpr DWORD ERROR_LOCK_VIOLATION = 33;
inline constexpr DWORD ERROR_NOT_SUPPORTED = 50;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_DISK_FULL = 112;
inline constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr DWORD ERROR_INVALID_NAME = 123;
inline constexpr DWORD ERROR_BAD_PATHNAME = 161;
inline constexpr DWORD ERROR_ALREADY_EXISTS = 183;
inline constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr DWORD ERROR_DIRECTORY = 267;
inline constexpr DWORD ERROR_MORE_DATA = 234;
inline constexpr DWORD ERROR_NO_MORE_ITEMS = 259;
inline constexpr DWORD ERROR_REGISTRY_IO_FAILED = 1016;
inline constexpr DWORD ERROR_KEY_DELETED = 1018;
inline constexpr DWORD ERROR_NOACCESS = 998;
inline constexpr DWORD ERROR_INVALID_FLAGS = 1004;
inline constexpr DWORD ERROR_NO_UNICODE_TRANSLATION = 1113;
inline constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;
inline constexpr DWORD ERROR_INVALID_CURSOR_HANDLE = 1402;
inline constexpr DWORD ERROR_CANNOT_FIND_WND_CLASS = 1407;
inline constexpr DWORD ERROR_INVALID_INDEX = 1413;
inline constexpr DWORD ERROR_CONTROL_ID_NOT_FOUND = 1421;
inline constexpr DWORD ERROR_INVALID_HOOK_HANDLE = 1404;
inline constexpr DWORD ERROR_RESOURCE_DATA_NOT_FOUND = 1812;
inline constexpr DWORD ERROR_RESOURCE_NAME_NOT_FOUND = 1814;
inline constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
inline constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;

inline constexpr HRESULT SrHresult(std::uint32_t value) {
    return static_cast<HRESULT>(value);
}
inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = SrHresult(0x80004001u);
inline constexpr HRESULT E_NOINTERFACE = SrHresult(0x80004002u);
inline constexpr HRESULT E_FAIL = SrHresult(0x80004005u);
inline constexpr HRESULT E_OUTOFMEMORY = SrHresult(0x8007000Eu);
inline constexpr HRESULT E_INVALIDARG = SrHresult(0x80070057u);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = SrHresult(0x80020005u);
inline constexpr HRESULT DISP_E_OVERFLOW = SrHresult(0x8002000Au);
inline constexpr HRESULT DISP_E_BADVARTYPE = SrHresult(0x80020008u);
inline constexpr HRESULT STG_E_FILENOTFOUND = SrHresult(0x80030002u);
inline constexpr HRESULT STG_E_PATHNOTFOUND = SrHresult(0x80030003u);
inline constexpr HRESULT STG_E_TOOMANYOPENFILES = SrHresult(0x80030004u);
inline constexpr HRESULT STG_E_ACCESSDENIED = SrHresult(0x80030005u);
inline constexpr HRESULT STG_E_INSUFFICIENTMEMORY = SrHresult(0x80030008u);
inline constexpr HRESULT STG_E_READFAULT = SrHresult(0x8003001Eu);
inline constexpr HRESULT STG_E_SHAREVIOLATION = SrHresult(0x80030020u);
inline constexpr HRESULT STG_E_LOCKVIOLATION = SrHresult(0x80030021u);
inline constexpr HRESULT STG_E_FILEALREADYEXISTS = SrHresult(0x80030050u);
inline constexpr HRESULT STG_E_INVALIDHEADER = SrHresult(0x800300FBu);
inline constexpr HRESULT STG_E_DOCFILECORRUPT = SrHresult(0x80030109u);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = SrHresult(0x80040154u);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = SrHresult(0x80040110u);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = SrHresult(0x80040111u);
inline constexpr HRESULT CO_E_CLASSSTRING = SrHresult(0x800401F3u);
inline constexpr HRESULT MK_E_UNAVAILABLE = SrHresult(0x800401E3u);
inline constexpr bool SUCCEEDED(HRESULT status) {
    return status >= 0;
}
inline constexpr bool FAILED(HRESULT status) {
    return status < 0;
}
inline constexpr HRESULT HRESULT_FROM_WIN32(DWORD error) {
    return error == 0 ? S_OK : SrHresult((error & 0xFFFFu) | 0x80070000u);
}

// The last-error value of the calling thread.
DWORD GetLastError();
void SetLastError(DWORD error);
