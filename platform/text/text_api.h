// Native build: comparison, formatting, dates and times under their Windows names. Each call takes
// only the flags that the product passes; any other fails with the documented error.
#pragma once

#include "platform/base/types.h"

inline constexpr LCID LOCALE_USER_DEFAULT = 0x0400;
inline constexpr LCID LOCALE_NEUTRAL = 0x0000;
inline constexpr DWORD NORM_IGNORECASE = 0x00000001;
inline constexpr DWORD SORT_STRINGSORT = 0x00001000;
inline constexpr DWORD NORM_IGNOREKANATYPE = 0x00010000;
inline constexpr DWORD NORM_IGNOREWIDTH = 0x00020000;
inline constexpr int CSTR_LESS_THAN = 1;
inline constexpr int CSTR_EQUAL = 2;
inline constexpr int CSTR_GREATER_THAN = 3;

// Compares two texts; a length of -1 means null-terminated, any other counts UTF-16 units.
// 0 on failure (null text: ERROR_INVALID_PARAMETER; other flags: ERROR_INVALID_FLAGS).
int CompareStringW(LCID locale, DWORD flags, LPCWSTR a, int cchA, LPCWSTR b, int cchB);

inline constexpr DWORD LCMAP_SORTKEY = 0x00000400;

// Only LCMAP_SORTKEY with the flags 0x31001: bytes, a null at their end, that compare byte by byte
// as CompareStringW compares the texts. `buffer` holds `cb` bytes; 0 asks for the bytes needed. 0
// on failure (buffer too small: ERROR_INSUFFICIENT_BUFFER; no text: ERROR_INVALID_PARAMETER).
int LCMapStringW(LCID locale, DWORD flags, LPCWSTR text, int cch, LPWSTR buffer, int cb);

inline constexpr DWORD DATE_SHORTDATE = 0x00000001;
inline constexpr DWORD DATE_LONGDATE = 0x00000002;
inline constexpr DWORD TIME_NOSECONDS = 0x00000002;

// Written as for the environment's locale (LC_TIME); a null `date` means now. The format text must
// be null. Returns the units needed or written, the terminator included; 0 on failure.
int GetDateFormatW(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR format, LPWSTR buffer,
                   int cchBuffer);
int GetTimeFormatW(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR format, LPWSTR buffer,
                   int cchBuffer);

void GetLocalTime(SYSTEMTIME* now);
BOOL SystemTimeToFileTime(const SYSTEMTIME* time, FILETIME* result);
BOOL FileTimeToSystemTime(const FILETIME* time, SYSTEMTIME* result);
// With a null zone: the process's zone (TZ), by the rule that held at that moment.
struct TIME_ZONE_INFORMATION;
BOOL SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* utc,
                                     SYSTEMTIME* local);

// Days since 1899-12-30; the fraction is the time of day.
INT VariantTimeToSystemTime(DATE date, SYSTEMTIME* result);

// The user's name; *cch is the buffer's size in units and becomes the units of the name with its
// terminator. Too small: ERROR_INSUFFICIENT_BUFFER and the size needed.
BOOL GetUserNameW(LPWSTR buffer, DWORD* cch);
