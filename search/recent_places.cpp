// What was searched last, kept in the registry for the next opening of the look-in box.
#include <new>

#include "module/registry_key.h"
#include "module/text_lengths.h"
#include "outside/md_registry.h"
#include "platform/processes.h"
#include "search/search.h"

namespace {

constexpr int kRecentFiles = 5;

}  // namespace

bool RememberRecentPath(const SRxSearchRun& run, const WCHAR* path) try {
    if (!run.query.remembersPlaces) return false;
    const LockWait once(0);  // no search waits for that
    WCHAR keyPath[kPathLength] = TEXT("\\FindExt\\RecentPathList");
    RegistryKeyOwner key(MDxCreateRegistryKey(HKEY_CURRENT_USER, keyPath, kPathLength));
    if (!key) return false;
    const bool written = BLxPref_Reg::Write(key.get(), nullptr, path) == 0;
    return BLxPref_Reg::CloseKey(key.release()) == 0 && written;
} catch (const std::bad_alloc&) {
    return false;
}

bool RememberRecentFiles(const SRxSearchRun& run, const WCHAR* path) try {
    if (!run.query.remembersPlaces) return true;
    const LockWait once(0);
    const WText whole = WText(MDxRegistryBranch()) + TEXT("\\FindExt\\RecentFileList");
    BLxPref_Reg::DeleteKey(HKEY_CURRENT_USER, whole.c_str());
    WCHAR keyPath[kLabelLength] = TEXT("\\FindExt\\RecentFileList");
    if (const RegistryKeyOwner key(MDxCreateRegistryKey(HKEY_CURRENT_USER, keyPath, kLabelLength));
        key) {
        const std::vector<WText> files = run.source->ListedFiles();
        int written = 0;
        // The newest is the last one of the list.
        for (auto file = files.rbegin(); file != files.rend() && written < kRecentFiles; ++file) {
            if (file->empty()) continue;
            const WText name = TEXT("File") + wtext::FromNumber(written);
            if (BLxPref_Reg::Write(key.get(), name.c_str(), file->c_str()) == 0) ++written;
        }
    }
    BLxWString folder = path;
    if (PathRemoveFileSpecW(folder.data())) RememberRecentPath(run, folder.c_str());
    return true;
} catch (const std::bad_alloc&) {
    return true;  // the search goes on without it
}
