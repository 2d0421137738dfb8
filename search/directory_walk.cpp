#include "module/registry_key.h"
#include "outside/blx_directory_search.h"
#include "outside/md_messages.h"
#include "outside/md_registry.h"
#include "platform/native_path.h"
#include "platform/wtext.h"
#include "search/search.h"
#include "search/search_observer.h"

namespace {

// With the wildcard, without the terminator.
constexpr std::size_t kMaxPattern = 260;
constexpr int kRecentFiles = 5;

// The pattern that lists `path`; its length without the star is that of the folder's prefix.
BLxWString PatternOf(const WCHAR* path) {
    BLxWString pattern = path;
    const WCHAR last = pattern.empty() ? WCHAR{0} : pattern.back();
    if (last == '*') return pattern;
    if (last != '\\') pattern += static_cast<WCHAR>('\\');
    pattern += static_cast<WCHAR>('*');
    return pattern;
}

void ReportFolder(SRxFoundList& list, const WCHAR* folder) {
    if (list.dialog->observer != nullptr) list.dialog->observer->OnFolderFailed(folder);
    DisplayMessageFileName(list.dialog->resourceInstance, folder, MSG_PATH_NOT_FOUND, kHelpFind,
                           list.window, MB_OK);
}

// On a drive from its root, or in the network.
bool IsAbsolute(WTextView path) {
    const bool hasDrive = path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
    return hasDrive || path.substr(0, 2) == TEXT("\\\\");
}

// Folders that hold what was thrown away or replaced.
bool IsSkippedName(const BLxWString& name) {
    const auto equals = [&name](const WCHAR* skipped) {
        return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH, name.c_str(),
                              -1, skipped, -1) == CSTR_EQUAL;
    };
    return equals(TEXT("Recycler")) || equals(TEXT("OldVersions"));
}

// Tests the files of one folder that is being listed, and gathers its subfolders.
class FolderWalk {
public:
    FolderWalk(SRxFoundList& list, const BLxWString& prefix, LRESULT subfolders,
               bool needProperties, int& insertIndex)
        : list_(list),
          prefix_(prefix),
          fullName_(prefix),
          subfolders_(subfolders > 0),
          needProperties_(needProperties),
          insertIndex_(insertIndex) {}

    void Take(const BLxWString& entry, bool isDirectory) {
        if (!inFolder_) {
            // A tested file's own folder is the current one. A pump may change it, so it is set
            // again after one.
            SetCurrentDirectoryW(prefix_.c_str());
            inFolder_ = true;
        }
        fullName_.resize(prefix_.size());
        fullName_ += entry;
        if (!isDirectory) {
            MDxFileNameNode node(fullName_.c_str(), -1, list_.dialog->InApp());
            const bool said = list_.sharingMessageShown;
            TestFile(list_, prefix_.c_str(), entry.c_str(), &node, needProperties_, insertIndex_);
            // A message box pumps as well.
            if (list_.sharingMessageShown != said) inFolder_ = false;
        } else if (subfolders_ && !IsSkippedName(entry)) {
            auto* folder = new MDxFileNameNode(fullName_.c_str(), -1, list_.dialog->InApp());
            folder->AddFileNode(&head_);
        }
        if (++tick_ > 10) {
            ShowProgress(list_, prefix_.c_str());
            inFolder_ = list_.statusBar == nullptr || list_.pumpCounter != 0;
            tick_ = 0;
        }
    }

    MDxFileNameNode* Subfolders() { return head_; }

private:
    SRxFoundList& list_;
    const BLxWString& prefix_;
    BLxWString fullName_;
    bool subfolders_;
    bool needProperties_;
    int& insertIndex_;
    bool inFolder_ = false;
    int tick_ = 0;
    MDxFileNameNode* head_ = nullptr;
};

// A folder that was walked is not looked at again: memory holds those that wait, and the root.
MDxFileNameNode* DropVisited(SRxFoundList& list, MDxFileNameNode& visited) {
    MDxFileNameNode* next = visited.GetNextNode();
    if (&visited == list.rootNode) return next;
    visited.SetNextNode(nullptr);
    list.rootNode->SetNextNode(next);
    delete &visited;
    return next;
}

}  // namespace

