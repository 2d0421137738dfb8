// Native build: the styles, messages and notifications of the controls.
#pragma once

#include "platform/base/types.h"
#include "platform/windows/windows_api.h"

// Static text: no messages of its own.

// Buttons.
inline constexpr UINT BM_GETCHECK = 0x00F0;
inline constexpr UINT BM_SETCHECK = 0x00F1;
inline constexpr UINT BM_CLICK = 0x00F5;
// The icon on a button of style BS_ICON; any other has none. The button doesn't own it.
inline constexpr UINT BM_GETIMAGE = 0x00F6;
inline constexpr UINT BM_SETIMAGE = 0x00F7;
inline constexpr WPARAM BST_UNCHECKED = 0;
inline constexpr WPARAM BST_CHECKED = 1;
inline constexpr WORD BN_CLICKED = 0;

// Edit fields.
inline constexpr UINT EM_LIMITTEXT = 0x00C5;
inline constexpr WORD EN_CHANGE = 0x0300;
inline constexpr WORD EN_UPDATE = 0x0400;
inline constexpr WORD EN_MAXTEXT = 0x0501;

// Combo boxes.
inline constexpr UINT CB_ADDSTRING = 0x0143;
inline constexpr UINT CB_DELETESTRING = 0x0144;
inline constexpr UINT CB_GETCOUNT = 0x0146;
inline constexpr UINT CB_GETCURSEL = 0x0147;
inline constexpr UINT CB_GETLBTEXT = 0x0148;
inline constexpr UINT CB_GETLBTEXTLEN = 0x0149;
inline constexpr UINT CB_INSERTSTRING = 0x014A;
inline constexpr UINT CB_RESETCONTENT = 0x014B;
inline constexpr UINT CB_FINDSTRING = 0x014C;
inline constexpr UINT CB_SELECTSTRING = 0x014D;
inline constexpr UINT CB_SETCURSEL = 0x014E;
inline constexpr UINT CB_GETITEMDATA = 0x0150;
inline constexpr UINT CB_SETITEMDATA = 0x0151;
inline constexpr UINT CB_SETEXTENDEDUI = 0x0155;
inline constexpr UINT CB_FINDSTRINGEXACT = 0x0158;
inline constexpr UINT CB_SETDROPPEDWIDTH = 0x0160;
inline constexpr WORD CBN_SELCHANGE = 1;
inline constexpr WORD CBN_KILLFOCUS = 4;
inline constexpr WORD CBN_EDITCHANGE = 5;

inline constexpr UINT DDL_DIRECTORY = 0x0010;
inline constexpr UINT DDL_DRIVES = 0x4000;
inline constexpr UINT DDL_EXCLUSIVE = 0x8000;
// Only the three types above together: the subfolders as "[name]", the one above as "[..]" and the
// drives as "[-z-]". Goes to the folder, shows its path in control `pathId` (0 for none), and
// leaves a star of a text at `pathSpec`. False, with an empty list, when there is no such folder.
int DlgDirListComboBoxW(HWND dialog, LPWSTR pathSpec, int comboId, int pathId, UINT types);

// List boxes.
inline constexpr UINT LB_INSERTSTRING = 0x0181;
inline constexpr UINT LB_DELETESTRING = 0x0182;
inline constexpr UINT LB_RESETCONTENT = 0x0184;
inline constexpr UINT LB_SETCURSEL = 0x0186;
inline constexpr UINT LB_GETCURSEL = 0x0188;
inline constexpr UINT LB_GETTEXT = 0x0189;
inline constexpr UINT LB_GETTEXTLEN = 0x018A;
inline constexpr UINT LB_GETCOUNT = 0x018B;
inline constexpr UINT LB_SETHORIZONTALEXTENT = 0x0194;
inline constexpr UINT LB_GETITEMDATA = 0x0199;
inline constexpr UINT LB_SETITEMDATA = 0x019A;
inline constexpr LRESULT LB_ERR = -1;
inline constexpr WORD LBN_SELCHANGE = 1;
inline constexpr WORD LBN_DBLCLK = 2;
