// Native build: windows and controls under their Windows names. Nothing is drawn: a window is its
// class, its place in the tree, its text and the state of its control.
#pragma once

#include "platform/base/types.h"

inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD BS_AUTOCHECKBOX = 0x00000003;
inline constexpr DWORD BS_AUTORADIOBUTTON = 0x00000009;
inline constexpr DWORD CBS_DROPDOWN = 0x00000002;
inline constexpr DWORD CBS_DROPDOWNLIST = 0x00000003;

inline constexpr UINT WM_SETTEXT = 0x000C;
inline constexpr UINT WM_GETTEXT = 0x000D;
inline constexpr UINT WM_GETTEXTLENGTH = 0x000E;
inline constexpr UINT BM_GETCHECK = 0x00F0;
inline constexpr UINT BM_SETCHECK = 0x00F1;
inline constexpr WPARAM BST_UNCHECKED = 0;
inline constexpr WPARAM BST_CHECKED = 1;
inline constexpr UINT CB_ADDSTRING = 0x0143;
inline constexpr UINT CB_DELETESTRING = 0x0144;
inline constexpr UINT CB_GETCOUNT = 0x0146;
inline constexpr UINT CB_GETCURSEL = 0x0147;
inline constexpr UINT CB_GETLBTEXT = 0x0148;
inline constexpr UINT CB_GETLBTEXTLEN = 0x0149;
inline constexpr UINT CB_INSERTSTRING = 0x014A;
inline constexpr UINT CB_RESETCONTENT = 0x014B;
inline constexpr UINT CB_SETCURSEL = 0x014E;
inline constexpr LRESULT CB_ERR = -1;

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;
inline constexpr UINT MB_OK = 0x00000000;
inline constexpr UINT MB_YESNOCANCEL = 0x00000003;
inline constexpr UINT MB_YESNO = 0x00000004;
inline constexpr UINT MB_ICONERROR = 0x00000010;
inline constexpr UINT MB_ICONQUESTION = 0x00000020;
inline constexpr UINT MB_ICONWARNING = 0x00000030;
inline constexpr UINT MB_ICONINFORMATION = 0x00000040;

HWND CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR text, DWORD style, int x,
                     int y, int width, int height, HWND parent, HMENU menuOrId, HINSTANCE instance,
                     LPVOID parameter);
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);
BOOL EnableWindow(HWND window, BOOL enable);
BOOL IsWindowEnabled(HWND window);
HWND GetDlgItem(HWND dialog, int id);
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR buffer, int cch);
BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text);
BOOL GetWindowRect(HWND window, RECT* rect);

// Asks the desk (desk.h): the answer of the person behind the program.
int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

inline LPCWSTR const IDC_ARROW = MAKEINTRESOURCEW(32512);
inline LPCWSTR const IDC_WAIT = MAKEINTRESOURCEW(32514);
HCURSOR LoadCursorW(HINSTANCE module, LPCWSTR name);
HCURSOR SetCursor(HCURSOR cursor);

inline constexpr DWORD ICC_LISTVIEW_CLASSES = 0x00000001;
inline constexpr DWORD ICC_BAR_CLASSES = 0x00000004;
inline constexpr DWORD ICC_DATE_CLASSES = 0x00000100;
struct INITCOMMONCONTROLSEX {
    DWORD dwSize;
    DWORD dwICC;
};
// False for a record of another size; the classes themselves are always there.
BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes);
