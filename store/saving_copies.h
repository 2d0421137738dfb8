// Copies of searches in mid-save. They stand beside the saved searches, where no list shows them,
// each in a subkey named by the id of its process; with a name it is whole. All under the lock of
// the store. For the sources of this folder.
#pragma once

#include <vector>

#include "store/saved_search.h"

// The key of all copies.
WText SavingPath();
// Where this process may put a copy: one that couldn't be finished yet keeps its place.
WText FreeSavingPath();
// Writes the copy, its name at last. False when it isn't whole.
bool WriteSaving(const WText& path, const WCHAR* name, const StoredSearch& search);
bool DeleteSaving(const WText& path);
// What stands under this name has come later than all its copies. False when one is left.
bool DropSavings(const WCHAR* name);
// Puts what ended processes left in its place, so that a save that comes later isn't lost to it.
// The names of those that are in their place now.
std::vector<WText> FinishSavings();
