#include "outside/md_registry.h"

#include "outside/blx_registry.h"
#include "platform/wtext.h"

namespace {

constexpr const WCHAR* kBranch = TEXT("Software\\Corvelia\\Trellbook\\7.1");

bool PutBranchInFront(WCHAR* path, DWORD cch) {
    const WText whole = WText(kBranch) + path;
    if (whole.size() >= cch) return false;
    return wtext::CopyWhole(path, cch, whole);
}

}  // namespace

const WCHAR* MDxRegistryBranch() {
    return kBranch;
}

HKEY MDxOpenRegistryKey(HKEY root, WCHAR* path, DWORD cch) {
    HKEY key = nullptr;
    if (!PutBranchInFront(path, cch)) return nullptr;
    return BLxPref_Reg::OpenKey(root, path, &key) == 0 ? key : nullptr;
}

HKEY MDxCreateRegistryKey(HKEY root, WCHAR* path, DWORD cch) {
    HKEY key = nullptr;
    if (!PutBranchInFront(path, cch)) return nullptr;
    return BLxPref_Reg::CreateKey(root, path, &key) == 0 ? key : nullptr;
}

bool MDxDeleteRegistryKey(HKEY key, const WCHAR* name) {
    return BLxPref_Reg::DeleteKeyAndDescendants(key, name) == 0;
}
