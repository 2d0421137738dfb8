// Searches that last: what stands in the registry, what is read back from it.
#include "store/saved_search.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "criteria/catalogue.h"
#include "dialog/dialog_messages.h"
#include "dialog/saved_search_commands.h"
#include "module/module_state.h"
#include "outside/blx_registry.h"
#include "outside/md_property_rows.h"
#include "outside/md_registry.h"
#include "tests/unit/dialog_controls.h"
#include "tests/unit/failing_allocation.h"
#include "tests/unit/search_fixture.h"
#include "tests/unit/stored_searches.h"

namespace {

constexpr LONG kStoredTitle = 22 << 16 | 1;
constexpr char kFinished[] = "0 1 0\nNode1 1 1441793 21721 'v' -1\n";

// One value as text: its type and what it holds.
std::string ValueText(HKEY key, const WCHAR* name) {
    BYTE data[1024];
    DWORD cb = sizeof(data);
    DWORD type = 0;
    if (BLxPref_Reg::Read(key, name, &type, data, &cb) != 0) return "-";
    LONG number = 0;
    if (type == REG_DWORD) {
        std::memcpy(&number, data, sizeof(number));
        return std::to_string(number);
    }
    BLxWString text;
    return type == REG_SZ && BLxPref_Reg::Read(key, name, &text) == 0
               ? "'" + wtext::ToUtf8(text) + "'"
               : "type " + std::to_string(type);
}

// A search as it stands in the registry.
std::string Exported(const WText& name) {
    HKEY key = nullptr;
    if (BLxPref_Reg::OpenKey(HKEY_CURRENT_USER, (kStore + TEXT("\\") + name).c_str(), &key) != 0) {
        return "none";
    }
    std::string text = ValueText(key, nullptr) + " " + ValueText(key, TEXT("LookFor")) + " " +
                       ValueText(key, TEXT("Environment")) + "\n";
    BLxPrefKeyIterator_Reg names(key);
    WCHAR node[128];
    while (names.NextKey(node, 128)) {
        HKEY subkey = nullptr;
        EXPECT_EQ(0u, BLxPref_Reg::OpenKey(key, node, &subkey));
        text += wtext::ToUtf8(node);
        for (const WCHAR* value :
             {TEXT("Join"), TEXT("Property"), TEXT("Condition"), TEXT("Value"), TEXT("ValueID")}) {
            text += " " + ValueText(subkey, value);
        }
        text += "\n";
        BLxPref_Reg::CloseKey(subkey);
    }
    BLxPref_Reg::CloseKey(key);
    return text;
}

class SavedSearch : public testing::Test {
protected:
    SavedSearch() { NewDialog(); }
    ~SavedSearch() override {
        for (const WText& name : SavedSearchNames())
            EXPECT_TRUE(Remove(name.c_str()));
    }
    // Another opening of the dialog: nothing is left of the one before.
    void NewDialog() {
        dialog_.reset();
        controls_ = std::make_unique<DialogControls>(SrResReturnHandle());
        dialog_ = std::make_unique<SRxFindDialog>(SrResReturnHandle(), nullptr, nullptr, nullptr,
                                                  nullptr);
        dialog_->dialogWindow = controls_->Window();
    }
    void Add(std::unique_ptr<SRxCriteriaNode> node) {
        ASSERT_TRUE(dialog_->AddNode(node.get(), true, nullptr, nullptr));
        (void)node.release();
    }
    template <typename... Arguments>
    void AddNew(Arguments... arguments) {
        Add(std::make_unique<SRxCriteriaNode>(arguments...));
    }
    std::size_t Rows() {
        return static_cast<std::size_t>(
            SendDlgItemMessageW(controls_->Window(), IDC_CRITERIA_LIST, LB_GETCOUNT, 0, 0));
    }
    // A subkey of a search with these values; null or kNoId: without the value.
    void WriteNode(const WText& search, const WText& node, LONG property, LONG join,
                   LONG condition) {
        WriteNodeAt(kStore + TEXT("\\") + search + TEXT("\\") + node, property, join, condition);
    }
    void WriteNodeAt(const WText& path, LONG property, LONG join, LONG condition) {
        HKEY key = nullptr;
        ASSERT_EQ(0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, path.c_str(), &key));
        if (property >= 0) {
            ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Property"), property));
        }
        ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Join"), join));
        ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Condition"), condition));
        ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Value"), TEXT("v")));
        ASSERT_EQ(0u, BLxPref_Reg::CloseKey(key));
    }
    // What a process leaves that ended in mid-save: a part of the search s, and its copy, of one
    // criterion, with the name at last or without it.
    void LeaveCutSave(const WCHAR* name) {
        WriteNode(TEXT("s"), TEXT("Node9"), -1, 1, COND_CONTAINS);
        WriteNodeAt(kCopy + TEXT("\\Node1"), kStoredTitle, JOIN_AND, COND_CONTAINS);
        HKEY key = nullptr;
        ASSERT_EQ(0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, kCopy.c_str(), &key));
        if (name != nullptr) {
            ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Name"), name));
        }
        BLxPref_Reg::CloseKey(key);
    }
    static bool CopyStands() { return HasKeyAt(kCopy); }
    // Joins and property numbers of the list.
    std::string List() {
        std::string list;
        for (const auto* n = dialog_->criteriaHead; n != nullptr; n = n->nextCriterion)
            list += std::to_string(n->joinType) + ":" + std::to_string(n->propertyNumber) + " ";
        return list;
    }

    ScriptedDesk desk_;
    DeskScope scope_{desk_};
    std::unique_ptr<DialogControls> controls_;
    std::unique_ptr<SRxFindDialog> dialog_;
};

