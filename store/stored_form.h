// One search as keys and values, wherever in the registry it stands. For the sources of this
// folder.
#pragma once

#include <vector>

#include "module/registry_key.h"
#include "store/saved_search.h"

inline constexpr DWORD kCriterionNameCapacity = 129;  // units with the terminator
inline constexpr DWORD kKeyNameCapacity = 256;        // of the longest name of a key

// Null when there is no such key, or it can't be made. Paths begin below the user's root key.
RegistryKeyOwner OpenKey(const WText& path);
RegistryKeyOwner CreateKey(const WText& path);
// False when what was written can't be kept.
bool Close(RegistryKeyOwner& key);
std::vector<WText> SubkeyNames(HKEY key, DWORD capacity);

// The key of all saved searches.
WText StorePath();
// Of a name that names a search.
WText PathOf(WTextView name);

// Whether a search is kept in the open key at `path`: one of its values, or a criterion. What lies
// in a subkey alone is none.
bool IsSearch(HKEY key, const WText& path);
eStoredRead ReadAt(const WText& path, StoredSearch& search);
// Whole, NoKey or CutShort; no search stands at `path` yet.
eStoredWrite WriteAt(const WText& path, const StoredSearch& search);
// The key with all below it. True when nothing is left there.
bool DeleteTreeAt(const WText& path);
// The values of a search and its criteria, and the key unless something else lies below it. True
// when nothing is left of the search.
bool DeleteAt(const WText& path);
