#include "store/saved_search.h"

#include <algorithm>
#include <charconv>
#include <iterator>
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

// A name of backslashes alone, or an empty one, would stand for the store itself.
bool NamesASearch(WTextView name) {
    return name.find_first_not_of('\\') != WTextView::npos;
}

// Of a name that names a search.
WText PathOf(WTextView name) {
    return StorePath().append(TEXT("\\")).append(name);
}

// Copies of searches in mid-save, beside the branch, whose layout other programs know: each in a
// subkey named by the id of its process.
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
        // Empty for a criterion on nothing that is known, which has a row in the list all the same.
        criterion.customName = name.c_str();
        return true;
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

// A subkey without any value of a criterion is none: a name with a backslash puts one search below
// another.
bool IsCriterion(HKEY key) {
    constexpr const WCHAR* kValues[] = {TEXT("Join"), TEXT("Property"), TEXT("Condition"),
                                        TEXT("Value"), TEXT("ValueID")};
    return std::any_of(std::begin(kValues), std::end(kValues), [key](const WCHAR* name) {
        DWORD type = REG_NONE;
        DWORD cb = 0;
        return BLxPref_Reg::Read(key, name, &type, nullptr, &cb) != ERROR_FILE_NOT_FOUND;
    });
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
        } else if (!subkey || IsCriterion(subkey.get())) {
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

// True when nothing is left there.
bool DeleteAt(const WText& path) {
    const DWORD code = BLxPref_Reg::DeleteKeyAndDescendants(HKEY_CURRENT_USER, path.c_str());
    return code == 0 || code == ERROR_FILE_NOT_FOUND;
}

// Whether what stood at `path` stands there still, or again.
bool PutBack(const WText& path, eStoredRead before, const StoredSearch& old) {
    StoredSearch now;
    if (ReadAt(path, now) == before && now == old) return true;
    // Of one that couldn't be read whole there is nothing to put back.
    return before == eStoredRead::Whole && DeleteAt(path) &&
           WriteAt(path, old) == eStoredWrite::Whole;
}

// The name of a copy, empty without one; false when that can't be told.
bool ReadSavingName(const WText& path, WText& name) {
    const KeyOwner key = OpenKey(path);
    if (!key) return false;
    BLxWString read;
    switch (BLxPref_Reg::Read(key.get(), kSavingName, &read)) {
        case 0:
            name = read.c_str();
            return true;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_INVALID_DATA:
            name.clear();
            return true;
        default:
            return false;
    }
}

bool WriteSavingName(const WText& path, const WCHAR* name) {
    KeyOwner key = OpenKey(path);
    if (!key) return false;
    const bool written = BLxPref_Reg::Write(key.get(), kSavingName, name) == 0;
    return Close(key) && written;
}

bool DeleteSaving(const WText& path) {
    // Without its name first: what a deletion leaves that fails half-way isn't whole.
    WText name;
    if (ReadSavingName(path, name) && !name.empty() && !WriteSavingName(path, TEXT(""))) {
        return false;
    }
    const bool deleted = DeleteAt(path);
    // Refused while another copy stands there.
    (void)BLxPref_Reg::DeleteKey(HKEY_CURRENT_USER, SavingPath().c_str());
    return deleted;
}

// The process that made a copy, by the name of its key.
DWORD ProcessOf(const WText& copy) {
    const std::string digits = wtext::ToUtf8(copy);
    DWORD id = 0;
    (void)std::from_chars(digits.data(), digits.data() + digits.size(), id);
    return id;
}

std::vector<WText> SavingNames() {
    const KeyOwner key = OpenKey(SavingPath());
    return key ? SubkeyNames(key.get(), kCriterionNameCapacity) : std::vector<WText>();
}

// Where this process may put a copy: one that couldn't be finished yet keeps its place.
WText FreeSavingPath() {
    const WText first = SavingPath() + TEXT("\\") + wtext::FromNumber(GetCurrentProcessId());
    WText path = first;
    for (long long number = 2; OpenKey(path); ++number)
        path = first + TEXT("-") + wtext::FromNumber(number);
    return path;
}

// The copy of a search that is being saved, with its name at last: with a name it is whole.
bool WriteSaving(const WText& path, const WCHAR* name, const StoredSearch& search) {
    return WriteAt(path, search) == eStoredWrite::Whole && WriteSavingName(path, name);
}

// What stands under this name has come later than all its copies. False when one is left.
bool DropSavings(const WCHAR* name) {
    bool dropped = true;
    for (const WText& copy : SavingNames()) {
        const WText path = SavingPath() + TEXT("\\") + copy;
        WText copied;
        if (!ReadSavingName(path, copied) || !wtext::EqualsAsciiFold(copied, name)) continue;
        dropped = DeleteSaving(path) && dropped;
    }
    return dropped;
}

// Puts a copy in its place; false when that has to be tried again. `written`: it wasn't there yet.
bool FinishSaving(const WText& path, const WText& name, bool& written) {
    StoredSearch search;
    if (ReadAt(path, search) != eStoredRead::Whole) return false;
    const WText target = PathOf(name);
    StoredSearch present;
    if (ReadAt(target, present) == eStoredRead::Whole && present == search) return true;
    if (!DeleteAt(target) || WriteAt(target, search) != eStoredWrite::Whole) return false;
    written = true;
    return true;
}

// Under the lock: a save that comes later than a cut one mustn't be lost to it. The names of those
// that are in their place now.
std::vector<WText> FinishUnderLock() {
    std::vector<WText> finished;
    for (const WText& copy : SavingNames()) {
        // This process saves nothing now: what stands under its id is of before, or another's.
        const DWORD process = ProcessOf(copy);
        if (process != GetCurrentProcessId() && IsProcessRunning(process)) continue;
        const WText path = SavingPath() + TEXT("\\") + copy;
        WText name;
        if (!ReadSavingName(path, name)) continue;
        bool written = false;
        if (NamesASearch(name) && !FinishSaving(path, name, written)) continue;
        if (written) finished.push_back(name);
        DeleteSaving(path);
    }
    return finished;
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
    return NamesASearch(name) && static_cast<bool>(OpenKey(PathOf(name)));
}

eStoredEnvironment EnvironmentOfSavedSearch(const WCHAR* name, LONG& environment) {
    const KeyOwner key = NamesASearch(name) ? OpenKey(PathOf(name)) : KeyOwner();
    if (!key) return eStoredEnvironment::NoSearch;
    return BLxPref_Reg::Read(key.get(), TEXT("Environment"), &environment) == 0
               ? eStoredEnvironment::Known
               : eStoredEnvironment::Missing;
}

eStoredRead ReadSavedSearch(const WCHAR* name, StoredSearch& search) {
    search = {};
    if (!NamesASearch(name)) return eStoredRead::Absent;
    // Not while another process writes; one that holds on for too long isn't waited for.
    const ProcessLock lock(kLockName, kLockWait);
    return ReadAt(PathOf(name), search);
}

eStoredWrite WriteLastSearch(const WCHAR* name, const StoredSearch& search) {
    if (!NamesASearch(name)) return eStoredWrite::NoKey;
    return WriteAt(PathOf(name), search);
}

eStoredWrite WriteSavedSearch(const WCHAR* name, const StoredSearch& search,
                              std::vector<WText>& finished) {
    finished.clear();
    const ProcessLock lock(kLockName, kLockWait);
    if (!lock.IsHeld() || !NamesASearch(name)) return eStoredWrite::KeptOld;
    finished = FinishUnderLock();
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
    const ProcessLock lock(kLockName, kLockWait);
    if (!lock.IsHeld() || !NamesASearch(name)) return false;
    finished = FinishUnderLock();
    // A copy would bring it back.
    if (!DropSavings(name) || !DeleteAt(PathOf(name))) return false;
    std::erase_if(finished, [](const WText& each) { return !HasSavedSearch(each.c_str()); });
    return true;
}

void DeleteAllLastSearches() {
    for (const WText& name : SavedSearchNames()) {
        if (name.starts_with(kLastSearchPrefix)) DeleteAt(PathOf(name));
    }
}

std::vector<WText> FinishCutSaves() {
    if (!OpenKey(SavingPath())) return {};  // nearly always
    const ProcessLock lock(kLockName, kLockWait);
    return lock.IsHeld() ? FinishUnderLock() : std::vector<WText>();
}
