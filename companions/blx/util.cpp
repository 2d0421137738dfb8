#include <map>

#include "outside/blx_registry.h"
#include "outside/blx_util.h"
#include "platform/owner.h"
#include "platform/wtext.h"

namespace {

constexpr const WCHAR* kProductBranch = TEXT("Software\\Corvelia\\Trellbook\\7.1");

std::map<WText, DWORD>& HelpIds() {
    static std::map<WText, DWORD> ids;
    return ids;
}

// The path of this library's file; empty on failure.
BLxWString ThisLibraryPath() {
    static const char anchor = 0;
    HMODULE self = nullptr;
    if (!GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<LPCWSTR>(&anchor), &self)) {
        return {};
    }
    BLxWString path(MAX_PATH, 0);
    for (;;) {
        const DWORD length = GetModuleFileNameW(self, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

BLxWString ReadWorkspaceValue(const WCHAR* name) {
    BLxWString text;
    const WText path = WText(kProductBranch) + TEXT("\\Workspace");
    Owner<HKEY, &BLxPref_Reg::CloseKey> key;
    if (BLxPref_Reg::OpenKey(HKEY_CURRENT_USER, path.c_str(), key.out(), KEY_READ) != 0)
        return text;
    if (BLxPref_Reg::Read(key.get(), name, &text) != 0) text.clear();
    return text;
}

}  // namespace

BLxWString BLxUtil::GetLPResourceDLLPath(const WCHAR* name) {
    BLxWString path = ThisLibraryPath();
    const std::size_t separator = path.rfind(static_cast<WCHAR>('\\'));
    if (separator == BLxWString::npos) return {};
    path.resize(separator + 1);
    return path + name;
}

BLxWString BLx::GetWorkspacePath() {
    return ReadWorkspaceValue(TEXT("Path"));
}

void BLx::GetWorkspacesDir(BLxWString& folder) {
    folder = ReadWorkspaceValue(TEXT("Folder"));
}

BLxContextHelpId::BLxContextHelpId(DWORD id, const WCHAR* templateName) : id_(id) {
    HelpIds()[templateName] = id;
}

BLxContextHelpId::~BLxContextHelpId() {
    std::erase_if(HelpIds(), [this](const auto& row) { return row.second == id_; });
}

DWORD BLxContextHelpId::Find(const WCHAR* templateName) {
    const auto found = HelpIds().find(templateName);
    return found != HelpIds().end() ? found->second : 0;
}
