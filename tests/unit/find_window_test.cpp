// The find dialog as it opens, and what each message to it does.
#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "tests/unit/find_window_fixture.h"

namespace {

class FindDialogWindow : public FindWindow {};

WText KeyPath(const WCHAR* below) {
    return WText(MDxRegistryBranch()) + TEXT("\\FindExt\\") + below;
}

TEST_F(FindDialogWindow, OpensInTheModeOfItsEntry) {
    const Names assembly = {"Components", "Constraints", "Assembly features", "Welds"};
    const Names part = {"Sketch features", "Part features"};
    const Names files = {"Design documents"};
    const Names docs = {"File type is Design documents "};
    const Names models = {"File type is Models (parts and assemblies) "};
    const char* const inDoc = "Find in this document:";
    const char* const look = "&Look for:";
    const char* const find = "Find Design Documents";
    const char* const parts = "Find Components";
    const char* const sketch = "Find Sketch Features";
    const eLookFor none = eLookForNone;
    const struct {
        eAccessPoint access;
        bool inApp;
        bool onlyAssemblies;
        Names lookFor;
        eLookFor kind;
        const char* title;
        const char* label;
        Names rows;
    } kRows[] = {
        {eAccessNone, false, false, {}, none, find, look, docs},
        {eAccessAssembly, true, false, assembly, eLookForDocuments, parts, inDoc, models},
        {eAccessAssemblyAlt, true, true, assembly, eLookForDocuments, parts, inDoc, models},
        {eAccessPart, true, false, part, eLookForFasSketch, sketch, inDoc, {}},
        {eAccessPartAlt, true, true, part, eLookForFasSketch, sketch, inDoc, {}},
        {eAccessFindFiles, true, false, files, none, find, look, docs},
        {eAccessShellWindow, false, false, files, none, find, look, docs},
        {eAccessShellNoWindow, false, true, files, none, find, look, docs},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.access);
        lookFor_ = eLookForNone;
        FreeSlot();
        slot_ = new MDxFileNameNode(TEXT("Z:\\docs\\machine.hsb"), -1, true);
        Open(row.access, [&](SRxFindDialog& dialog) {
            dialog.SetInApp(row.inApp);
            dialog.SetOnlyAssem(row.onlyAssemblies);
        });
        EXPECT_EQ(row.lookFor, Items(IDC_LOOK_FOR));
        EXPECT_EQ(row.lookFor.empty() ? -1 : 0, Send(IDC_LOOK_FOR, CB_GETCURSEL));
        EXPECT_EQ(row.kind, Dialog()->lookFor);
        EXPECT_EQ(row.kind, lookFor_) << "the caller's variable follows";
        EXPECT_EQ(row.title, Title());
        EXPECT_EQ(row.label, Text(IDC_LOOK_FOR_LABEL));
        EXPECT_EQ(row.rows, Rows());
        // Inside the application, an assembly's own search looks nowhere else.
        const bool fixed = row.inApp && row.onlyAssemblies;
        EXPECT_EQ(fixed, IsShown(IDC_ASSEMBLY_LABEL));
        for (const int radio : {IDC_LOOK_FOLDER, IDC_LOOK_SUBFOLDERS, IDC_LOOK_RELATED}) {
            EXPECT_EQ(!fixed, IsShown(radio));
            EXPECT_EQ(!fixed, IsOn(radio));
            EXPECT_EQ(!fixed && radio == IDC_LOOK_FOLDER, IsChecked(radio));
        }
        EXPECT_EQ(!fixed, IsOn(IDC_PATH_LIST));
        EXPECT_EQ(!fixed, IsOn(IDC_BROWSE));
        if (fixed) {
            EXPECT_EQ("Z:\\docs\\machine.hsb", Text(IDC_PATH_LIST));
        }
        EXPECT_TRUE(IsChecked(IDC_JOIN_AND));
        EXPECT_FALSE(IsChecked(IDC_JOIN_OR));
        // A last search, which an assembly's place has, shows its first row in the controls.
        EXPECT_EQ(row.kind == eLookForDocuments ? 0 : -1, Send(IDC_PROPERTY_LIST, CB_GETCURSEL));
        EXPECT_EQ("none", Text(IDC_CONTEXT_TEXT)) << "no server is there";
        for (const int button : {IDC_DELETE, IDC_SAVE_SEARCH, IDOK})
            EXPECT_TRUE(IsOn(button)) << button;
        EXPECT_NE(0, Send(IDC_BROWSE, BM_GETIMAGE, IMAGE_ICON));
        EXPECT_NE(0, Send(IDHELP, BM_GETIMAGE, IMAGE_ICON));
        EXPECT_FALSE(Dialog()->updatingControls);
        Dialog()->CloseDialog(false);
    }
}

