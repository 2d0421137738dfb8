// Native build: the system's dialogs for files and folders. The desk (desk.h) answers them.
#pragma once

#include "platform/com/com_api.h"
#include "platform/windows/common_controls_api.h"
#include "platform/windows/windows_api.h"

inline constexpr DWORD OFN_OVERWRITEPROMPT = 0x00000002;
inline constexpr DWORD OFN_HIDEREADONLY = 0x00000004;
inline constexpr DWORD OFN_NOCHANGEDIR = 0x00000008;
inline constexpr DWORD OFN_ENABLEHOOK = 0x00000020;
inline constexpr DWORD OFN_PATHMUSTEXIST = 0x00000800;
inline constexpr DWORD OFN_FILEMUSTEXIST = 0x00001000;
inline constexpr DWORD OFN_NOREADONLYRETURN = 0x00008000;
inline constexpr DWORD OFN_EXPLORER = 0x00080000;

// In the place of an error of the dialog itself.
inline constexpr DWORD CDERR_INITIALIZATION = 0x0002;
inline constexpr DWORD FNERR_BUFFERTOOSMALL = 0x3003;

using LPOFNHOOKPROC = UINT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
struct OPENFILENAMEW {
    DWORD lStructSize;
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCWSTR lpstrFilter;
    LPWSTR lpstrCustomFilter;
    DWORD nMaxCustFilter;
    DWORD nFilterIndex;
    LPWSTR lpstrFile;
    DWORD nMaxFile;
    LPWSTR lpstrFileTitle;
    DWORD nMaxFileTitle;
    LPCWSTR lpstrInitialDir;
    LPCWSTR lpstrTitle;
    DWORD Flags;
    WORD nFileOffset;
    WORD nFileExtension;
    LPCWSTR lpstrDefExt;
    LPARAM lCustData;
    LPOFNHOOKPROC lpfnHook;
    LPCWSTR lpTemplateName;
    void* pvReserved;
    DWORD dwReserved;
    DWORD FlagsEx;
};
using LPOPENFILENAMEW = OPENFILENAMEW*;
struct OFNOTIFYW {
    NMHDR hdr;
    LPOPENFILENAMEW lpOFN;
    LPWSTR pszFile;
};
// The one notice that a hook gets.
inline constexpr UINT CDN_INITDONE = 0u - 601u;

// Only the flags above, no template, no custom filter and no title of the file; else
// CDERR_INITIALIZATION. The offsets in the path aren't set. The dialog
// goes on until the desk gives a path that every check lets pass, or none. A path that the buffer
// can't hold is FNERR_BUFFERTOOSMALL, with the units needed in the buffer's first.
BOOL GetOpenFileNameW(LPOPENFILENAMEW request);
BOOL GetSaveFileNameW(LPOPENFILENAMEW request);
// Of the last of the two calls above; 0 when it went well or was cancelled.
DWORD CommDlgExtendedError();

struct IMalloc : IUnknown {
    virtual void STDMETHODCALLTYPE Free(void* block) = 0;

protected:
    ~IMalloc() = default;
};
// The one allocator of the process; it counts no references and only frees.
HRESULT SHGetMalloc(IMalloc** allocator);

// A folder's place in the tree of all folders; freed through the allocator.
struct ITEMIDLIST;
using LPITEMIDLIST = ITEMIDLIST*;
using LPCITEMIDLIST = const ITEMIDLIST*;
// False, with an empty text, for a list that names no folder or whose path needs more than
// MAX_PATH units.
BOOL SHGetPathFromIDListW(LPCITEMIDLIST list, LPWSTR path);

inline constexpr UINT BIF_EDITBOX = 0x0010;
inline constexpr UINT BIF_NEWDIALOGSTYLE = 0x0040;
inline constexpr UINT BFFM_INITIALIZED = 1;
inline constexpr UINT BFFM_SELCHANGED = 2;
inline constexpr UINT BFFM_ENABLEOK = WM_USER + 101;
inline constexpr UINT BFFM_SETSELECTIONW = WM_USER + 103;
using BFFCALLBACK = int(CALLBACK*)(HWND, UINT, LPARAM, LPARAM);
struct BROWSEINFOW {
    HWND hwndOwner;
    LPCITEMIDLIST pidlRoot;
    LPWSTR pszDisplayName;
    LPCWSTR lpszTitle;
    UINT ulFlags;
    BFFCALLBACK lpfn;
    LPARAM lParam;
    int iImage;
};
// Only BIF_EDITBOX and BIF_NEWDIALOGSTYLE together, without a root; null with ERROR_NOT_SUPPORTED
// for anything else. Null when it was cancelled.
LPITEMIDLIST SHBrowseForFolderW(BROWSEINFOW* request);
