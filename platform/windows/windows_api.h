// Native build: windows, messages and dialogs under their Windows names. Nothing is drawn: a window
// is its class, its place in the tree, its text and the state of its control. All windows belong to
// one thread, which alone calls these functions. The controls' messages stand in controls_api.h.
#pragma once

#include "platform/base/types.h"

using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using TIMERPROC = void(CALLBACK*)(HWND, UINT, UINT_PTR, DWORD);
using HOOKPROC = LRESULT(CALLBACK*)(int, WPARAM, LPARAM);
struct HHOOK__;
using HHOOK = HHOOK__*;

inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_SIZE = 0x0005;
inline constexpr WPARAM SIZE_MINIMIZED = 1;
inline constexpr UINT WM_SETREDRAW = 0x000B;
inline constexpr UINT WM_SETTEXT = 0x000C;
inline constexpr UINT WM_GETTEXT = 0x000D;
inline constexpr UINT WM_GETTEXTLENGTH = 0x000E;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_QUIT = 0x0012;
inline constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
inline constexpr UINT WM_NOTIFY = 0x004E;
inline constexpr UINT WM_HELP = 0x0053;
inline constexpr UINT WM_CONTEXTMENU = 0x007B;
inline constexpr UINT WM_SETICON = 0x0080;
inline constexpr WPARAM ICON_SMALL = 0;
inline constexpr UINT WM_KEYFIRST = 0x0100;
inline constexpr UINT WM_KEYLAST = 0x0109;
inline constexpr UINT WM_KEYDOWN = 0x0100;
inline constexpr UINT WM_INITDIALOG = 0x0110;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_TIMER = 0x0113;
inline constexpr UINT WM_USER = 0x0400;
inline constexpr UINT WM_APP = 0x8000;
inline constexpr UINT DM_SETDEFID = WM_USER + 1;

inline constexpr WPARAM VK_TAB = 0x09;
inline constexpr WPARAM VK_RETURN = 0x0D;
inline constexpr WPARAM VK_ESCAPE = 0x1B;

inline constexpr int GWL_STYLE = -16;
inline constexpr int DWLP_USER = 16;

BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);
HWND GetParent(HWND window);
int GetDlgCtrlID(HWND window);
BOOL EnableWindow(HWND window, BOOL enable);
BOOL IsWindowEnabled(HWND window);
inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOW = 5;
// True when the window was visible before. Only the two values above.
BOOL ShowWindow(HWND window, int show);
// Visible, and its parents as well.
BOOL IsWindowVisible(HWND window);
HWND SetFocus(HWND window);
HWND GetFocus();
LONG_PTR GetWindowLongPtrW(HWND window, int index);
LONG_PTR SetWindowLongPtrW(HWND window, int index, LONG_PTR value);
BOOL SetWindowContextHelpId(HWND window, DWORD id);
DWORD GetWindowContextHelpId(HWND window);

BOOL GetWindowRect(HWND window, RECT* rect);
BOOL GetClientRect(HWND window, RECT* rect);
inline constexpr UINT SWP_NOSIZE = 0x0001;
inline constexpr UINT SWP_NOMOVE = 0x0002;
inline constexpr UINT SWP_NOZORDER = 0x0004;
inline constexpr UINT SWP_NOACTIVATE = 0x0010;
inline constexpr UINT SWP_NOOWNERZORDER = 0x0200;
// Only with SWP_NOZORDER.
BOOL SetWindowPos(HWND window, HWND behind, int x, int y, int width, int height, UINT flags);
// There is nothing to draw: these tell whether there is such a window.
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL UpdateWindow(HWND window);
inline constexpr UINT RDW_INVALIDATE = 0x0001;
inline constexpr UINT RDW_INTERNALPAINT = 0x0002;
inline constexpr UINT RDW_UPDATENOW = 0x0100;
// Only these three flags, and the whole window.
BOOL RedrawWindow(HWND window, const RECT* rect, HANDLE region, UINT flags);

BOOL SetWindowTextW(HWND window, LPCWSTR text);

