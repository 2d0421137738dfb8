#include "store/stored_form.h"

#include <algorithm>
#include <iterator>

#include "outside/md_registry.h"

namespace {

constexpr const WCHAR* kSearches = TEXT("\\FindExt\\SavedSearches");
constexpr const WCHAR* kSearchValues[] = {nullptr, TEXT("LookFor"), TEXT("Environment")};
constexpr const WCHAR* kCriterionValues[] = {TEXT("Join"), TEXT("Property"), TEXT("Condition"),
                                             TEXT("Value"), TEXT("ValueID")};

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

bool HasValue(HKEY key, const WCHAR* name) {
    DWORD type = REG_NONE;
    DWORD cb = 0;
    return BLxPref_Reg::Read(key, name, &type, nullptr, &cb) != ERROR_FILE_NOT_FOUND;
}

// A subkey without any value of a criterion is none: another program put it there.
bool IsCriterion(HKEY key) {
    return std::any_of(std::begin(kCriterionValues), std::end(kCriterionValues),
                       [key](const WCHAR* name) { return HasValue(key, name); });
}

WText Below(const WText& path, const WText& name) {
    return path + TEXT("\\") + name;
}

// False when one of them stays.
template <std::size_t size>
bool DeleteValues(RegistryKeyOwner& key, const WCHAR* const (&names)[size]) {
    bool deleted = true;
    for (const WCHAR* name : names) {
        const DWORD code = BLxPref_Reg::DeleteValue(key.get(), name);
        deleted = (code == 0 || code == ERROR_FILE_NOT_FOUND) && deleted;
    }
    return Close(key) && deleted;
}

// Whether the key holds anything below it that belongs to no criterion of the search.
bool HoldsMore(HKEY key, const WText& path) {
    for (const WText& name : SubkeyNames(key, kKeyNameCapacity)) {
        const RegistryKeyOwner subkey = OpenKey(Below(path, name));
        if (!subkey) continue;
        if (!IsCriterion(subkey.get())) return true;
        if (!SubkeyNames(subkey.get(), kKeyNameCapacity).empty()) return true;
    }
    return false;
}

bool WriteCriterion(const WText& path, const StoredCriterion& criterion) {
    RegistryKeyOwner key = CreateKey(path);
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

}  // namespace

RegistryKeyOwner OpenKey(const WText& path) {
    RegistryKeyOwner key;
    (void)BLxPref_Reg::OpenKey(HKEY_CURRENT_USER, path.c_str(), key.out());
    return key;
}

RegistryKeyOwner CreateKey(const WText& path) {
    RegistryKeyOwner key;
    (void)BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, path.c_str(), key.out());
    return key;
}

bool Close(RegistryKeyOwner& key) {
    return BLxPref_Reg::CloseKey(key.release()) == 0;
}

WText StorePath() {
    return WText(MDxRegistryBranch()) + kSearches;
}

bool NamesASearch(WTextView name) {
    return !name.empty() && name.find('\\') == WTextView::npos;
}

WText PathOf(WTextView name) {
    return StorePath().append(TEXT("\\")).append(name);
}

std::vector<WText> SubkeyNames(HKEY key, DWORD capacity) {
    std::vector<WText> names;
    WText name(capacity, 0);
    BLxPrefKeyIterator_Reg subkeys(key);
    while (subkeys.NextKey(name.data(), capacity))
        names.emplace_back(name.c_str());
    return names;
}

bool IsSearch(HKEY key, const WText& path) {
    for (const WCHAR* name : kSearchValues) {
        if (HasValue(key, name)) return true;
    }
    for (const WText& name : SubkeyNames(key, kCriterionNameCapacity)) {
        const RegistryKeyOwner subkey = OpenKey(Below(path, name));
        if (subkey && HasValue(subkey.get(), TEXT("Property"))) return true;
    }
    return false;
}

eStoredRead ReadAt(const WText& path, StoredSearch& search) {
    search = {};
    const RegistryKeyOwner key = OpenKey(path);
    if (!key || !IsSearch(key.get(), path)) return eStoredRead::Absent;
    (void)BLxPref_Reg::Read(key.get(), nullptr, &search.matchCase);
    (void)BLxPref_Reg::Read(key.get(), TEXT("LookFor"), &search.lookFor);
    (void)BLxPref_Reg::Read(key.get(), TEXT("Environment"), &search.environment);
    eStoredRead result = eStoredRead::Whole;
    for (const WText& name : SubkeyNames(key.get(), kCriterionNameCapacity)) {
        const RegistryKeyOwner subkey = OpenKey(Below(path, name));
        StoredCriterion criterion;
        if (subkey && ReadCriterion(subkey.get(), criterion)) {
            search.criteria.push_back(criterion);
        } else if (!subkey || IsCriterion(subkey.get())) {
            result = eStoredRead::Incomplete;
        }
    }
    return result;
}

eStoredWrite WriteAt(const WText& path, const StoredSearch& search) {
    RegistryKeyOwner key = CreateKey(path);
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

bool DeleteTreeAt(const WText& path) {
    const DWORD code = BLxPref_Reg::DeleteKeyAndDescendants(HKEY_CURRENT_USER, path.c_str());
    return code == 0 || code == ERROR_FILE_NOT_FOUND;
}

bool DeleteAt(const WText& path) {
    RegistryKeyOwner key = OpenKey(path);
    // One change as a rule, so that a killed process leaves the search whole or gone.
    if (!key || !HoldsMore(key.get(), path)) return DeleteTreeAt(path);
    bool deleted = true;
    for (const WText& name : SubkeyNames(key.get(), kCriterionNameCapacity)) {
        const WText below = Below(path, name);
        RegistryKeyOwner subkey = OpenKey(below);
        if (!subkey || !IsCriterion(subkey.get())) continue;
        const bool holdsMore = !SubkeyNames(subkey.get(), kKeyNameCapacity).empty();
        deleted =
            (holdsMore ? DeleteValues(subkey, kCriterionValues) : DeleteTreeAt(below)) && deleted;
    }
    // The values last: until then it counts as a search, to be deleted again.
    return deleted && DeleteValues(key, kSearchValues);
}
