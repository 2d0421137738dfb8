// Native build: a combo box filled with the subfolders of a folder and the drives.
#include <algorithm>
#include <vector>

#include "platform/files/directory_listing.h"
#include "platform/native_path.h"
#include "platform/windows/window_object.h"

namespace {

constexpr UINT kFoldersAndDrives = DDL_DIRECTORY | DDL_DRIVES | DDL_EXCLUSIVE;
// The one drive that there is: the root of the file system.
constexpr const WCHAR* kDrive = TEXT("[-z-]");

bool IsRoot(const WText& path) {
    return !path.empty() && path.back() == '\\';
}

bool ComesBefore(const WText& a, const WText& b) {
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH, a.data(),
                          static_cast<int>(a.size()), b.data(),
                          static_cast<int>(b.size())) == CSTR_LESS_THAN;
}

// The subfolders' names in their order; a point in front hides one, save the folder above.
std::vector<WText> SubfoldersOf(const WText& folder) {
    std::vector<WText> names;
    DirectoryListing listing;
    if (!listing.Open((folder + (IsRoot(folder) ? TEXT("*") : TEXT("\\*"))).c_str())) return names;
    DirectoryListing::Entry entry{};
    while (listing.Next(entry)) {
        const bool isAbove = entry.name == TEXT("..") && !IsRoot(folder);
        if (entry.isDirectory && (isAbove || entry.name[0] != '.')) names.emplace_back(entry.name);
    }
    std::sort(names.begin(), names.end(), ComesBefore);
    return names;
}

}  // namespace

int DlgDirListComboBoxW(HWND dialog, LPWSTR pathSpec, int comboId, int pathId, UINT types) {
    if (types != kFoldersAndDrives) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    const HWND combo = GetDlgItem(dialog, comboId);
    if (combo == nullptr) return FALSE;
    SendMessageW(combo, CB_RESETCONTENT, 0, 0);
    // A file name, or a pattern, in the place of a folder is no folder.
    if (pathSpec != nullptr && *pathSpec != 0 && !SetCurrentDirectoryW(pathSpec)) return FALSE;
    const WText folder = CurrentWideFolder();
    const auto add = [combo](const WText& text) {
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    };
    for (const WText& name : SubfoldersOf(folder))
        add(TEXT("[") + name + TEXT("]"));
    add(kDrive);
    // What is left of it without its folder: the pattern for all names.
    if (pathSpec != nullptr && *pathSpec != 0) {
        pathSpec[0] = '*';
        pathSpec[1] = 0;
    }
    if (pathId != 0) SetDlgItemTextW(dialog, pathId, folder.c_str());
    return TRUE;
}
