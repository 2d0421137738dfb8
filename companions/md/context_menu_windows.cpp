// Windows build: the shell's own menu, from the folders of the files. Files of several folders get
// the menu of the first folder's files; what is chosen is done to those of the others by its name.
#include <algorithm>
#include <vector>

#include "outside/md_context_menu.h"
#include "platform/owner.h"
#include "platform/wtext.h"

namespace {

constexpr UINT kFirstCommand = 1;
constexpr UINT kLastCommand = 0x7FFF;
constexpr UINT_PTR kSubclass = 1;

template <typename T>
void Release(T* object) {
    object->Release();
}
template <typename T>
using Reference = Owner<T*, Release<T>>;
using Menu = Owner<HMENU, DestroyMenu>;
using PathList = Owner<LPITEMIDLIST, ILFree>;

// The files of one folder, with the shell's menu for them.
struct Group {
    WText folder;
    std::vector<WText> files;
    Reference<IContextMenu> menu;
};

std::vector<Group> GroupByFolder(const MDxFileNameNode* chain) {
    std::vector<Group> groups;
    for (; chain != nullptr; chain = chain->GetNextNode()) {
        const WText file = chain->GetFileName();
        const WText folder = file.substr(0, file.find_last_of('\\') + 1);
        auto group = std::find_if(groups.begin(), groups.end(),
                                  [&](const Group& one) { return one.folder == folder; });
        if (group == groups.end()) group = groups.insert(groups.end(), Group{folder, {}, {}});
        group->files.push_back(file);
    }
    return groups;
}

bool OpenMenu(Group& group, HWND owner) {
    std::vector<PathList> lists;
    std::vector<LPCITEMIDLIST> children;
    Reference<IShellFolder> folder;
    for (const WText& file : group.files) {
        PathList list(ILCreateFromPathW(file.c_str()));
        if (!list) continue;  // gone since it was found
        LPCITEMIDLIST child = nullptr;
        Reference<IShellFolder> parent;
        if (FAILED(SHBindToParent(list.get(), IID_IShellFolder,
                                  reinterpret_cast<void**>(parent.out()), &child))) {
            continue;
        }
        folder = std::move(parent);
        children.push_back(child);
        lists.push_back(std::move(list));
    }
    return !children.empty() &&
           SUCCEEDED(folder.get()->GetUIObjectOf(owner, static_cast<UINT>(children.size()),
                                                 children.data(), IID_IContextMenu, nullptr,
                                                 reinterpret_cast<void**>(group.menu.out())));
}

// Fills submenus when they open, which the owner is told.
LRESULT CALLBACK ForwardToMenu(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR menu) {
    switch (message) {
        case WM_INITMENUPOPUP:
        case WM_DRAWITEM:
        case WM_MEASUREITEM:
            reinterpret_cast<IContextMenu2*>(menu)->HandleMenuMsg(message, wParam, lParam);
            break;
        default:
            break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

UINT Choose(IContextMenu& shell, HMENU menu, HWND owner, POINT at) {
    Reference<IContextMenu2> second;
    if (SUCCEEDED(
            shell.QueryInterface(IID_IContextMenu2, reinterpret_cast<void**>(second.out())))) {
        SetWindowSubclass(owner, ForwardToMenu, kSubclass,
                          reinterpret_cast<DWORD_PTR>(second.get()));
    }
    const BOOL chosen =
        TrackPopupMenuEx(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, owner, nullptr);
    RemoveWindowSubclass(owner, ForwardToMenu, kSubclass);
    return static_cast<UINT>(chosen);
}

bool CarryOut(IContextMenu& menu, HWND owner, LPCSTR verb) {
    CMINVOKECOMMANDINFO command{};
    command.cbSize = sizeof command;
    command.hwnd = owner;
    command.lpVerb = verb;
    command.nShow = SW_SHOWNORMAL;
    return SUCCEEDED(menu.InvokeCommand(&command));
}

}  // namespace

MDxContextMenu::MDxContextMenu() = default;
MDxContextMenu::~MDxContextMenu() {
    if (initialized_) CoUninitialize();
}

// The shell's handlers are objects of COM.
bool MDxContextMenu::Initialize() {
    if (!initialized_) initialized_ = SUCCEEDED(CoInitialize(nullptr));
    return initialized_;
}

bool MDxContextMenu::DisplayContextMenu(MDxFileNameNode* chain, HWND owner, const POINT* at,
                                        unsigned, int) {
    if (chain == nullptr) return false;
    const std::unique_ptr<MDxFileNameNode> owned(chain);
    std::vector<Group> groups = GroupByFolder(chain);
    std::erase_if(groups, [owner](Group& group) { return !OpenMenu(group, owner); });
    const Menu menu(CreatePopupMenu());
    if (!initialized_ || groups.empty() || !menu) return false;
    IContextMenu& first = *groups.front().menu.get();
    if (FAILED(first.QueryContextMenu(menu.get(), 0, kFirstCommand, kLastCommand, CMF_NORMAL))) {
        return false;
    }
    POINT place{};
    if (at != nullptr) {
        place = *at;
    } else {
        GetCursorPos(&place);
    }
    const UINT chosen = Choose(first, menu.get(), owner, place);
    if (chosen < kFirstCommand) return false;
    const UINT command = chosen - kFirstCommand;
    char verb[128] = {};
    if (FAILED(first.GetCommandString(command, GCS_VERBA, nullptr, verb, sizeof verb))) *verb = 0;
    bool done = CarryOut(first, owner, MAKEINTRESOURCEA(command));
    for (std::size_t i = 1; i < groups.size(); ++i)
        done = *verb != 0 && CarryOut(*groups[i].menu.get(), owner, verb) && done;
    return done;
}

bool MDxContextMenu::DisplayExplorerMenu(MDxFileNameNode* chain, HWND owner) {
    return DisplayContextMenu(chain, owner, nullptr, 0, 0);
}
