// The place to look in: the box with its folders and drives, and the dialogs that browse for it.
#include <algorithm>
#include <locale>
#include <memory>

#include "criteria/text_equality.h"
#include "dialog/find_dialog.h"
#include "module/controls.h"
#include "module/registry_key.h"
#include "outside/blx_util.h"
#include "outside/md_registry.h"
#include "outside/md_window_aids.h"
#include "platform/native_path.h"
#include "platform/resource_text.h"
#include "search/unsearched_folders.h"

namespace {

constexpr WPARAM kFromStart = static_cast<WPARAM>(-1);
constexpr WPARAM kAtEnd = static_cast<WPARAM>(-1);
constexpr std::size_t kBrowsePathLength = 270;
constexpr UINT kFoldersAndDrives = DDL_DIRECTORY | DDL_DRIVES | DDL_EXCLUSIVE;
constexpr DWORD kBrowseFileFlags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST |
                                   OFN_ENABLEHOOK | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;

bool EqualsFold(const WCHAR* a, const WCHAR* b) {
    return TextsEqual(a, b, kFoldName);
}

void EnsureTrailingBackslash(WText& text) {
    if (text.empty() || text.back() != '\\') text += static_cast<WCHAR>('\\');
}

// That of a drive keeps it.
void RemoveTrailingBackslash(WText& path) {
    if (path.size() > 3 && path.back() == '\\') path.pop_back();
}

WText UpperCase(WTextView text) {
    const auto& letters = std::use_facet<std::ctype<wchar_t>>(std::locale());
    WText upper;
    for (const WCHAR unit : text)
        upper += static_cast<WCHAR>(letters.toupper(static_cast<wchar_t>(unit)));
    return upper;
}

// The folder that a text names, or that of the file that it names; what is no folder loses its last
// component.
WText FolderOf(WText path) {
    if (path.empty() || PathIsDirectoryW(path.c_str())) return path;
    PathRemoveFileSpecW(path.data());
    path.resize(wtext::Length(path.c_str()));
    return path;
}

// A folder that no search looks into can't be chosen.
int CALLBACK BrowseFolderCallback(HWND window, UINT message, LPARAM lParam, LPARAM data) try {
    constexpr std::size_t kLength = 261;
    WCHAR path[kLength];
    if (message == BFFM_INITIALIZED && data != 0) {
        SendMessageW(window, BFFM_SETSELECTIONW, TRUE, data);
    } else if (message == BFFM_SELCHANGED) {
        const auto* item = reinterpret_cast<LPCITEMIDLIST>(lParam);
        if (item == nullptr || !SHGetPathFromIDListW(item, path) || *path == 0) return 0;
        const WCHAR* name = PathFindFileNameW(path);
        const bool usable = *name != 0 && !EqualsFold(name, TEXT("..")) &&
                            !EqualsFold(name, TEXT(".")) && !IsUnsearchedFolder(name);
        SendMessageW(window, BFFM_ENABLEOK, usable, usable);
    }
    return 0;
} catch (...) {
    return 0;
}

struct FreeItemList {
    void operator()(ITEMIDLIST* list) const {
        IMalloc* allocator = nullptr;
        if (FAILED(SHGetMalloc(&allocator)) || allocator == nullptr) return;
        allocator->Free(list);
        allocator->Release();
    }
};

WText LookInText(const SRxFindDialog& dialog) {
    return ReadControlText(dialog.dialogWindow, IDC_PATH_LIST).c_str();
}

void SelectPath(SRxFindDialog& dialog, const WText& path, WPARAM where) {
    const LRESULT item =
        SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_INSERTSTRING, where, path.c_str());
    SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_SETCURSEL, static_cast<WPARAM>(item));
}

// Full paths in the place of the listing's short forms.
void ExpandEntries(SRxFindDialog& dialog, const WText& base) {
    LRESULT count = SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_GETCOUNT);
    for (LRESULT item = 0; item < count;) {
        WText entry = ReadComboEntry(dialog.dialogWindow, IDC_PATH_LIST, item);
        SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_DELETESTRING, static_cast<WPARAM>(item));
        const bool dots =
            EqualsFold(entry.c_str(), TEXT("[..]")) || EqualsFold(entry.c_str(), TEXT("[.]"));
        if (dots || !dialog.PathReformat(base, entry)) {
            --count;
            continue;
        }
        SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_INSERTSTRING, static_cast<WPARAM>(item),
               entry.c_str());
        ++item;
    }
}