TEST_F(SavedSearch, StandsInTheRegistryAsTold) {
    dialog_->SetAccessPoint(eAccessAssembly);
    dialog_->lookFor = eLookForDocuments;
    controls_->Check(IDC_MATCH_CASE, true);
    AddNew(PROP_FILE_NAME, COND_CONTAINS, JOIN_AND, TEXT("b\"\\ \u00e9"));
    AddNew(kDateCreated, COND_ON_DATE, JOIN_OR, TEXT("2024 3 7"));
    AddNew(TEXT("My own"), COND_EQUALS, JOIN_AND, TEXT(""));
    AddNew(PROP_COMP_KPART_TYPE, COND_EQUALS, JOIN_AND, TEXT("Member"), VAL_TABLE_MEMBER);
    EXPECT_TRUE(WriteSearch(*dialog_, TEXT("A search"), false));
    EXPECT_EQ(
        "1 1 1\n"
        "Node1 1 6619143 21721 'b\"\\ \u00e9' -1\n"
        "Node2 2 262145 21741 '2024 3 7' -1\n"
        "Node3 1 'My own' 21725 '' -1\n"
        "Node4 1 7602187 21725 'Member' 19227\n",
        Exported(TEXT("A search")));
    EXPECT_EQ((std::vector<WText>{TEXT("A search")}), SavedSearchNames());
    EXPECT_TRUE(WriteSearch(*dialog_, TEXT(""), false));
    dialog_->OnCommandNewSearch();
    delete std::exchange(dialog_->criteriaHead, nullptr);
    EXPECT_TRUE(WriteSearch(*dialog_, TEXT("nothing"), false)) << "an empty list is never stored";
    EXPECT_EQ(1u, SavedSearchNames().size());
}

