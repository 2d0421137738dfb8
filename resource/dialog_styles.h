// The styles and class names that the dialog templates use, for the resource compiler, which has no
// headers of its own. Values as in the public documentation of dialogs and controls.
#pragma once

#define IDOK 1
#define IDCANCEL 2
#define IDHELP 9
#define IDC_STATIC (-1)

#define WS_POPUP 0x80000000
#define WS_VISIBLE 0x10000000
#define WS_DISABLED 0x08000000
#define WS_CAPTION 0x00C00000
#define WS_BORDER 0x00800000
#define WS_VSCROLL 0x00200000
#define WS_HSCROLL 0x00100000
#define WS_SYSMENU 0x00080000
#define WS_THICKFRAME 0x00040000
#define WS_GROUP 0x00020000
#define WS_TABSTOP 0x00010000
#define WS_MAXIMIZEBOX 0x00010000

#define DS_SHELLFONT 0x48
#define DS_MODALFRAME 0x80
#define DS_CONTEXTHELP 0x2000

#define BS_ICON 0x40
#define BS_AUTORADIOBUTTON 9

#define CBS_DROPDOWN 0x2
#define CBS_DROPDOWNLIST 0x3
#define CBS_AUTOHSCROLL 0x40

#define LBS_NOTIFY 0x1
#define LBS_NOINTEGRALHEIGHT 0x100

#define ES_AUTOHSCROLL 0x80

#define SS_ETCHEDHORZ 0x10
#define SS_NOPREFIX 0x80
#define SS_ENDELLIPSIS 0x4000

#define LVS_REPORT 0x1
#define LVS_SHOWSELALWAYS 0x8

#define SBARS_SIZEGRIP 0x100
#define CCS_BOTTOM 0x3

#define CLASS_BUTTON "Button"
#define CLASS_STATIC "Static"
#define CLASS_LIST_VIEW "SysListView32"
#define CLASS_STATUS_BAR "msctls_statusbar32"
#define CLASS_DATE_FIELD "SysDateTimePick32"