bool WalkDirectory(SRxFoundList& list, const WCHAR* path, LRESULT subfolders, bool needProperties,
                   int& insertIndex, MDxFileNameNode** newFolders) {
    if (newFolders != nullptr) *newFolders = nullptr;
    if (path == nullptr) return false;
    const BLxWString pattern = PatternOf(path);
    if (pattern.size() > kMaxPattern) {
        ReportFolder(list, pattern.c_str());
        return false;
    }
    DirectorySearch search(pattern.c_str(), false);
    const BLxWString prefix(pattern, 0, pattern.size() - 1);
    FolderWalk walk(list, prefix, newFolders != nullptr ? subfolders : 0, needProperties,
                    insertIndex);
    const BLxWString* entry = &search.Start();
    const bool listed = !search.Done();
    search.SetSkipDots(true);
    for (; !search.Done(); entry = &search.Next()) {
        if (!search.IsDot()) walk.Take(*entry, search.IsDirectory());
    }
    // A listing that broke off has given what it could; the rest of the folder is missing.
    if (!listed || search.Failed()) ReportFolder(list, prefix.c_str());
    if (newFolders != nullptr) *newFolders = walk.Subfolders();
    return listed;
}

bool SearchFolders(SRxFoundList& list, LRESULT subfolders, bool needProperties) {
    const BLxWString text = ReadControlText(list.dialog->dialogWindow, IDC_PATH_LIST);
    if (text.empty()) return false;
    if (text.size() >= kPathLength) {
        // Cutting it would search another folder.
        ReportFolder(list, text.c_str());
        return false;
    }
    RememberRecentPath(list, text.c_str());
    // The current folder changes on the way, so a path from it is made whole at the start.
    const WText root = IsAbsolute(text) ? WText(text) : FullWidePath(WText(text));
    if (root.empty()) {
        // The current folder is gone; an empty path would be the root of all.
        ReportFolder(list, text.c_str());
        return false;
    }
    list.rootNode = new MDxFileNameNode(root.c_str(), -1, list.dialog->InApp());
    bool result = true;
    int insertIndex = 0;
    for (MDxFileNameNode* current = list.rootNode; !list.stopRequested && current != nullptr;) {
        if (list.dialog->observer != nullptr) {
            list.dialog->observer->OnFolder(list, current->GetFileName());
        }
        if (!ShowProgress(list, current->GetFileName())) break;
        MDxFileNameNode* newFolders = nullptr;
        result = WalkDirectory(list, current->GetFileName(), subfolders, needProperties,
                               insertIndex, &newFolders);
        if (newFolders != nullptr) {
            // Right behind the present folder, in front of what waits already: depth first.
            if (MDxFileNameNode* rest = current->GetNextNode()) rest->AddFileNode(&newFolders);
            current->SetNextNode(newFolders);
        }
        current = DropVisited(list, *current);
    }
    SetCurrentDirectoryW(root.c_str());
    return result;
}

bool RememberRecentPath(SRxFoundList&, const WCHAR* path) {
    WCHAR keyPath[kPathLength] = TEXT("\\FindExt\\RecentPathList");
    RegistryKeyOwner key(MDxCreateRegistryKey(HKEY_CURRENT_USER, keyPath, kPathLength));
    if (!key) return false;
    const bool written = BLxPref_Reg::Write(key.get(), nullptr, path) == 0;
    return BLxPref_Reg::CloseKey(key.release()) == 0 && written;
}

bool RememberRecentFiles(SRxFoundList& list, const WCHAR* path) {
    const WText whole = WText(MDxRegistryBranch()) + TEXT("\\FindExt\\RecentFileList");
    BLxPref_Reg::DeleteKey(HKEY_CURRENT_USER, whole.c_str());
    WCHAR keyPath[kLabelLength] = TEXT("\\FindExt\\RecentFileList");
    if (const RegistryKeyOwner key(MDxCreateRegistryKey(HKEY_CURRENT_USER, keyPath, kLabelLength));
        key) {
        const HWND dialog = list.dialog->dialogWindow;
        int written = 0;
        // The newest stands last in the box.
        for (LRESULT item = SendDlgItemMessageW(dialog, IDC_PATH_LIST, CB_GETCOUNT, 0, 0) - 1;
             item >= 0 && written < kRecentFiles; --item) {
            const LRESULT length = SendDlgItemMessageW(dialog, IDC_PATH_LIST, CB_GETLBTEXTLEN,
                                                       static_cast<WPARAM>(item), 0);
            if (length <= 0) continue;
            WText file(static_cast<std::size_t>(length), 0);
            SendDlgItemMessageW(dialog, IDC_PATH_LIST, CB_GETLBTEXT, static_cast<WPARAM>(item),
                                reinterpret_cast<LPARAM>(file.data()));
            const WText name = TEXT("File") + wtext::FromNumber(written);
            if (BLxPref_Reg::Write(key.get(), name.c_str(), file.c_str()) == 0) ++written;
        }
    }
    BLxWString folder = path;
    if (PathRemoveFileSpecW(folder.data())) RememberRecentPath(list, folder.c_str());
    return true;
}