TEST_F(FindDialogWindow, ComesBackToItsPlace) {
    const LONG right = GetSystemMetrics(SM_CXSCREEN) - 20;
    const LONG bottom = GetSystemMetrics(SM_CYSCREEN) - 20;
    const struct {
        const char* name;
        LONG saved[2];
        LONG shown[2];
    } kRows[] = {
        {"inside", {31, 42}, {31, 42}},
        {"the last that stays", {right, bottom}, {right, bottom}},
        {"one further", {right + 1, bottom + 1}, {right - 50, bottom - 50}},
        {"above and to the left", {-1, -32000}, {0, 0}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        HKEY key = nullptr;
        ASSERT_EQ(
            0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, KeyPath(TEXT("LastPos")).c_str(), &key));
        const LONG saved[] = {row.saved[0], row.saved[1], 5, 6};
        EXPECT_EQ(0u, BLxPref_Reg::Write(key, nullptr, REG_BINARY, saved, sizeof(saved)));
        BLxPref_Reg::CloseKey(key);
        Open(eAccessShellWindow);
        RECT rect{};
        GetWindowRect(window_, &rect);
        EXPECT_EQ(row.shown[0], rect.left);
        EXPECT_EQ(row.shown[1], rect.top);
        // What its end writes is what it shows.
        Dialog()->CloseDialog(false);
        LONG written[4] = {};
        DWORD cb = sizeof(written);
        DWORD type = 0;
        ASSERT_EQ(0u,
                  BLxPref_Reg::OpenKey(HKEY_CURRENT_USER, KeyPath(TEXT("LastPos")).c_str(), &key));
        EXPECT_EQ(0u, BLxPref_Reg::Read(key, nullptr, &type, written, &cb));
        BLxPref_Reg::CloseKey(key);
        EXPECT_EQ((std::vector<LONG>{rect.left, rect.top, rect.right - rect.left,
                                     rect.bottom - rect.top}),
                  std::vector<LONG>(written, written + 4));
    }
    // A screen that is narrower than the way in.
    EXPECT_EQ(0, CorrectedPlace(60, 70));
    EXPECT_EQ(1, CorrectedPlace(60, 71));
}

