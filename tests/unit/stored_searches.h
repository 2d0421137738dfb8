// Saves and deletes searches where no save has been cut short before.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "store/saved_search.h"

inline const WText kStore = WText(MDxRegistryBranch()) + TEXT("\\FindExt\\SavedSearches");
// Copies of searches in mid-save, and one under the id of a process that can't be.
inline const WText kCopies = WText(MDxRegistryBranch()) + TEXT("\\FindExt\\UnfinishedSaves");
inline const WText kCopy = kCopies + TEXT("\\2147483646");

// A key of another program.
inline void MakeKeyAt(const WText& path) {
    HKEY key = nullptr;
    EXPECT_EQ(0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, path.c_str(), &key));
    EXPECT_EQ(0u, BLxPref_Reg::CloseKey(key));
}
inline bool HasKeyAt(const WText& path) {
    HKEY key = nullptr;
    const bool found = BLxPref_Reg::OpenKey(HKEY_CURRENT_USER, path.c_str(), &key) == 0;
    if (found) BLxPref_Reg::CloseKey(key);
    return found;
}

inline eStoredWrite Save(const WCHAR* name, const StoredSearch& search) {
    std::vector<WText> finished;
    const eStoredWrite result = WriteSavedSearch(name, search, finished);
    EXPECT_TRUE(finished.empty());
    return result;
}

inline bool Remove(const WCHAR* name) {
    std::vector<WText> finished;
    const bool result = DeleteSavedSearch(name, finished);
    EXPECT_TRUE(finished.empty());
    return result;
}
