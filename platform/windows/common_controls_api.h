// Native build: the styles, messages, records and notifications of the common controls.
#pragma once

#include "platform/base/types.h"
#include "platform/windows/windows_api.h"

inline constexpr DWORD ICC_LISTVIEW_CLASSES = 0x00000001;
inline constexpr DWORD ICC_BAR_CLASSES = 0x00000004;
inline constexpr DWORD ICC_DATE_CLASSES = 0x00000100;
struct INITCOMMONCONTROLSEX {
    DWORD dwSize;
    DWORD dwICC;
};
// False for a record of another size; the classes themselves are always there.
BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes);

struct NMHDR {
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
};
inline constexpr UINT NM_DBLCLK = 0u - 3u;
inline constexpr UINT NM_RCLICK = 0u - 5u;

// List views, in report mode.
inline constexpr DWORD LVS_SINGLESEL = 0x0004;
inline constexpr DWORD LVS_EX_FULLROWSELECT = 0x00000020;
inline constexpr UINT LVM_FIRST = 0x1000;
inline constexpr UINT LVM_GETITEMCOUNT = LVM_FIRST + 4;
inline constexpr UINT LVM_DELETEALLITEMS = LVM_FIRST + 9;
inline constexpr UINT LVM_GETNEXTITEM = LVM_FIRST + 12;
inline constexpr UINT LVM_SETCOLUMNWIDTH = LVM_FIRST + 30;
inline constexpr UINT LVM_SETITEMSTATE = LVM_FIRST + 43;
inline constexpr UINT LVM_SORTITEMS = LVM_FIRST + 48;
inline constexpr UINT LVM_SETEXTENDEDLISTVIEWSTYLE = LVM_FIRST + 54;
inline constexpr UINT LVM_GETITEMW = LVM_FIRST + 75;
inline constexpr UINT LVM_INSERTITEMW = LVM_FIRST + 77;
inline constexpr UINT LVM_INSERTCOLUMNW = LVM_FIRST + 97;
inline constexpr UINT LVM_SETITEMTEXTW = LVM_FIRST + 116;
// As wide as the widest text of the column; a unit counts 6 pixels, and 12 stand around it.
inline constexpr int LVSCW_AUTOSIZE = -1;
inline constexpr UINT LVIF_TEXT = 0x0001;
inline constexpr UINT LVIF_PARAM = 0x0004;
inline constexpr UINT LVIS_SELECTED = 0x0002;
inline constexpr UINT LVCF_FMT = 0x0001;
inline constexpr UINT LVCF_WIDTH = 0x0002;
inline constexpr UINT LVCF_TEXT = 0x0004;
inline constexpr int LVCFMT_LEFT = 0x0000;
inline constexpr UINT LVNI_SELECTED = 0x0002;
inline constexpr UINT LVN_COLUMNCLICK = 0u - 108u;

struct LVITEMW {
    UINT mask;
    int iItem;
    int iSubItem;
    UINT state;
    UINT stateMask;
    LPWSTR pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
};
struct LVCOLUMNW {
    UINT mask;
    int fmt;
    int cx;
    LPWSTR pszText;
    int cchTextMax;
    int iSubItem;
};
using PFNLVCOMPARE = int(CALLBACK*)(LPARAM, LPARAM, LPARAM);
struct NMLISTVIEW {
    NMHDR hdr;
    int iItem;
    int iSubItem;
    UINT uNewState;
    UINT uOldState;
    UINT uChanged;
    POINT ptAction;
    LPARAM lParam;
};

// Status bars of one part.
inline constexpr WPARAM SBT_NOBORDERS = 0x0100;  // with the part's number: how it is drawn
inline constexpr UINT SB_SETTEXTW = WM_USER + 11;
inline constexpr UINT SB_GETTEXTLENGTHW = WM_USER + 12;
inline constexpr UINT SB_GETTEXTW = WM_USER + 13;

// Date fields.
inline constexpr UINT DTM_GETSYSTEMTIME = 0x1001;
inline constexpr UINT DTM_SETSYSTEMTIME = 0x1002;
inline constexpr UINT DTN_DATETIMECHANGE = 0u - 759u;
struct NMDATETIMECHANGE {
    NMHDR nmhdr;
    DWORD dwFlags;  // GDT_VALID or GDT_NONE
    SYSTEMTIME st;
};
inline constexpr LRESULT GDT_ERROR = -1;
inline constexpr LRESULT GDT_VALID = 0;