// Every kind of property in every condition, and long lists with Or groups: saved, read and saved
// again.
TEST_F(SavedSearch, ReadBackItIsTheSame) {
    std::vector<std::vector<std::unique_ptr<SRxCriteriaNode>>> lists(3);
    std::set<eConditionList> kinds;
    for (const PropertyRow& row : kPropertyRows) {
        if (!kinds.insert(FindPropertyKind(row.stringId)->conditions).second) continue;
        for (const LONG condition : ConditionsOf(FindPropertyKind(row.stringId)->conditions)) {
            const WCHAR* value =
                row.stringId == PROP_DESIGN_STATE ? TEXT("Released") : TEXT("2 3 4");
            lists[0].push_back(std::make_unique<SRxCriteriaNode>(row.number, row.category,
                                                                 condition, JOIN_AND, value));
        }
    }
    for (const LONG condition : ConditionsOf(eConditionList::All))
        lists[0].push_back(
            std::make_unique<SRxCriteriaNode>(TEXT("own"), condition, JOIN_OR, TEXT("x")));
    for (int i = 0; i < 50; ++i) {
        for (std::size_t list = i < 12 ? 1 : 2; list < 3; ++list) {
            lists[list].push_back(std::make_unique<SRxCriteriaNode>(kTitle, COND_CONTAINS,
                                                                    i % 4 < 2 ? JOIN_AND : JOIN_OR,
                                                                    wtext::FromNumber(i).c_str()));
        }
    }
    for (auto& list : lists) {
        const std::size_t count = list.size();
        SCOPED_TRACE(count);
        NewDialog();
        dialog_->SetOnlyAssem(true);
        // Not by the rules of the list: types that exclude each other stand here side by side.
        SRxCriteriaNode** end = &dialog_->criteriaHead;
        for (auto& node : list) {
            if (node->IsFileTypeCriterion() && node->conditionId != FILETYPE_MODELS) continue;
            *end = node.release();
            end = &(*end)->nextCriterion;
        }
        ASSERT_TRUE(WriteSearch(*dialog_, TEXT("s"), false));
        const std::string first = Exported(TEXT("s"));
        NewDialog();
        dialog_->SetOnlyAssem(true);
        EXPECT_TRUE(ReadSearch(*dialog_, TEXT("s")));
        ASSERT_TRUE(WriteSearch(*dialog_, TEXT("again"), false));
        EXPECT_EQ(first, Exported(TEXT("again")));
        EXPECT_LT(count, Rows() + 13) << "file types exclude each other";
        EXPECT_TRUE(Remove(TEXT("s")));
    }
}

TEST_F(SavedSearch, ReplacingLeavesNothingOfTheOld) {
    for (const int count : {12, 3}) {
        NewDialog();
        for (int i = 0; i < count; ++i)
            AddNew(kTitle, COND_CONTAINS, JOIN_AND, wtext::FromNumber(i).c_str());
        EXPECT_TRUE(WriteSearch(*dialog_, TEXT("s"), false));
        StoredSearch search;
        EXPECT_EQ(eStoredRead::Whole, ReadSavedSearch(TEXT("S"), search)) << "case plays no part";
        EXPECT_EQ(static_cast<std::size_t>(count), search.criteria.size());
        EXPECT_EQ(wtext::FromNumber(count - 1), search.criteria.back().value) << "in their order";
    }
    EXPECT_FALSE(HasKeyAt(kCopies)) << "no trace is left";
}

