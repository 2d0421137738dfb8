// The two dialogs of the saved searches, worked from the find dialog as a person does.
#include "tests/unit/find_window_fixture.h"
#include "tests/unit/stored_searches.h"

namespace {

class SearchDialogs : public FindWindow {
protected:
    SearchDialogs() { Clear(); }
    ~SearchDialogs() override { Clear(); }
    static void Clear() {
        for (const WText& name : SavedSearchNames())
            EXPECT_TRUE(Remove(name.c_str()));
    }
    // A search as saved from there.
    static void Put(const char* name, LONG environment) {
        StoredSearch search;
        search.environment = environment;
        EXPECT_EQ(eStoredWrite::Whole, Save(wtext::FromUtf8(name).c_str(), search));
    }
    // Presses a button of the find dialog, and goes through the dialog that opens.
    void Through(int button, std::vector<std::function<void()>> steps) {
        Script(std::move(steps));
        Press(button);
        EndScript();
        EXPECT_EQ(nullptr, Dialog()->nestedDialog);
    }
    HWND Nested() const { return Dialog()->nestedDialog; }
    void Command(int id, int code = 0) const {
        SendMessageW(Nested(), WM_COMMAND,
                     MAKEWPARAM(static_cast<WORD>(id), static_cast<WORD>(code)),
                     reinterpret_cast<LPARAM>(GetDlgItem(Nested(), id)));
    }
    Names Listed() const {
        return Entries(GetDlgItem(Nested(), IDC_SEARCH_LIST), LB_GETCOUNT, LB_GETTEXTLEN,
                       LB_GETTEXT);
    }
    void SelectName(int row) const {
        SendDlgItemMessageW(Nested(), IDC_SEARCH_LIST, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    }
    void TypeName(const std::string& name) const {
        SetDlgItemTextW(Nested(), IDC_SEARCH_NAME, wtext::FromUtf8(name).c_str());
    }
    bool CanSave() const { return IsWindowEnabled(GetDlgItem(Nested(), IDOK)) != FALSE; }
};

TEST_F(SearchDialogs, ListsWhatFitsTheEnvironment) {
    Put("assembly", 1);
    Put("assembly alt", 2);
    Put("part", 3);
    Put("shell", 6);
    HKEY key = nullptr;
    const WText path = kStore + TEXT("\\unknown");
    ASSERT_EQ(0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, path.c_str(), &key));
    EXPECT_EQ(0u, BLxPref_Reg::Write(key, TEXT("LookFor"), LONG{1}));
    BLxPref_Reg::CloseKey(key);
    MakeKeyAt(kStore + TEXT("\\none\\below"));
    const struct {
        eAccessPoint access;
        Names names;
    } kRows[] = {
        {eAccessNone, {"unknown"}},
        {eAccessAssembly, {"assembly", "assembly alt", "unknown"}},
        {eAccessAssemblyAlt, {"assembly", "assembly alt", "unknown"}},
        {eAccessPart, {"part"}},
        {eAccessPartAlt, {}},
        {eAccessShellWindow, {"shell", "unknown"}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.access);
        Open(row.access, [](SRxFindDialog& dialog) { dialog.SetInApp(true); });
        Through(IDC_OPEN_SEARCH, {[&] {
                    EXPECT_EQ(row.names, Sorted(Listed()));
                    Command(IDCANCEL);
                }});
        Dialog()->CloseDialog(false);
    }
}

TEST_F(SearchDialogs, SavesOpensAndDeletes) {
    Open(eAccessShellWindow);
    Add("Title", "contains", "shaft");
    const Names rows = Rows();
    const std::string longest(MostUnitsOfSearchName(), 'n');
    // No name, a name too long, a name.
    Through(IDC_SAVE_SEARCH, {[&] {
                EXPECT_FALSE(CanSave());
                TypeName("x");
                EXPECT_TRUE(CanSave());
                TypeName("");
                EXPECT_FALSE(CanSave());
                Command(IDOK);
            }});
    EXPECT_TRUE(SavedSearchNames().empty());
    Through(IDC_SAVE_SEARCH, {[&] {
                                  desk_.Expect(std::to_string(longest.size()));
                                  TypeName(longest + "n");
                                  Command(IDOK);
                              },
                              [&] {
                                  ASSERT_NE(nullptr, Nested()) << "it stays";
                                  desk_.Expect(std::to_string(longest.size()));
                                  Command(IDC_SEARCH_NAME, EN_MAXTEXT);
                                  desk_.Expect("can't have a backslash");
                                  TypeName("a\\b");
                                  Command(IDOK);
                              },
                              [&] {
                                  ASSERT_NE(nullptr, Nested());
                                  TypeName(longest);
                                  Command(IDOK);
                              }});
    EXPECT_TRUE(HasSavedSearch(wtext::FromUtf8(longest).c_str()));
    Press(IDC_NEW_SEARCH);
    // Nothing selected, then the row.
    Through(IDC_OPEN_SEARCH, {[&] {
                                  EXPECT_EQ((Names{longest}), Listed());
                                  SelectName(-1);
                                  Command(IDOK);
                              },
                              [&] {
                                  ASSERT_NE(nullptr, Nested());
                                  SelectName(0);
                                  Command(IDC_SEARCH_LIST, LBN_DBLCLK);
                              }});
    EXPECT_EQ(rows, Rows());
    Through(IDC_OPEN_SEARCH, {[&] {
                desk_.Expect("Delete the saved search", IDNO);
                Command(IDC_DELETE_SEARCH);
                EXPECT_EQ(1u, Listed().size());
                desk_.Expect(longest, IDYES);
                Command(IDC_DELETE_SEARCH);
                EXPECT_TRUE(Listed().empty());
                Command(IDC_DELETE_SEARCH);
                Command(IDOK);
                Command(IDCANCEL);
            }});
    EXPECT_EQ(rows, Rows()) << "the list stays as it was";
    EXPECT_TRUE(SavedSearchNames().empty());
}

// What other processes do meanwhile, and a row that names nothing.
TEST_F(SearchDialogs, DeletesWhatIsGoneOrNameless) {
    Open(eAccessShellWindow);
    Put("gone", eAccessShellWindow);
    Put("kept", eAccessShellWindow);
    Through(IDC_OPEN_SEARCH, {[&] {
                EXPECT_TRUE(Remove(TEXT("gone")));
                desk_.Expect("Delete the saved search gone", IDYES);
                SelectName(0);
                Command(IDC_DELETE_SEARCH);
                EXPECT_EQ((Names{"kept"}), Listed());
                SendDlgItemMessageW(Nested(), IDC_SEARCH_LIST, LB_INSERTSTRING, 0,
                                    reinterpret_cast<LPARAM>(TEXT("")));
                SelectName(0);
                Command(IDC_DELETE_SEARCH);
                Command(IDOK);
                EXPECT_NE(nullptr, Nested());
                Command(IDCANCEL);
            }});
    EXPECT_TRUE(HasSavedSearch(TEXT("kept")));
}

// A process ended in mid-save while the list was open: what a deletion finishes has a row.
TEST_F(SearchDialogs, ListsACutSaveOnceItIsFinished) {
    Open(eAccessFindFiles);
    Put("b", eAccessFindFiles);
    Put("c", eAccessFindFiles);
    Through(IDC_OPEN_SEARCH, {[&] {
                HKEY key = nullptr;
                ASSERT_EQ(0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, kCopy.c_str(), &key));
                EXPECT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Environment"), LONG{eAccessFindFiles}));
                EXPECT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Name"), TEXT("a")));
                BLxPref_Reg::CloseKey(key);
                desk_.Expect("Delete the saved search b", IDYES);
                desk_.Expect("Saving the search a had been cut short");
                SelectName(0);
                Command(IDC_DELETE_SEARCH);
                EXPECT_EQ((Names{"a", "c"}), Listed());
                Command(IDOK);
                EXPECT_NE(nullptr, Nested()) << "no row is selected";
                Command(IDCANCEL);
            }});
}

TEST_F(SearchDialogs, ReplacesASearchOnlyWhenAsked) {
    Open(eAccessShellWindow);
    Add("Title", "contains", "one");
    Add("Material", "contains", "two");
    const auto save = [this](const char* name, int answer) {
        Through(IDC_SAVE_SEARCH, {[=, this] {
                    if (answer != 0) desk_.Expect("exists already", answer);
                    TypeName(name);
                    Command(IDOK);
                    if (answer == IDNO) {
                        EXPECT_NE(nullptr, Nested());
                        Command(IDCANCEL);
                    }
                }});
    };
    const auto stored = [] {
        StoredSearch search;
        (void)ReadSavedSearch(TEXT("mine"), search);
        return search.criteria.size();
    };
    MakeKeyAt(kStore + TEXT("\\mine\\below"));  // no search to ask about
    save("mine", 0);
    EXPECT_EQ(3u, stored());
    Press(IDC_NEW_SEARCH);
    save("Mine", IDNO);
    EXPECT_EQ(3u, stored());
    save("Mine", IDYES);
    EXPECT_EQ(1u, stored()) << "nothing of the old one is left";
    EXPECT_EQ(1u, SavedSearchNames().size());
}

}  // namespace
