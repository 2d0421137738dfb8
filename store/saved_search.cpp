#include "store/saved_search.h"

#include <charconv>
#include <string>

#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "platform/owner.h"
#include "platform/processes.h"

namespace {

constexpr const WCHAR* kSearches = TEXT("\\FindExt\\SavedSearches");
constexpr WTextView kLastSearchPrefix = TEXT("_last_hlv_search");
constexpr DWORD kNameCapacity = 4001;  // units of a name with the terminator
constexpr DWORD kCriterionNameCapacity = 129;
constexpr DWORD kLockWait = 10000;  // ms; a save takes far less
constexpr const char* kLockName = "SavedSearches";

using KeyOwner = Owner<HKEY, &BLxPref_Reg::CloseKey>;

KeyOwner OpenKey(const WText& path) {
    KeyOwner key;
    (void)BLxPref_Reg::OpenKey(HKEY_CURRENT_USER, path.c_str(), key.out());
    return key;
}

KeyOwner CreateKey(const WText& path) {
    KeyOwner key;
    (void)BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, path.c_str(), key.out());
    return key;
}

// False when what was written can't be kept.
bool Close(KeyOwner& key) {
    return BLxPref_Reg::CloseKey(key.release()) == 0;
}

WText StorePath() {
    return WText(MDxRegistryBranch()) + kSearches;
}

WText PathOf(WTextView name) {
    return StorePath().append(TEXT("\\")).append(name);
}

// Searches in mid-save, beside the branch, whose layout other programs know: a subkey for each
// process that saves, named by its id.
WText SavingPath() {
    const WTextView branch = MDxRegistryBranch();
    return WText(branch.substr(0, branch.rfind('\\'))) + TEXT("\\FindSaving");
}
constexpr const WCHAR* kSavingName = TEXT("Name");  // the last value written there

std::vector<WText> SubkeyNames(HKEY key, DWORD capacity) {
    std::vector<WText> names;
    WText name(capacity, 0);
    BLxPrefKeyIterator_Reg subkeys(key);
    while (subkeys.NextKey(name.data(), capacity))
        names.emplace_back(name.c_str());
    return names;
}

bool ReadProperty(HKEY key, StoredCriterion& criterion) {
    DWORD type = REG_NONE;
    DWORD number = 0;
    DWORD cb = sizeof(number);
    const DWORD code = BLxPref_Reg::Read(key, TEXT("Property"), &type, &number, &cb);
    if (type == REG_SZ && (code == 0 || code == ERROR_MORE_DATA)) {
        BLxWString name;
        if (BLxPref_Reg::Read(key, TEXT("Property"), &name) != 0) return false;
        criterion.customName = name.c_str();
        return !criterion.customName.empty();
    }
    if (code != 0 || type != REG_DWORD || cb != sizeof(number)) return false;
    criterion.number = static_cast<LONG>(number >> 16);
    criterion.category = static_cast<LONG>(number & 0xFFFF);
    return true;
}

// What can't be read but the property keeps the value of an empty criterion.
bool ReadCriterion(HKEY key, StoredCriterion& criterion) {
    BLxWString value;
    (void)BLxPref_Reg::Read(key, TEXT("Join"), &criterion.join);
    (void)BLxPref_Reg::Read(key, TEXT("Condition"), &criterion.condition);
    if (BLxPref_Reg::Read(key, TEXT("Value"), &value) == 0) criterion.value = value.c_str();
    (void)BLxPref_Reg::Read(key, TEXT("ValueID"), &criterion.valueId);
    return ReadProperty(key, criterion);
}

eStoredRead ReadAt(const WText& path, StoredSearch& search) {
    search = {};
    const KeyOwner key = OpenKey(path);
    if (!key) return eStoredRead::Absent;
    (void)BLxPref_Reg::Read(key.get(), nullptr, &search.matchCase);
    (void)BLxPref_Reg::Read(key.get(), TEXT("LookFor"), &search.lookFor);
    (void)BLxPref_Reg::Read(key.get(), TEXT("Environment"), &search.environment);
    eStoredRead result = eStoredRead::Whole;
    for (const WText& name : SubkeyNames(key.get(), kCriterionNameCapacity)) {
        const KeyOwner subkey = OpenKey(path + TEXT("\\") + name);
        StoredCriterion criterion;
        if (subkey && ReadCriterion(subkey.get(), criterion)) {
            search.criteria.push_back(criterion);
        } else {
            result = eStoredRead::Incomplete;
        }
    }
    return result;
}

bool WriteCriterion(const WText& path, const StoredCriterion& criterion) {
    KeyOwner key = CreateKey(path);
    if (!key) return false;
    const DWORD number = static_cast<DWORD>(criterion.number) << 16 |
                         static_cast<DWORD>(criterion.category & 0xFFFF);
    const bool written =
        BLxPref_Reg::Write(key.get(), TEXT("Join"), criterion.join) == 0 &&
        (criterion.number >= 0 ? BLxPref_Reg::Write(key.get(), TEXT("Property"), number)
                               : BLxPref_Reg::Write(key.get(), TEXT("Property"),
                                                    criterion.customName.c_str())) == 0 &&
        BLxPref_Reg::Write(key.get(), TEXT("Condition"), criterion.condition) == 0 &&
        BLxPref_Reg::Write(key.get(), TEXT("Value"), criterion.value.c_str()) == 0 &&
        BLxPref_Reg::Write(key.get(), TEXT("ValueID"), criterion.valueId) == 0;
    return Close(key) && written;
}