TEST_F(SavedSearch, WhatOtherWritersLeave) {
    const LONG title = kStoredTitle;
    const LONG component = 109 << 16 | 11;
    const struct {
        const char* label;
        std::vector<std::array<LONG, 3>> nodes;  // property (-1: none), join, condition
        const char* list;
        const char* message;  // null: none
    } rows[] = {
        {"joins of all sorts", {{title, 1, 21721}, {title, 2, 21721}}, "1:22 2:22 ", nullptr},
        {"no property", {{title, 1, 21721}, {-1, 1, 21721}}, "1:22 ", "could not be read whole"},
        {"a library document of old", {{title, 1, 21750}}, "1:108 ", nullptr},
        {"a component between",
         {{title, 1, 21721}, {component, 1, 21731}, {title, 2, 21721}},
         "1:22 1:22 ",
         "Criteria on components were left out"},
        {"a component in a group",
         {{title, 1, 21721}, {title, 2, 21721}, {component, 1, 21731}, {title, 2, 21721}},
         "1:22 2:22 2:22 ",
         "Criteria on components were left out"},
        {"a component first",
         {{component, 1, 21731}, {title, 2, 21721}},
         "0:22 ",
         "Criteria on components were left out"},
        {"a component before And",
         {{component, 2, 21731}, {title, 1, 21721}},
         "1:22 ",
         "Criteria on components were left out"},
        {"numbers that nothing has", {{999 << 16 | 7, 1, 5}}, "1:-1 ", nullptr},
        {"no search: a new list", {}, "1:100 ", nullptr},
        {"no criterion either", {{-1, 1, 21721}}, "1:100 ", nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        NewDialog();
        MakeKeyAt(kStore + TEXT("\\s"));
        int number = 0;
        for (const auto& node : row.nodes) {
            // Any name will do; digits count as numbers.
            WriteNode(TEXT("s"), TEXT("Part ") + wtext::FromNumber(9 + number++), node[0], node[1],
                      node[2]);
        }
        if (row.message != nullptr) desk_.Expect(row.message);
        EXPECT_TRUE(ReadSearch(*dialog_, TEXT("s")));
        EXPECT_EQ(row.list, List());
        EXPECT_TRUE(Remove(TEXT("s")));
    }
}

TEST_F(SavedSearch, MistypedValuesAreEmpty) {
    HKEY key = nullptr;
    ASSERT_EQ(
        0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, (kStore + TEXT("\\s\\Node1")).c_str(), &key));
    ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Property"), LONG{22 << 16 | 1}));
    ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Join"), TEXT("1")));
    ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Value"), WText(200, 'v').c_str()));
    ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("ValueID"), REG_BINARY, "abc", 3));
    BLxPref_Reg::CloseKey(key);
    ASSERT_EQ(
        0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, (kStore + TEXT("\\s\\Node2")).c_str(), &key));
    ASSERT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Property"), REG_BINARY, "abcd", 4));
    BLxPref_Reg::CloseKey(key);
    StoredSearch search;
    EXPECT_EQ(eStoredRead::Incomplete, ReadSavedSearch(TEXT("s"), search));
    ASSERT_EQ(1u, search.criteria.size());
    EXPECT_EQ(0, search.criteria[0].join);
    EXPECT_EQ(0, search.criteria[0].condition);
    EXPECT_EQ(kNoId, search.criteria[0].valueId);
    EXPECT_EQ(1, search.lookFor);
    EXPECT_EQ(200u, search.criteria[0].value.size());
    desk_.Expect("could not be read whole");
    ReadSearch(*dialog_, TEXT("s"));
    ASSERT_NE(nullptr, dialog_->criteriaHead);
    EXPECT_EQ(0, dialog_->criteriaHead->value[0]) << "too long to be held: never cut";
}

TEST_F(SavedSearch, LastSearches) {
    const struct {
        eAccessPoint accessPoint;
        const char* name;
    } kRows[] = {{eAccessNone, ""},
                 {eAccessAssembly, "_last_hlv_search_assy_"},
                 {eAccessAssemblyAlt, "_last_hlv_search_assy_"},
                 {eAccessPart, "_last_hlv_search_part_"},
                 {eAccessPartAlt, "_last_hlv_search_part_"},
                 {eAccessFindFiles, ""},
                 {eAccessShellNoWindow, ""}};
    AddNew(kTitle, COND_CONTAINS, JOIN_AND, TEXT("x"));
    EXPECT_TRUE(WriteSearch(*dialog_, TEXT("mine"), false));
    for (const auto& row : kRows) {
        WCHAR name[kPathLength];
        dialog_->SetAccessPoint(row.accessPoint);
        dialog_->GetLastSearchName(name, kPathLength);
        const std::string process = std::to_string(GetCurrentProcessId());
        EXPECT_EQ(*row.name != 0 ? row.name + process : "", wtext::ToUtf8(name));
        EXPECT_TRUE(WriteSearch(*dialog_, name, true));
    }
    EXPECT_EQ(3u, SavedSearchNames().size());
    dialog_->DeleteLastSearches();
    EXPECT_EQ((std::vector<WText>{TEXT("mine")}), SavedSearchNames());
    // One that isn't there: the criterion of the environment, which has no row in a part.
    dialog_->SetAccessPoint(eAccessPart);
    EXPECT_TRUE(ReadSearch(*dialog_, TEXT("_last_hlv_search_part_1")));
    EXPECT_EQ("1:100 ", List());
    EXPECT_EQ(0u, Rows());
}

