// Saves and deletes searches where no save has been cut short before.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "store/saved_search.h"

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