// Each notification, and that it does nothing while the program fills the controls itself.
TEST_F(FindDialogWindow, EditsWhatTheControlsTell) {
    Open(eAccessShellWindow);
    const auto select = [this](int control, WPARAM item) { Send(control, CB_SETCURSEL, item); };
    const auto title = static_cast<WPARAM>(
        Send(IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), TEXT("Title")));
    const auto conditions = [this] {
        return std::to_string(Send(IDC_CONDITION_LIST, CB_GETCOUNT));
    };
    const auto add = [this] { return std::string(IsOn(IDC_ADD) ? "add" : "-"); };
    const struct {
        const char* name;
        int control;
        int code;
        bool guarded;
        std::function<void()> before;
        std::function<std::string()> look;
    } kRows[] = {
        {"a property is chosen", IDC_PROPERTY_LIST, CBN_SELCHANGE, true,
         [&] { select(IDC_PROPERTY_LIST, title); }, conditions},
        {"a condition is chosen", IDC_CONDITION_LIST, CBN_SELCHANGE, true,
         [&] { Dialog()->pendingCriterion = false; },
         [&] { return std::string(Dialog()->pendingCriterion ? "pending" : ""); }},
        {"a value is typed", IDC_VALUE_EDIT, EN_CHANGE, true,
         [&] {
             Send(IDC_VALUE_EDIT, WM_SETTEXT, 0, TEXT("x"));
             EnableWindow(Control(IDC_ADD), FALSE);
         },
         add},
        {"a value is chosen", IDC_VALUE_LIST, CBN_SELCHANGE, true,
         [&] { EnableWindow(Control(IDC_ADD), FALSE); }, add},
        {"a listed name was typed", IDC_PROPERTY_LIST, CBN_KILLFOCUS, false,
         [&] {
             select(IDC_PROPERTY_LIST, static_cast<WPARAM>(-1));
             Send(IDC_PROPERTY_LIST, WM_SETTEXT, 0, TEXT("File name"));
         },
         [&] { return std::to_string(Send(IDC_PROPERTY_LIST, CB_GETCURSEL)); }},
        {"a row is selected", IDC_CRITERIA_LIST, LBN_SELCHANGE, false,
         [&] { select(IDC_PROPERTY_LIST, title); }, [&] { return Text(IDC_PROPERTY_LIST); }},
        {"a row is deleted", IDC_DELETE, BN_CLICKED, false, [] {},
         [&] { return std::to_string(Rows().size()); }},
        {"the list is begun anew", IDC_NEW_SEARCH, BN_CLICKED, false, [] {},
         [&] { return std::to_string(Rows().size()); }},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        if (row.guarded) {
            row.before();
            const std::string untouched = row.look();
            Dialog()->updatingControls = true;
            Notify(row.control, row.code);
            Dialog()->updatingControls = false;
            EXPECT_EQ(untouched, row.look()) << "the program's own filling";
        }
        row.before();
        const std::string before = row.look();
        Dialog()->searching = true;
        Notify(row.control, row.code);
        Dialog()->searching = false;
        if (row.code != BN_CLICKED) {
            EXPECT_EQ(before, row.look()) << "no command in mid-search";
            Notify(row.control, row.code);
        }
        EXPECT_TRUE(row.code == BN_CLICKED || before != row.look()) << before;
    }
}

TEST_F(FindDialogWindow, DiscardsTheListForAnotherKind) {
    Open(eAccessAssembly, [](SRxFindDialog& dialog) { dialog.SetInApp(true); });
    Add("Title", "contains", "x");
    ASSERT_EQ(2u, Rows().size());
    Choose(IDC_LOOK_FOR, "Welds");
    EXPECT_EQ(eLookForWelds, lookFor_);
    EXPECT_EQ("Find Welds", Title());
    EXPECT_EQ(1u, Rows().size());
    EXPECT_EQ(0, Send(IDC_PROPERTY_LIST, CB_GETCOUNT)) << "welds are looked for inside an assembly";
}