HWND GetDlgItem(HWND dialog, int id);
LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR buffer, int cch);
BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text);

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
inline constexpr UINT PM_REMOVE = 0x0001;
LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
BOOL PostMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void PostQuitMessage(int exitCode);
BOOL PeekMessageW(MSG* message, HWND window, UINT first, UINT last, UINT flags);
// Waits for timers; where nothing could ever come (nothing posted, no timer) it is -1 with
// ERROR_NO_MORE_ITEMS, since nobody sits at a keyboard here.
BOOL GetMessageW(MSG* message, HWND window, UINT first, UINT last);
// There is no keyboard whose layout gives characters: tells only whether it was a key.
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageW(const MSG* message);
UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT ms, TIMERPROC procedure);
BOOL KillTimer(HWND window, UINT_PTR id);

inline constexpr int WH_GETMESSAGE = 3;
DWORD GetCurrentThreadId();
// Only WH_GETMESSAGE of the calling thread.
HHOOK SetWindowsHookExW(int kind, HOOKPROC procedure, HINSTANCE module, DWORD thread);
BOOL UnhookWindowsHookEx(HHOOK hook);
LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam);

// What WM_HELP points to.
inline constexpr int HELPINFO_WINDOW = 1;
struct HELPINFO {
    UINT cbSize;
    int iContextType;
    int iCtrlId;
    HANDLE hItemHandle;
    DWORD_PTR dwContextId;
    POINT MousePos;
};
inline constexpr UINT HELP_CONTENTS = 0x0003;
inline constexpr UINT HELP_CONTEXTPOPUP = 0x0008;
inline constexpr UINT HELP_WM_HELP = 0x000C;

// Dialogs from extended templates (DIALOGEX). A unit is a quarter of 6 pixels across and an eighth
// of 13 down where the template names a font, of 7 and 16 where it names none.
// Null (-1 for the modal ones) and the last error when the library has no sound template of this
// number, or the class of a control is unknown.
HWND CreateDialogParamW(HINSTANCE module, LPCWSTR name, HWND parent, DLGPROC procedure,
                        LPARAM parameter);
INT_PTR DialogBoxParamW(HINSTANCE module, LPCWSTR name, HWND owner, DLGPROC procedure,
                        LPARAM parameter);
BOOL EndDialog(HWND dialog, INT_PTR result);
BOOL IsDialogMessageW(HWND dialog, MSG* message);
BOOL MapDialogRect(HWND dialog, RECT* rect);

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;
inline constexpr int IDHELP = 9;
inline constexpr UINT MB_OK = 0x00000000;
inline constexpr UINT MB_YESNOCANCEL = 0x00000003;
inline constexpr UINT MB_YESNO = 0x00000004;
inline constexpr UINT MB_ICONERROR = 0x00000010;
inline constexpr UINT MB_ICONQUESTION = 0x00000020;
inline constexpr UINT MB_ICONWARNING = 0x00000030;
inline constexpr UINT MB_ICONINFORMATION = 0x00000040;

// Asks the desk (desk.h): the answer of the person behind the program.
int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

inline LPCWSTR const IDC_ARROW = MAKEINTRESOURCEW(32512);
inline LPCWSTR const IDC_WAIT = MAKEINTRESOURCEW(32514);
HCURSOR LoadCursorW(HINSTANCE module, LPCWSTR name);
HCURSOR SetCursor(HCURSOR cursor);

inline constexpr UINT IMAGE_ICON = 1;
inline constexpr UINT LR_DEFAULTSIZE = 0x0040;
// Only icons of an open resource library by their numbers, with LR_DEFAULTSIZE or no flags. Null
// and the last error for an icon that isn't there. The caller destroys what it gets.
HANDLE LoadImageW(HINSTANCE module, LPCWSTR name, UINT type, int width, int height, UINT flags);
// ERROR_INVALID_CURSOR_HANDLE for a handle that is no icon, or no longer one.
BOOL DestroyIcon(HICON icon);

inline constexpr int SM_CXSCREEN = 0;
inline constexpr int SM_CYSCREEN = 1;
inline constexpr int SM_CXSMICON = 49;
inline constexpr int SM_CYSMICON = 50;
// 0 for any other number.
int GetSystemMetrics(int index);
