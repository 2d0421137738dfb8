// Windows build: works the dialogs for files and folders from a timer of the thread, which runs in
// their own loops. A dialog that is still there, and enabled, behind an answer has refused it.
#include <algorithm>
#include <vector>

#include "platform/windows/desk_windows.h"

namespace platform {

namespace {

constexpr int kFileNameId = 1148;
constexpr int kFiltersId = 1136;
constexpr UINT kTickMs = 15;
constexpr int kMostTries = 20;

struct Watched {
    HWND window;
    bool asked;
    WText selected;   // by the program, or by the answer before
    bool okDisabled;  // by the program, for the folder that is chosen
    int triesLeft;    // to choose the folder of the answer; 0 when none is to be chosen
};

thread_local std::vector<Watched> watched;
thread_local UINT_PTR timer = 0;

Watched* Find(HWND dialog) {
    const auto found = std::find_if(watched.begin(), watched.end(),
                                    [&](const Watched& one) { return one.window == dialog; });
    return found != watched.end() ? &*found : nullptr;
}

// The first child of a class, at any depth; with a text when `withText`.
HWND FindChild(HWND dialog, LPCWSTR className, bool withText) {
    struct Search {
        LPCWSTR className;
        bool withText;
        HWND found;
    } search = {className, withText, nullptr};
    EnumChildWindows(
        dialog,
        [](HWND child, LPARAM parameter) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(parameter);
            WCHAR name[32] = {};
            GetClassNameW(child, name, 32);
            if (!wtext::EqualsAsciiFold(name, wanted.className) ||
                (wanted.withText && GetWindowTextLengthW(child) == 0)) {
                return TRUE;
            }
            wanted.found = child;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

WText FilterNames(HWND dialog) {
    const HWND filters = GetDlgItem(dialog, kFiltersId);
    const LRESULT count = SendMessageW(filters, CB_GETCOUNT, 0, 0);
    WText names;
    for (LRESULT i = 0; i < count; ++i) {
        const auto at = static_cast<WPARAM>(i);
        WText name(static_cast<std::size_t>(SendMessageW(filters, CB_GETLBTEXTLEN, at, 0)) + 1, 0);
        SendMessageW(filters, CB_GETLBTEXT, at, reinterpret_cast<LPARAM>(name.data()));
        name.back() = '|';
        names += name;
    }
    return names;
}

void Press(HWND dialog, int id) {
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void WorkFileDialog(HWND dialog, bool again) {
    WCHAR folder[1024] = {};
    SendMessageW(dialog, CDM_GETFOLDERPATH, 1024, reinterpret_cast<LPARAM>(folder));
    const WText answer = CurrentDesk()->AnswerFileQuestion(
        {TextOfWindow(dialog), FilterNames(dialog), folder, again});
    if (!answer.empty()) SetDlgItemTextW(dialog, kFileNameId, answer.c_str());
    Press(dialog, answer.empty() ? IDCANCEL : IDOK);
}

WText NameOf(HWND tree, HTREEITEM at) {
    WCHAR name[MAX_PATH] = {};
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = at;
    item.pszText = name;
    item.cchTextMax = MAX_PATH;
    if (at != nullptr) SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return name;
}

WText ChosenName(HWND tree) {
    return NameOf(tree, TreeView_GetSelection(tree));
}

// The item below `parent`, opened, whose name is `name`, or for a drive has it in brackets.
HTREEITEM ChildOf(HWND tree, HTREEITEM parent, const WText& name, bool isDrive) {
    SendMessageW(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(parent));
    HTREEITEM child = TreeView_GetChild(tree, parent);
    while (child != nullptr) {
        const WText found = NameOf(tree, child);
        if (isDrive ? found.find(TEXT("(") + name + TEXT(")")) != WText::npos : found == name)
            break;
        child = TreeView_GetNextSibling(tree, child);
    }
    return child;
}

// As a person would: from the drive, which lies at most two levels below the root, item by item.
// The message for it leads Wine's tree astray once the folder's surroundings have been opened.
void ChooseInTree(HWND tree, const WText& folder) {
    const WText drive = folder.substr(0, 2);
    const HTREEITEM root = TreeView_GetRoot(tree);
    HTREEITEM at = ChildOf(tree, root, drive, true);
    for (HTREEITEM place = TreeView_GetChild(tree, root); at == nullptr && place != nullptr;
         place = TreeView_GetNextSibling(tree, place)) {
        at = ChildOf(tree, place, drive, true);
    }
    for (std::size_t from = 3; at != nullptr && from < folder.size();) {
        const std::size_t end = std::min(folder.find('\\', from), folder.size());
        at = ChildOf(tree, at, folder.substr(from, end - from), false);
        from = end + 1;
    }
    if (at != nullptr) TreeView_SelectItem(tree, at);
}

void ChooseFolder(HWND dialog, HWND tree, const WText& folder) {
    // The program judges each folder anew.
    Watched* one = Find(dialog);
    if (one != nullptr && ChosenName(tree) != PathFindFileNameW(folder.c_str())) {
        one->okDisabled = false;
    }
    SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(folder.c_str()));
}

// In two steps, since the tree chooses a folder in its own time; then OK, if it can be pressed. The
// tries that are left, of the first step.
int WorkFolderDialog(const Watched& one, HWND tree) {
    if (one.triesLeft > 0) {
        const LPCWSTR name = PathFindFileNameW(one.selected.c_str());
        const bool isChosen = ChosenName(tree) == name || PathIsRootW(one.selected.c_str());
        if (!isChosen && one.triesLeft > 1) {
            ChooseInTree(tree, one.selected);
            return one.triesLeft - 1;
        }
        if (isChosen && !one.okDisabled && IsWindowEnabled(GetDlgItem(one.window, IDOK))) {
            Press(one.window, IDOK);
            return 0;
        }
    }
    const HWND title = FindChild(one.window, TEXT("Static"), true);
    const WText answer = CurrentDesk()->AnswerFolderQuestion(
        {title != nullptr ? TextOfWindow(title) : WText(), one.selected, one.asked});
    if (answer.empty()) Press(one.window, IDCANCEL);
    if (!PathIsDirectoryW(answer.c_str())) return 0;
    ChooseFolder(one.window, tree, answer);
    return kMostTries;
}

void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    std::erase_if(watched, [](const Watched& one) { return !IsWindow(one.window); });
    // A copy: the desk may open what comes to be watched in its turn.
    const std::vector<Watched> now = watched;
    for (const Watched& one : now) {
        // One that is disabled has a box before it.
        if (!IsWindowVisible(one.window) || !IsWindowEnabled(one.window)) continue;
        const HWND tree = FindChild(one.window, WC_TREEVIEWW, false);
        int triesLeft = 0;
        if (GetDlgItem(one.window, kFileNameId) != nullptr) {
            WorkFileDialog(one.window, one.asked);
        } else if (tree != nullptr) {
            triesLeft = WorkFolderDialog(one, tree);
        } else {
            std::erase_if(watched,
                          [&](const Watched& other) { return other.window == one.window; });
            continue;
        }
        if (Watched* still = Find(one.window)) {
            still->asked = true;
            still->triesLeft = triesLeft;
        }
    }
    if (watched.empty()) StopWatching();
}

}  // namespace

void WatchDialog(HWND dialog) {
    if (Find(dialog) == nullptr) watched.push_back({dialog, false, {}, false, 0});
    if (timer == 0) timer = SetTimer(nullptr, 0, kTickMs, Tick);
}

void NoteSelection(HWND dialog, LPCWSTR folder) {
    WatchDialog(dialog);
    if (PathIsDirectoryW(folder)) Find(dialog)->selected = folder;
}

void NoteOkDisabled(HWND dialog) {
    WatchDialog(dialog);
    Find(dialog)->okDisabled = true;
}

void StopWatching() {
    watched.clear();
    if (timer != 0) KillTimer(nullptr, timer);
    timer = 0;
}

}  // namespace platform