TEST_F(FindDialogWindow, AddsEditsAndDeletes) {
    Open(eAccessShellWindow);
    Add("Title", "contains", "shaft");
    Press(IDC_JOIN_OR);
    Add("Material", "contains", "steel");
    const Names both = {"File type is Design documents ", "Title contains shaft",
                        "or Material contains steel"};
    EXPECT_EQ(both, Rows());
    EXPECT_FALSE(IsOn(IDC_ADD));
    EXPECT_EQ("", Text(IDC_VALUE_EDIT));
    // A value that the record can't hold whole is refused and stays in its field.
    const std::string longest(127, 'x');
    for (const std::size_t length : {std::size_t{128}, std::size_t{127}}) {
        Press(IDC_JOIN_AND);
        Choose(IDC_PROPERTY_LIST, "Description");
        Choose(IDC_CONDITION_LIST, "contains");
        const std::string value(length, 'x');
        Type(IDC_VALUE_EDIT, value);
        if (length > 127) desk_.Expect("does not fit the chosen property");
        Press(IDC_ADD);
        EXPECT_EQ(length > 127 ? 3u : 4u, Rows().size());
        EXPECT_EQ(length > 127 ? value : "", Text(IDC_VALUE_EDIT));
    }
    EXPECT_EQ("Description contains " + longest, Rows().back());
    // A row comes back into the controls, and a change of it asks what to do with the old one.
    Send(IDC_CRITERIA_LIST, LB_SETCURSEL, 1);
    Notify(IDC_CRITERIA_LIST, LBN_SELCHANGE);
    EXPECT_EQ("Title", Text(IDC_PROPERTY_LIST));
    EXPECT_EQ("contains", Text(IDC_CONDITION_LIST));
    EXPECT_EQ("shaft", Text(IDC_VALUE_EDIT));
    EXPECT_FALSE(IsOn(IDC_ADD));
    Press(IDC_DELETE);
    EXPECT_EQ("Material contains steel", Rows()[1]) << "the group keeps its opening";
    Press(IDC_NEW_SEARCH);
    EXPECT_EQ((Names{"File type is Design documents "}), Rows());
}

TEST_F(FindDialogWindow, TakesADate) {
    Open(eAccessShellWindow);
    Choose(IDC_PROPERTY_LIST, "Date checked");
    Choose(IDC_CONDITION_LIST, "is on or after");
    EXPECT_TRUE(IsShown(IDC_VALUE_DATE));
    EXPECT_FALSE(IsShown(IDC_VALUE_EDIT));
    SYSTEMTIME day{};
    day.wYear = 2024;
    day.wMonth = 3;
    day.wDay = 7;
    EXPECT_NE(0, Send(IDC_VALUE_DATE, DTM_SETSYSTEMTIME, GDT_VALID, &day));
    // What another control tells under the same code is none of its business.
    NMDATETIMECHANGE change{};
    change.nmhdr = {Control(IDC_VALUE_DATE), IDC_VALUE_DATE, DTN_DATETIMECHANGE};
    const auto tell = [&](UINT_PTR id, DWORD flags) {
        change.nmhdr.idFrom = id;
        change.dwFlags = flags;
        EnableWindow(Control(IDC_ADD), flags != GDT_VALID);
        Dialog()->pendingCriterion = false;
        SendMessageW(window_, WM_NOTIFY, id, reinterpret_cast<LPARAM>(&change));
        return std::string(IsOn(IDC_ADD) ? "add" : "-") +
               (Dialog()->pendingCriterion ? " pending" : "");
    };
    EXPECT_EQ("-", tell(IDC_VALUE_EDIT, GDT_VALID));
    EXPECT_EQ("-", tell(IDC_VALUE_DATE, static_cast<DWORD>(GDT_ERROR)));
    EXPECT_EQ("add pending", tell(IDC_VALUE_DATE, GDT_VALID));
    Press(IDC_ADD);
    ASSERT_EQ(2u, Rows().size());
    EXPECT_EQ("2024 3 7", wtext::ToUtf8(Dialog()->criteriaHead->nextCriterion->value));
    // It comes back into the field with its row.
    day.wYear = 1999;
    Send(IDC_VALUE_DATE, DTM_SETSYSTEMTIME, GDT_VALID, &day);
    Send(IDC_CRITERIA_LIST, LB_SETCURSEL, 1);
    Notify(IDC_CRITERIA_LIST, LBN_SELCHANGE);
    Send(IDC_VALUE_DATE, DTM_GETSYSTEMTIME, 0, &day);
    EXPECT_EQ(2024, day.wYear);
    EXPECT_FALSE(IsOn(IDC_ADD));
    SendMessageW(window_, WM_SYSCOLORCHANGE, 0, 0);
}

