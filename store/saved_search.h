// Searches that last between runs: the whole list of criteria under a name, one key of the registry
// with a subkey for each criterion. Plain data; no window is touched here.
#pragma once

#include <vector>

#include "criteria/criteria_node.h"
#include "platform/wtext.h"

struct StoredCriterion {
    LONG join = 0;
    LONG number = kNoId;  // -1 for a custom property
    LONG category = kNoId;
    WText customName;  // empty but for a custom property
    LONG condition = 0;
    WText value;
    LONG valueId = kNoId;

    bool operator==(const StoredCriterion&) const = default;
};

struct StoredSearch {
    LONG matchCase = 0;
    LONG lookFor = 1;
    LONG environment = 0;
    std::vector<StoredCriterion> criteria;

    bool operator==(const StoredSearch&) const = default;
};

enum class eStoredRead { Absent, Whole, Incomplete };

// What is kept of a list that can't be written whole depends on what stood there.
enum class eStoredWrite {
    Whole,
    NoKey,     // the search's own key can't be made
    CutShort,  // the criteria behind the first failing one are missing
    KeptOld,   // what stood under the name, if anything, is unchanged
    SetAside   // neither stands whole: the new one is kept beside the store, to be finished later
};

// The longest name that a person may give a search.
std::size_t MostUnitsOfSearchName();
// False for an empty name and for one with a backslash, which would put one search below another.
bool NamesASearch(WTextView name);
// The names of all saved searches, in natural order, those of last searches too. A key without any
// value of a search and without a criterion is no search.
std::vector<WText> SavedSearchNames();
bool HasSavedSearch(const WCHAR* name);

enum class eStoredEnvironment { NoSearch, Missing, Known };
// Where a search was saved, an eAccessPoint value.
[[nodiscard]] eStoredEnvironment EnvironmentOfSavedSearch(const WCHAR* name, LONG& environment);

// A criterion without a readable property is dropped, and what holds no value of a criterion is
// none. Incomplete: a key went away in mid-read, or a property that can't be read; what could be
// read is there.
[[nodiscard]] eStoredRead ReadSavedSearch(const WCHAR* name, StoredSearch& search);

// Writes over what stands under the name. A named search is first written whole beside the store,
// so that a failure or a killed process leaves the old one, or the new one to be finished later.
// Cut saves of before are finished first, which the caller tells: `finished` has their names.
// What lies below the name and is no criterion stays. Under a name that names no search nothing is
// written.
[[nodiscard]] eStoredWrite WriteSavedSearch(const WCHAR* name, const StoredSearch& search,
                                            std::vector<WText>& finished);
// Without that care: for a search that only this process reads again. Nothing stands there yet.
[[nodiscard]] eStoredWrite WriteLastSearch(const WCHAR* name, const StoredSearch& search);

// True when the search is gone, also when it had been gone before; what else lies below its name
// stays. `finished` as above, without what is gone now.
[[nodiscard]] bool DeleteSavedSearch(const WCHAR* name, std::vector<WText>& finished);
// The last searches of every environment and process.
void DeleteAllLastSearches();

// Finishes what a process that ended in mid-save left behind; the names of those searches.
std::vector<WText> FinishCutSaves();
