// The catalogue against itself, the document library's rows and the resource library's texts.
#include "criteria/catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "module/module_state.h"
#include "outside/md_property_rows.h"
#include "outside/ps_property_specifics.h"
#include "platform/wtext.h"

namespace {

// Empty for a string that the library lacks.
WText Load(LONG id) {
    WCHAR text[256] = {};
    LoadStringW(SrResReturnHandle(), static_cast<UINT>(id), text, 256);
    return text;
}

std::string Folded(LONG id) {
    std::string text = wtext::ToUtf8(Load(id));
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    }
    return text;
}

constexpr eConditionList kLists[] = {
    eConditionList::Text,    eConditionList::Person,   eConditionList::Date,
    eConditionList::Number,  eConditionList::Equality, eConditionList::ListText,
    eConditionList::YesNo,   eConditionList::Note,     eConditionList::FileType,
    eConditionList::Subtype, eConditionList::Library,  eConditionList::All,
};

// With the file types that only some dialogs offer.
std::vector<LONG> WholeList(eConditionList list) {
    const auto listed = ConditionsOf(list);
    std::vector<LONG> whole(listed.begin(), listed.end());
    if (list == eConditionList::FileType) {
        whole.insert(whole.end(), PickConditions().begin(), PickConditions().end());
        whole.insert(whole.end(), {FILETYPE_ALL, FILETYPE_DESIGN_DOCS, FILETYPE_DRAWABLE});
    }
    return whole;
}

TEST(Catalogue, EveryTextThatATableNamesExists) {
    std::set<LONG> ids(FixedCustomProperties().begin(), FixedCustomProperties().end());
    ids.insert(USER_PROP_YES_NO);
    for (const PropertyRow& row : kPropertyRows) {
        ids.insert(row.stringId);
        const std::vector<LONG> values = ValueListOf(row.stringId);
        ids.insert(values.begin(), values.end());
    }
    for (const eConditionList list : kLists) {
        const std::vector<LONG> conditions = WholeList(list);
        EXPECT_FALSE(conditions.empty());
        ids.insert(conditions.begin(), conditions.end());
    }
    EXPECT_LT(200u, ids.size());
    for (const LONG id : ids) {
        const WText text = Load(id);
        EXPECT_NE(WText(), text) << id;
        EXPECT_GT(128u, text.size()) << id;
    }
}

TEST(Catalogue, TextsOfPropertiesDiffer) {
    std::set<LONG> ids(FixedCustomProperties().begin(), FixedCustomProperties().end());
    ids.insert(USER_PROP_YES_NO);
    for (const PropertyRow& row : kPropertyRows)
        ids.insert(row.stringId);
    std::map<std::string, LONG> texts;
    for (const LONG id : ids) {
        const auto [row, isNew] = texts.emplace(Folded(id), id);
        EXPECT_TRUE(isNew) << id << " and " << row->second << " are " << row->first;
    }
}

// A condition is chosen by its text, so none may be the beginning of another.
TEST(Catalogue, NoConditionBeginsAnotherOfItsList) {
    for (const eConditionList list : kLists) {
        const std::vector<LONG> conditions = WholeList(list);
        for (const LONG a : conditions) {
            for (const LONG b : conditions) {
                // The items of the users carry the users' names.
                if (a == b || a == COND_IS_APP_USER || a == COND_IS_LOGIN_USER) continue;
                EXPECT_NE(0u, Folded(b).find(Folded(a)))
                    << "list " << static_cast<int>(list) << ": " << a << " begins " << b;
            }
            EXPECT_EQ(1, std::count(conditions.begin(), conditions.end(), a)) << a;
        }
    }
}

TEST(Catalogue, RowsAreFoundByNumberAndByText) {
    std::map<LONG, const PropertyRow*> firsts;
    for (const PropertyRow& row : kPropertyRows) {
        const PropertyRow& first = *firsts.emplace(row.stringId, &row).first->second;
        EXPECT_EQ(first.number, row.number) << row.stringId << ": one text, one number";
    }
    LONG number = 7;
    LONG category = 8;
    LONG stringId = 9;
    EXPECT_FALSE(FindPropID(100, 1, &stringId, 0, 1));
    EXPECT_FALSE(FindPropID(119, 7, &stringId, 0, 1)) << "the file size has no row";
    EXPECT_FALSE(FindPropString(PROP_FILE_SIZE, &number, &category, 0, 1));
    EXPECT_FALSE(FindPropString(-1, &number, &category, 0, 1));
    EXPECT_EQ("7 8 9", std::to_string(number) + " " + std::to_string(category) + " " +
                           std::to_string(stringId));
}

TEST(Catalogue, DesignStatesHaveTheTextsOfTheirList) {
    const std::vector<LONG> entries = ValueListOf(PROP_DESIGN_STATE);
    ASSERT_EQ(3u, entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const WText text = Load(entries[i]);
        const LONG state = static_cast<LONG>(i) + 1;
        const WText shouted = wtext::FromUtf8(Folded(entries[i]));
        for (const WText& form :
             {text, shouted, TEXT("  ") + text + TEXT(" "), wtext::FromNumber(state)}) {
            EXPECT_EQ(state, PSxPropertySpecifics::DesignStateStringToInt(form.c_str()))
                << wtext::ToUtf8(form);
        }
        ASSERT_NE(nullptr, PSxPropertySpecifics::DesignStateIntToString(state));
        EXPECT_EQ(text, PSxPropertySpecifics::DesignStateIntToString(state));
    }
    for (const WCHAR* text : {TEXT(""), TEXT(" "), TEXT("0"), TEXT("4"), TEXT("Draft"),
                              TEXT("Releas"), TEXT("Released 1"), TEXT("1.0")}) {
        EXPECT_EQ(0, PSxPropertySpecifics::DesignStateStringToInt(text)) << wtext::ToUtf8(text);
    }
    EXPECT_EQ(0, PSxPropertySpecifics::DesignStateStringToInt(nullptr));
    for (const LONG state : {-1, 0, 4})
        EXPECT_EQ(nullptr, PSxPropertySpecifics::DesignStateIntToString(state));
}

}  // namespace
