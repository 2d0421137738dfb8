// One search as keys and values, wherever in the registry it stands. For the sources of this
// folder.
#pragma once

#include <vector>

#include "module/registry_key.h"
#include "store/saved_search.h"

inline constexpr DWORD kCriterionNameCapacity = 129;  // units with the terminator

// Null when there is no such key, or it can't be made. Paths begin below the user's root key.
RegistryKeyOwner OpenKey(const WText& path);
RegistryKeyOwner CreateKey(const WText& path);
// False when what was written can't be kept.
bool Close(RegistryKeyOwner& key);
std::vector<WText> SubkeyNames(HKEY key, DWORD capacity);

// The key of all saved searches.
WText StorePath();
// A name of backslashes alone, or an empty one, would stand for the store itself.
bool NamesASearch(WTextView name);
// Of a name that names a search.
WText PathOf(WTextView name);

eStoredRead ReadAt(const WText& path, StoredSearch& search);
// Whole, NoKey or CutShort; nothing stands at `path` yet.
eStoredWrite WriteAt(const WText& path, const StoredSearch& search);
// True when nothing is left there.
bool DeleteAt(const WText& path);
