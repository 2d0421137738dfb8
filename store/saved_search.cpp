#include "store/saved_search.h"

#include <algorithm>
#include <utility>

#include "platform/processes.h"
#include "store/saving_copies.h"
#include "store/stored_form.h"

namespace {

constexpr WTextView kLastSearchPrefix = TEXT("_last_hlv_search");
constexpr const char* kLockName = "SavedSearches";

// Whether what stood at `path` stands there still, or again.
bool PutBack(const WText& path, eStoredRead before, const StoredSearch& old) {
    StoredSearch now;
    if (ReadAt(path, now) == before && now == old) return true;
    // Of one that couldn't be read whole there is nothing to put back.
    return before == eStoredRead::Whole && DeleteAt(path) &&
           WriteAt(path, old) == eStoredWrite::Whole;
}

// The names of all keys of the store.
std::vector<WText> KeyNames() {
    const RegistryKeyOwner key = OpenKey(StorePath());
    return key ? SubkeyNames(key.get(), kKeyNameCapacity) : std::vector<WText>();
}

// The open key of a search; null when there is no such search.
RegistryKeyOwner OpenSearch(WTextView name) {
    if (!NamesASearch(name)) return {};
    RegistryKeyOwner key = OpenKey(PathOf(name));
    return key && IsSearch(key.get(), PathOf(name)) ? std::move(key) : RegistryKeyOwner();
}

}  // namespace

std::size_t MostUnitsOfSearchName() {
    constexpr std::size_t kMostUnitsOfPath = 253;
    return kMostUnitsOfPath - (StorePath() + TEXT("Node")).size();
}

std::vector<WText> SavedSearchNames() {
    std::vector<WText> names = KeyNames();
    std::erase_if(names, [](const WText& name) { return !OpenSearch(name); });
    return names;
}

bool HasSavedSearch(const WCHAR* name) {
    return static_cast<bool>(OpenSearch(name));
}

eStoredEnvironment EnvironmentOfSavedSearch(const WCHAR* name, LONG& environment) {
    const RegistryKeyOwner key = OpenSearch(name);
    if (!key) return eStoredEnvironment::NoSearch;
    return BLxPref_Reg::Read(key.get(), TEXT("Environment"), &environment) == 0
               ? eStoredEnvironment::Known
               : eStoredEnvironment::Missing;
}

eStoredRead ReadSavedSearch(const WCHAR* name, StoredSearch& search) {
    search = {};
    if (!NamesASearch(name)) return eStoredRead::Absent;
    // Not while another process writes; one that holds on for too long isn't waited for.
    const LockWait wait(kMostLockWait);
    const ProcessLock lock(kLockName);
    return ReadAt(PathOf(name), search);
}

eStoredWrite WriteLastSearch(const WCHAR* name, const StoredSearch& search) {
    if (!NamesASearch(name)) return eStoredWrite::NoKey;
    return WriteAt(PathOf(name), search);
}

eStoredWrite WriteSavedSearch(const WCHAR* name, const StoredSearch& search,
                              std::vector<WText>& finished) {
    finished.clear();
    const LockWait wait(kMostLockWait);
    const ProcessLock lock(kLockName);
    if (!lock.IsHeld() || !NamesASearch(name)) return eStoredWrite::KeptOld;
    finished = FinishSavings();
    const WText path = PathOf(name);
    StoredSearch old;
    const eStoredRead before = ReadAt(path, old);
    const WText saving = FreeSavingPath();
    if (!WriteSaving(saving, name, search)) {
        DeleteSaving(saving);
        return eStoredWrite::KeptOld;
    }
    const eStoredWrite result = DeleteAt(path) ? WriteAt(path, search) : eStoredWrite::KeptOld;
    if (result == eStoredWrite::Whole) {
        DropSavings(name);
        return result;
    }
    if (before == eStoredRead::Absent) {
        if (result != eStoredWrite::CutShort) DeleteSaving(saving);
        return result;
    }
    if (!PutBack(path, before, old)) return eStoredWrite::SetAside;
    DeleteSaving(saving);
    return eStoredWrite::KeptOld;
}

bool DeleteSavedSearch(const WCHAR* name, std::vector<WText>& finished) {
    finished.clear();
    const LockWait wait(kMostLockWait);
    const ProcessLock lock(kLockName);
    if (!lock.IsHeld() || !NamesASearch(name)) return false;
    finished = FinishSavings();
    // A copy would bring it back.
    if (!DropSavings(name) || !DeleteAt(PathOf(name))) return false;
    std::erase_if(finished, [](const WText& each) { return !HasSavedSearch(each.c_str()); });
    return true;
}

void DeleteAllLastSearches() {
    for (const WText& name : KeyNames()) {
        if (name.starts_with(kLastSearchPrefix)) DeleteAt(PathOf(name));
    }
}

std::vector<WText> FinishCutSaves() {
    if (!OpenKey(SavingPath())) return {};  // nearly always
    const LockWait wait(kMostLockWait);
    const ProcessLock lock(kLockName);
    return lock.IsHeld() ? FinishSavings() : std::vector<WText>();
}