void AddRecentPath(SRxFindDialog& dialog) {
    WCHAR keyPath[kPathLength] = TEXT("\\FindExt\\RecentPathList");
    const RegistryKeyOwner key(MDxOpenRegistryKey(HKEY_CURRENT_USER, keyPath, kPathLength));
    if (!key) return;
    BLxWString recent;
    const bool read = BLxPref_Reg::Read(key.get(), nullptr, &recent) == 0;
    if (!read || recent.empty() || !PathFileExistsW(recent.c_str())) return;
    const bool known = SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_FINDSTRINGEXACT, kFromStart,
                              recent.c_str()) >= 0;
    if (!known) SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_INSERTSTRING, 0, recent.c_str());
}

WText BrowseStart(SRxFindDialog& dialog) {
    WText start = LookInText(dialog);
    const bool asksServer = start.empty() && !dialog.inApp;
    start = FolderOf(std::move(start));
    IQxLecternServer* const reader = asksServer ? dialog.GetServer(nullptr, nullptr, 0) : nullptr;
    IQxWorkContext* context = nullptr;
    if (reader != nullptr && SUCCEEDED(reader->GetWorkContext(&context)) && context != nullptr) {
        BSTR folder = nullptr;
        if (SUCCEEDED(context->GetWorkContextFolder(&folder)) && folder != nullptr) {
            start.assign(folder, SysStringLen(folder));
            SysFreeString(folder);
        }
        context->Release();
    }
    return start.empty() ? CurrentWideFolder() : start;
}

bool BrowseForFile(SRxFindDialog& dialog, const WText& start, const WText& title) {
    const std::unique_ptr<WCHAR[]> filter(new WCHAR[kComposedLength]());
    GetDataFileFilter(filter.get(), kComposedLength);
    WCHAR file[kBrowsePathLength] = {};
    OPENFILENAMEW request{};
    request.lStructSize = sizeof(request);
    request.hwndOwner = dialog.dialogWindow;
    request.hInstance = dialog.resourceInstance;
    request.lpstrFilter = filter.get();
    request.lpstrFile = file;
    request.nMaxFile = kBrowsePathLength;
    request.lpstrInitialDir = start.c_str();
    request.lpstrTitle = title.c_str();
    request.Flags = kBrowseFileFlags;
    request.lpfnHook = BrowseFileCallbackProc;
    if (!GetOpenFileNameW(&request)) return false;
    const LRESULT item =
        SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_FINDSTRINGEXACT, kFromStart, file);
    if (item < 0) {
        SelectPath(dialog, file, kAtEnd);
    } else {
        SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_SETCURSEL, static_cast<WPARAM>(item));
    }
    return true;
}

bool BrowseForFolder(SRxFindDialog& dialog, WText start, const WText& title) {
    RemoveTrailingBackslash(start);
    WCHAR shown[kBrowsePathLength] = {};
    BROWSEINFOW request{};
    request.hwndOwner = dialog.dialogWindow;
    request.pszDisplayName = shown;
    request.lpszTitle = title.c_str();
    request.ulFlags = BIF_EDITBOX | BIF_NEWDIALOGSTYLE;
    request.lpfn = BrowseFolderCallback;
    request.lParam = reinterpret_cast<LPARAM>(start.c_str());
    const std::unique_ptr<ITEMIDLIST, FreeItemList> chosen(SHBrowseForFolderW(&request));
    if (chosen == nullptr || !SHGetPathFromIDListW(chosen.get(), shown)) return true;
    if (*shown != 0) SelectPath(dialog, shown, 0);
    return dialog.InitPaths();
}

}  // namespace