// Whole, NoKey or CutShort; nothing stands at `path` yet.
eStoredWrite WriteAt(const WText& path, const StoredSearch& search) {
    KeyOwner key = CreateKey(path);
    if (!key) return eStoredWrite::NoKey;
    const bool written =
        BLxPref_Reg::Write(key.get(), nullptr, search.matchCase) == 0 &&
        BLxPref_Reg::Write(key.get(), TEXT("LookFor"), search.lookFor) == 0 &&
        BLxPref_Reg::Write(key.get(), TEXT("Environment"), search.environment) == 0;
    if (!Close(key) || !written) return eStoredWrite::CutShort;
    long long number = 0;
    for (const StoredCriterion& criterion : search.criteria) {
        const WText node = path + TEXT("\\Node") + wtext::FromNumber(++number);
        if (!WriteCriterion(node, criterion)) return eStoredWrite::CutShort;
    }
    return eStoredWrite::Whole;
}

bool DeleteAt(const WText& path) {
    return BLxPref_Reg::DeleteKeyAndDescendants(HKEY_CURRENT_USER, path.c_str()) == 0;
}

void DeleteSaving(const WText& path) {
    DeleteAt(path);
    // Refused while another process saves.
    (void)BLxPref_Reg::DeleteKey(HKEY_CURRENT_USER, SavingPath().c_str());
}

// The copy of a search that is being saved, with its name at last: with a name it is whole.
bool WriteSaving(const WText& path, const WCHAR* name, const StoredSearch& search) {
    DeleteAt(path);
    if (WriteAt(path, search) != eStoredWrite::Whole) return false;
    KeyOwner key = OpenKey(path);
    if (!key) return false;
    const bool named = BLxPref_Reg::Write(key.get(), kSavingName, name) == 0;
    return Close(key) && named;
}

}  // namespace

std::size_t MostUnitsOfSearchName() {
    constexpr std::size_t kMostUnitsOfPath = 253;
    return kMostUnitsOfPath - (StorePath() + TEXT("Node")).size();
}

std::vector<WText> SavedSearchNames() {
    const KeyOwner key = OpenKey(StorePath());
    return key ? SubkeyNames(key.get(), kNameCapacity) : std::vector<WText>();
}

bool HasSavedSearch(const WCHAR* name) {
    return static_cast<bool>(OpenKey(PathOf(name)));
}

eStoredEnvironment EnvironmentOfSavedSearch(const WCHAR* name, LONG& environment) {
    const KeyOwner key = OpenKey(PathOf(name));
    if (!key) return eStoredEnvironment::NoSearch;
    return BLxPref_Reg::Read(key.get(), TEXT("Environment"), &environment) == 0
               ? eStoredEnvironment::Known
               : eStoredEnvironment::Missing;
}

eStoredRead ReadSavedSearch(const WCHAR* name, StoredSearch& search) {
    // Not while another process writes; one that holds on for too long isn't waited for.
    const ProcessLock lock(kLockName, kLockWait);
    return ReadAt(PathOf(name), search);
}

eStoredWrite WriteLastSearch(const WCHAR* name, const StoredSearch& search) {
    return WriteAt(PathOf(name), search);
}

eStoredWrite WriteSavedSearch(const WCHAR* name, const StoredSearch& search) {
    const ProcessLock lock(kLockName, kLockWait);
    const WText path = PathOf(name);
    const WText saving = SavingPath() + TEXT("\\") + wtext::FromNumber(GetCurrentProcessId());
    const bool replaces = HasSavedSearch(name);
    StoredSearch old;
    if (replaces) (void)ReadAt(path, old);
    if (!lock.IsHeld() || !WriteSaving(saving, name, search)) {
        DeleteSaving(saving);
        return eStoredWrite::KeptOld;
    }
    if (replaces) DeleteAt(path);
    eStoredWrite result = WriteAt(path, search);
    if (result != eStoredWrite::Whole && replaces) {
        DeleteAt(path);
        if (WriteAt(path, old) == eStoredWrite::Whole) result = eStoredWrite::KeptOld;
    }
    DeleteSaving(saving);
    return result;
}

bool DeleteSavedSearch(const WCHAR* name) {
    const ProcessLock lock(kLockName, kLockWait);
    return DeleteAt(PathOf(name));
}

void DeleteAllLastSearches() {
    for (const WText& name : SavedSearchNames()) {
        if (name.starts_with(kLastSearchPrefix)) DeleteAt(PathOf(name));
    }
}

std::vector<WText> FinishCutSaves() {
    std::vector<WText> finished;
    const KeyOwner saving = OpenKey(SavingPath());
    if (!saving) return finished;  // nearly always
    const ProcessLock lock(kLockName, kLockWait);
    if (!lock.IsHeld()) return finished;
    for (const WText& process : SubkeyNames(saving.get(), kCriterionNameCapacity)) {
        const std::string digits = wtext::ToUtf8(process);
        DWORD id = 0;
        (void)std::from_chars(digits.data(), digits.data() + digits.size(), id);
        // This process saves nothing now: what stands under its id is another's of before.
        if (id != GetCurrentProcessId() && IsProcessRunning(id)) continue;
        const WText path = SavingPath() + TEXT("\\") + process;
        BLxWString name;
        StoredSearch search;
        const KeyOwner key = OpenKey(path);
        const bool whole = key && BLxPref_Reg::Read(key.get(), kSavingName, &name) == 0;
        if (whole && ReadAt(path, search) == eStoredRead::Whole) {
            const WText target = PathOf(name);
            StoredSearch present;
            if (ReadAt(target, present) != eStoredRead::Whole || present != search) {
                DeleteAt(target);
                if (WriteAt(target, search) != eStoredWrite::Whole) continue;
                finished.emplace_back(name.c_str());
            }
        }
        DeleteSaving(path);
    }
    return finished;
}
