// Native build: the names of Windows that only the layer itself needs: what a template says of a
// window, and what windows tell one another. Callers never name them.
#pragma once

#include "platform/base/types.h"

inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_VISIBLE = 0x10000000;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD WS_CAPTION = 0x00C00000;
inline constexpr DWORD WS_GROUP = 0x00020000;
inline constexpr DWORD WS_TABSTOP = 0x00010000;
inline constexpr DWORD DS_SETFONT = 0x00000040;

inline constexpr DWORD BS_PUSHBUTTON = 0x00000000;
inline constexpr DWORD BS_DEFPUSHBUTTON = 0x00000001;
inline constexpr DWORD BS_AUTOCHECKBOX = 0x00000003;
inline constexpr DWORD BS_AUTORADIOBUTTON = 0x00000009;
inline constexpr DWORD BS_TYPEMASK = 0x0000000F;
inline constexpr DWORD BS_ICON = 0x00000040;
inline constexpr DWORD CBS_DROPDOWN = 0x00000002;
inline constexpr DWORD CBS_DROPDOWNLIST = 0x00000003;

inline constexpr UINT WM_SETFOCUS = 0x0007;
inline constexpr UINT WM_KILLFOCUS = 0x0008;
inline constexpr WORD EN_SETFOCUS = 0x0100;
inline constexpr WORD EN_KILLFOCUS = 0x0200;
inline constexpr WORD CBN_SETFOCUS = 3;
inline constexpr WORD LBN_SETFOCUS = 4;
inline constexpr WORD LBN_KILLFOCUS = 5;
inline constexpr UINT PM_NOREMOVE = 0x0000;
inline constexpr UINT WM_ENABLE = 0x000A;
inline constexpr int HC_ACTION = 0;

inline bool IS_INTRESOURCE(LPCWSTR name) {
    return (reinterpret_cast<ULONG_PTR>(name) >> 16) == 0;
}