bool SRxFindDialog::PathReformat(const WText& base, WText& entry) const {
    if (entry.size() < 2) {
        entry.clear();
        return false;
    }
    const std::size_t open = entry.find('[');
    const std::size_t close = entry.find(']', open == WText::npos ? 0 : open);
    if (open == WText::npos || close == WText::npos) return false;
    WText path;
    if (entry[open + 1] == '-') {
        const std::size_t begin = open + 2;
        const std::size_t end = entry.find('-', begin);
        if (end != WText::npos && end > begin) {
            path = UpperCase(entry.substr(begin, end - begin)) + TEXT(":\\");
        }
    } else {
        path = base;
        EnsureTrailingBackslash(path);
        path += entry.substr(open + 1, close - open - 1);
        EnsureTrailingBackslash(path);
    }
    const WText full = FullWidePath(path);
    if (full.empty()) return false;
    entry = full;
    return true;
}

bool SRxFindDialog::InitPaths() {
    WText base = LookInText(*this);
    if (base.empty()) base = BLx::GetWorkspacePath().c_str();
    if (base.empty()) {
        BLxWString workspaces;
        BLx::GetWorkspacesDir(workspaces);
        base = workspaces.c_str();
    }
    // The listing writes into its text.
    WText listed = base;
    listed.resize(std::max<std::size_t>(listed.size(), kPathLength));
    EnsureTrailingBackslash(base);
    SendTo(dialogWindow, IDC_PATH_LIST, CB_RESETCONTENT);
    // A folder that can't be listed leaves the box empty; the search refuses it later.
    (void)DlgDirListComboBoxW(dialogWindow, listed.data(), IDC_PATH_LIST, IDC_PATH_LIST,
                              kFoldersAndDrives);
    ExpandEntries(*this, base);
    LRESULT item =
        SendTo(dialogWindow, IDC_PATH_LIST, CB_FINDSTRINGEXACT, kFromStart, base.c_str());
    if (item < 0) item = SendTo(dialogWindow, IDC_PATH_LIST, CB_INSERTSTRING, 0, base.c_str());
    SendTo(dialogWindow, IDC_PATH_LIST, CB_SETCURSEL, static_cast<WPARAM>(item));
    AddRecentPath(*this);
    SetDropWidth(dialogWindow, IDC_PATH_LIST);
    return true;
}

bool SRxFindDialog::OnCommandFolder() {
    lookInFolders = true;
    const WText path = FolderOf(LookInText(*this));
    if (PathFileExistsW(path.c_str())) SelectPath(*this, path, kAtEnd);
    return InitPaths();
}

bool SRxFindDialog::OnCommandPathKillFocus() {
    const WText path = LookInText(*this);
    if (path.empty()) return true;
    if (SendTo(dialogWindow, IDC_PATH_LIST, CB_FINDSTRINGEXACT, kFromStart, path.c_str()) < 0) {
        SelectPath(*this, path, kAtEnd);
    }
    return true;
}

bool SRxFindDialog::OnCommandRelatedDocs() {
    lookInFolders = false;
    SendTo(dialogWindow, IDC_PATH_LIST, CB_RESETCONTENT);
    WCHAR keyPath[kPathLength] = TEXT("\\FindExt\\RecentFileList");
    const RegistryKeyOwner key(MDxOpenRegistryKey(HKEY_CURRENT_USER, keyPath, kPathLength));
    if (!key) return true;
    for (int n = 0;; ++n) {
        BLxWString file;
        const WText name = TEXT("File") + wtext::FromNumber(n);
        if (BLxPref_Reg::Read(key.get(), name.c_str(), &file) != 0) break;
        if (file.empty()) continue;
        SendTo(dialogWindow, IDC_PATH_LIST, CB_INSERTSTRING, kAtEnd, file.c_str());
    }
    SendTo(dialogWindow, IDC_PATH_LIST, CB_SETCURSEL, 0);
    return true;
}

bool SRxFindDialog::OnCommandBrowse() {
    const WText start = BrowseStart(*this);
    const WText title = ResourceText(resourceInstance, STR_BROWSE_TITLE);
    const bool related = SendTo(dialogWindow, IDC_LOOK_RELATED, BM_GETCHECK) != BST_UNCHECKED;
    return related ? BrowseForFile(*this, start, title) : BrowseForFolder(*this, start, title);
}

void SRxFindDialog::RemoveSand(const WCHAR* text) {
    auto* units = const_cast<WCHAR*>(text);
    while (*units != 0 && *units != '<')
        ++units;
    if (*units != 0) *units = 0;
}