// In a part environment a file type stays in the list without a row, wherever it stands.
TEST_F(SavedSearch, FileTypesOfAPartHaveNoRow) {
    dialog_->SetAccessPoint(eAccessPart);
    AddNew(PROP_FILE_TYPE, FILETYPE_PARTS, JOIN_AND, nullptr);
    AddNew(kTitle, COND_CONTAINS, JOIN_AND, TEXT("x"));
    AddNew(PROP_FILE_TYPE, FILETYPE_ASSEMBLIES, JOIN_OR, nullptr);
    AddNew(kProject, COND_CONTAINS, JOIN_AND, TEXT("y"));
    EXPECT_TRUE(WriteSearch(*dialog_, TEXT("s"), false));
    NewDialog();
    dialog_->SetAccessPoint(eAccessPart);
    EXPECT_TRUE(ReadSearch(*dialog_, TEXT("s")));
    EXPECT_EQ("1:100 1:22 2:100 1:7 ", List());
    EXPECT_EQ(2u, Rows());
    // The second row is the last criterion's.
    SendDlgItemMessageW(controls_->Window(), IDC_CRITERIA_LIST, LB_SETCURSEL, 1, 0);
    EXPECT_TRUE(dialog_->OnCommandDelete());
    EXPECT_EQ("1:100 1:22 2:100 ", List());
    EXPECT_EQ(1u, Rows());
}

// A criterion on nothing known has a row as well.
TEST_F(SavedSearch, WhatIsInTheListComesBack) {
    AddNew(LONG{999}, LONG{7}, LONG{COND_CONTAINS}, JOIN_AND, TEXT("x"));
    AddNew(kTitle, COND_CONTAINS, JOIN_OR, TEXT("y"));
    ASSERT_TRUE(WriteSearch(*dialog_, TEXT("s"), false));
    EXPECT_EQ("0 0 0\nNode1 1 '' -1 '' -1\nNode2 2 1441793 21721 'y' -1\n", Exported(TEXT("s")));
    NewDialog();
    EXPECT_TRUE(ReadSearch(*dialog_, TEXT("s"))) << "nothing is told";
    EXPECT_EQ("1:-1 2:22 ", List());
    EXPECT_EQ(2u, Rows());
    ASSERT_TRUE(WriteSearch(*dialog_, TEXT("again"), false));
    EXPECT_EQ(Exported(TEXT("s")), Exported(TEXT("again")));
}

TEST_F(SavedSearch, WithoutMemoryToReadOneTheListStays) {
    AddNew(kTitle, COND_CONTAINS, JOIN_AND, TEXT("x"));
    ASSERT_TRUE(WriteSearch(*dialog_, TEXT("s"), false));
    NewDialog();
    dialog_->OnCommandNewSearch();
    const std::string list = List();
    const eFileTypeSearch type = dialog_->fileSearchType;
    ASSERT_EQ(1u, Rows());
    failingSize = sizeof(StoredCriterion);
    EXPECT_THROW(ReadSearch(*dialog_, TEXT("s")), std::bad_alloc);
    EXPECT_EQ(0u, std::exchange(failingSize, 0));
    EXPECT_EQ(list, List());
    EXPECT_EQ(1u, Rows());
    EXPECT_EQ(type, dialog_->fileSearchType);
}

// Under such a name one search would lie below another.
TEST_F(SavedSearch, NamesThatAreRefused) {
    AddNew(kTitle, COND_CONTAINS, JOIN_AND, TEXT("x"));
    ASSERT_TRUE(WriteSearch(*dialog_, TEXT("a"), false));
    for (const WCHAR* name : {TEXT(""), TEXT("\\"), TEXT("a\\b"), TEXT("a\\Node1"), TEXT("\\a")}) {
        SCOPED_TRACE(wtext::ToUtf8(name));
        StoredSearch search;
        LONG environment = 0;
        EXPECT_FALSE(HasSavedSearch(name));
        EXPECT_EQ(eStoredEnvironment::NoSearch, EnvironmentOfSavedSearch(name, environment));
        EXPECT_EQ(eStoredRead::Absent, ReadSavedSearch(name, search));
        EXPECT_EQ(eStoredWrite::KeptOld, Save(name, search));
        EXPECT_EQ(eStoredWrite::NoKey, WriteLastSearch(name, search));
        EXPECT_FALSE(Remove(name));
        LeaveCutSave(name);
        EXPECT_TRUE(FinishCutSaves().empty());
        EXPECT_FALSE(CopyStands());
    }
    EXPECT_EQ("0 0 0\nNode1 1 1441793 21721 'x' -1\n", Exported(TEXT("a")));
}