TEST_F(FindDialogWindow, AsksAboutACriterionStillOpen) {
    Tree({"one.txt"});
    const struct {
        int answer;
        std::size_t rows;
        std::size_t searches;
        const char* told;
    } kRows[] = {{IDCANCEL, 1, 0, "ok "}, {IDNO, 1, 1, "ok done "}, {IDYES, 2, 1, "ok done "}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.answer);
        told_.clear();
        Open(eAccessShellWindow, [](SRxFindDialog& dialog) { dialog.SetInApp(true); });
        PutLookIn("");
        Choose(IDC_PROPERTY_LIST, "Title");
        Type(IDC_VALUE_EDIT, "x");
        desk_.Expect("\"Title\"", row.answer);
        Press(IDOK);
        EXPECT_EQ(row.told, told_);
        EXPECT_EQ(row.rows, Rows().size());
        EXPECT_EQ(row.searches, Dialog()->searches.size());
        EXPECT_EQ(row.answer == IDYES ? "" : "x", Text(IDC_VALUE_EDIT));
        Dialog()->CloseDialog(false);
    }
}

TEST_F(FindDialogWindow, TellsTheApplicationAndNobodyElse) {
    Tree({"one.txt"});
    for (const bool inApp : {false, true}) {
        SCOPED_TRACE(inApp);
        told_.clear();
        Open(eAccessShellWindow, [&](SRxFindDialog& dialog) { dialog.SetInApp(inApp); });
        PutLookIn("");
        Press(IDOK);
        EXPECT_EQ(inApp ? "ok done " : "", told_);
        EXPECT_FALSE(IsWindowEnabled(window_));
        Press(IDCANCEL);
        EXPECT_TRUE(IsWindow(window_)) << "not in mid-search";
        PumpUntil([this] { return SearchesEnded(); });
        EXPECT_TRUE(IsWindowEnabled(window_));
        Type(IDC_PATH_LIST, "Z:\\nowhere at all");
        if (!inApp) desk_.Expect("Z:\\nowhere at all");
        Press(IDOK);
        EXPECT_EQ(inApp ? 2u : 1u, Dialog()->searches.size());
        if (inApp) desk_.Expect("Z:\\nowhere at all");  // by the search itself
        PumpUntil([this] { return SearchesEnded(); });
        Dialog()->CloseDialog(false);
    }
}

TEST_F(FindDialogWindow, Helps) {
    Open(eAccessShellWindow);
    desk_.Expect("Finds design documents");
    Press(IDHELP);
    desk_.Expect("Finds design documents");
    SendMessageW(window_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Control(IDC_ADD)), 0);
    HELPINFO info{};
    info.cbSize = sizeof(info);
    info.iContextType = HELPINFO_WINDOW;
    info.hItemHandle = Control(IDC_ADD);
    desk_.Expect("Finds design documents");
    SendMessageW(window_, WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
}

TEST_F(FindDialogWindow, KeepsTheLastSearchOfItsEnvironment) {
    const auto inApp = [](SRxFindDialog& dialog) { dialog.SetInApp(true); };
    Open(eAccessAssembly, inApp);
    Choose(IDC_LOOK_FOR, "Welds");
    Press(IDCANCEL);
    Open(eAccessAssembly, inApp);
    EXPECT_EQ("Find Welds", Title());
    EXPECT_EQ(3, Send(IDC_LOOK_FOR, CB_GETCURSEL)) << "and its entry";
    Choose(IDC_LOOK_FOR, "Components");
    Add("Title", "contains", "x");
    const Names rows = Rows();
    Press(IDCANCEL);
    const struct {
        eAccessPoint access;
        bool kept;
    } kRows[] = {{eAccessAssemblyAlt, true}, {eAccessPart, false}, {eAccessShellWindow, false}};
    for (const auto& row : kRows) {
        Open(row.access, inApp);
        EXPECT_EQ(row.kept, rows == Rows()) << row.access;
        Dialog()->CloseDialog(false);
    }
}

}  // namespace
