#include "store/saving_copies.h"

#include <charconv>
#include <string>

#include "outside/md_registry.h"
#include "platform/processes.h"
#include "store/stored_form.h"

namespace {

constexpr const WCHAR* kSavingName = TEXT("Name");  // the last value written there

// The name of a copy, empty without one; false when that can't be told.
bool ReadSavingName(const WText& path, WText& name) {
    const RegistryKeyOwner key = OpenKey(path);
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
    RegistryKeyOwner key = OpenKey(path);
    if (!key) return false;
    const bool written = BLxPref_Reg::Write(key.get(), kSavingName, name) == 0;
    return Close(key) && written;
}

// The process that made a copy, by the name of its key.
DWORD ProcessOf(const WText& copy) {
    const std::string digits = wtext::ToUtf8(copy);
    DWORD id = 0;
    (void)std::from_chars(digits.data(), digits.data() + digits.size(), id);
    return id;
}

std::vector<WText> SavingNames() {
    const RegistryKeyOwner key = OpenKey(SavingPath());
    return key ? SubkeyNames(key.get(), kCriterionNameCapacity) : std::vector<WText>();
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

}  // namespace

WText SavingPath() {
    return WText(MDxRegistryBranch()) + TEXT("\\FindExt\\UnfinishedSaves");
}

WText FreeSavingPath() {
    const WText first = SavingPath() + TEXT("\\") + wtext::FromNumber(GetCurrentProcessId());
    WText path = first;
    for (long long number = 2; OpenKey(path); ++number)
        path = first + TEXT("-") + wtext::FromNumber(number);
    return path;
}

bool WriteSaving(const WText& path, const WCHAR* name, const StoredSearch& search) {
    return WriteAt(path, search) == eStoredWrite::Whole && WriteSavingName(path, name);
}

bool DeleteSaving(const WText& path) {
    // Without its name first: what a deletion leaves that fails half-way isn't whole.
    WText name;
    if (ReadSavingName(path, name) && !name.empty() && !WriteSavingName(path, TEXT(""))) {
        return false;
    }
    const bool deleted = DeleteTreeAt(path);
    // Refused while another copy stands there.
    (void)BLxPref_Reg::DeleteKey(HKEY_CURRENT_USER, SavingPath().c_str());
    return deleted;
}

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

std::vector<WText> FinishSavings() {
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