// What others put below a search is none of its criteria, and outlives it.
TEST_F(SavedSearch, WhatLiesBelowStays) {
    AddNew(kTitle, COND_CONTAINS, JOIN_AND, TEXT("x"));
    AddNew(kProject, COND_CONTAINS, JOIN_AND, TEXT("y"));
    for (const char* key : {"b", "Node1"}) {
        const WText below = kStore + wtext::FromUtf8(std::string("\\a\\") + key + "\\sub");
        for (const bool twice : {false, true}) {
            ASSERT_TRUE(WriteSearch(*dialog_, TEXT("a"), false));
            EXPECT_EQ(twice, HasKeyAt(below));
            MakeKeyAt(below);
            NewDialog();
            EXPECT_TRUE(ReadSearch(*dialog_, TEXT("a"))) << "nothing is told";
            EXPECT_EQ("1:22 1:7 ", List());
        }
        EXPECT_TRUE(Remove(TEXT("a")));
        EXPECT_TRUE(SavedSearchNames().empty());
        EXPECT_EQ(std::string("- - -\n") + key + " - - - - -\n", Exported(TEXT("a")));
        EXPECT_TRUE(HasKeyAt(below));
        EXPECT_EQ(0u, BLxPref_Reg::DeleteKeyAndDescendants(HKEY_CURRENT_USER, kStore.c_str()));
    }
}

// A process that ended in mid-save: its copy is whole, or the old search is.
TEST_F(SavedSearch, CutSavesAreFinished) {
    for (const WCHAR* name : {TEXT("s"), static_cast<const WCHAR*>(nullptr)}) {
        SCOPED_TRACE(name != nullptr);
        LeaveCutSave(name);
        if (name != nullptr) desk_.Expect("Saving the search s had been cut short.");
        SayFinishedSaves(*dialog_, FinishCutSaves());
        EXPECT_EQ(name != nullptr, Exported(TEXT("s")) == kFinished);
        EXPECT_FALSE(CopyStands());
        EXPECT_TRUE(FinishCutSaves().empty()) << "told once";
        EXPECT_TRUE(Remove(TEXT("s")));
    }
}

// What is saved or deleted after a cut save isn't lost to its copy.
TEST_F(SavedSearch, CutSavesComeBeforeWhatFollows) {
    AddNew(kProject, COND_CONTAINS, JOIN_AND, TEXT("later"));
    for (const WCHAR* name : {TEXT("s"), TEXT("t")}) {
        SCOPED_TRACE(wtext::ToUtf8(name));
        const bool same = WTextView(name) == TEXT("s");
        LeaveCutSave(TEXT("s"));
        desk_.Expect("Saving the search s had been cut short.");
        EXPECT_TRUE(WriteSearch(*dialog_, name, false));
        const std::string saved = Exported(name);
        EXPECT_NE(std::string::npos, saved.find("'later'"));
        EXPECT_FALSE(CopyStands());
        EXPECT_EQ(same, Exported(TEXT("s")) != kFinished);
        LeaveCutSave(TEXT("s"));
        std::vector<WText> finished;
        EXPECT_TRUE(DeleteSavedSearch(name, finished));
        EXPECT_EQ(same ? 0u : 1u, finished.size()) << "what is gone isn't told";
        EXPECT_TRUE(FinishCutSaves().empty());
        EXPECT_FALSE(HasSavedSearch(name));
        EXPECT_EQ(!same, HasSavedSearch(TEXT("s")));
    }
}

}  // namespace
