// The box with the place to look in, and the dialogs that browse for one.
#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "tests/unit/find_window_fixture.h"

namespace {

class SearchPaths : public FindWindow {
protected:
    SearchPaths() { Tree({"docs/Old/", "docs/b [2]/", "docs/machine.hsb", "other/"}); }

    // As the box shows a path.
    std::string Shown(const std::string& file) const { return wtext::ToUtf8(Wide(file)); }
    void Remember(const WCHAR* below, const WCHAR* value, const WText& text) {
        HKEY key = nullptr;
        const WText path = WText(MDxRegistryBranch()) + TEXT("\\FindExt\\") + below;
        ASSERT_EQ(0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, path.c_str(), &key));
        EXPECT_EQ(0u, BLxPref_Reg::Write(key, value, text.c_str()));
        BLxPref_Reg::CloseKey(key);
    }
    void OpenIn(const std::string& file) {
        Open(eAccessShellWindow);
        PutLookIn(file);
        Dialog()->InitPaths();
    }
    bool Has(const std::string& entry) const {
        const Names items = Items(IDC_PATH_LIST);
        return std::count(items.begin(), items.end(), entry) == 1;
    }
};

TEST_F(SearchPaths, Reformat) {
    const struct {
        const char* base;
        const char* entry;
        const char* result;  // null: refused
        const char* left;
    } kRows[] = {
        {"Z:\\work\\", "[docs]", "Z:\\work\\docs\\", nullptr},
        {"Z:\\work", "[docs]", "Z:\\work\\docs\\", nullptr},
        {"Z:\\work\\", "[-z-]", "Z:\\", nullptr},
        {"Z:\\work\\", "[a-b]", "Z:\\work\\a-b\\", nullptr},
        {"Z:\\work\\", "[a[b]", "Z:\\work\\a[b\\", nullptr},
        {"Z:\\work\\", "[a]b]", "Z:\\work\\a\\", nullptr},
        {"Z:\\work\\", "[--]", nullptr, "[--]"},
        {"Z:\\work\\", "[-c]", nullptr, "[-c]"},
        {"Z:\\work\\", "docs", nullptr, "docs"},
        {"Z:\\work\\", "[docs", nullptr, "[docs"},
        {"Z:\\work\\", "x", nullptr, ""},
        {"Z:\\work\\", "", nullptr, ""},
    };
    const SRxFindDialog dialog(SrResReturnHandle(), nullptr, nullptr, nullptr, nullptr);
    for (const auto& row : kRows) {
        WText entry = wtext::FromUtf8(row.entry);
        const bool done = dialog.PathReformat(wtext::FromUtf8(row.base), entry);
        EXPECT_EQ(row.result != nullptr, done) << row.entry;
        EXPECT_EQ(done ? row.result : row.left, wtext::ToUtf8(entry)) << row.entry;
    }
}

TEST_F(SearchPaths, TheBoxHoldsTheFolderItsSubfoldersAndTheDrives) {
    Remember(TEXT("RecentPathList"), nullptr, Wide("other"));
    for (const char* typed : {"docs", "docs/"}) {
        SCOPED_TRACE(typed);
        OpenIn(typed);
        EXPECT_EQ(Shown("docs") + "\\", Text(IDC_PATH_LIST));
        const Names items = Items(IDC_PATH_LIST);
        ASSERT_LE(4u, items.size());
        EXPECT_EQ(Shown("other"), items[0]) << "the last place, though not selected";
        EXPECT_EQ(Shown("docs") + "\\", items[1]);
        // Names with brackets are cut at the first one, as the listing's form has it.
        EXPECT_TRUE(Has(Shown("docs") + "\\b [2\\"));
        EXPECT_TRUE(Has(Shown("docs") + "\\Old\\"));
        EXPECT_TRUE(Has("Z:\\"));
        for (const std::string& item : items)
            EXPECT_EQ(std::string::npos, item.find("..")) << item;
        Dialog()->CloseDialog(false);
    }
    // The last place adds nothing when it is known or gone.
    for (const char* recent : {"docs/Old/", "nowhere"}) {
        Remember(TEXT("RecentPathList"), nullptr, Wide(recent));
        OpenIn("docs");
        EXPECT_EQ(Shown("docs") + "\\", Items(IDC_PATH_LIST)[0]) << recent;
        Dialog()->CloseDialog(false);
    }
}

TEST_F(SearchPaths, AFolderThatIsNotThereLeavesItselfAlone) {
    OpenIn("nowhere");
    EXPECT_EQ(Shown("nowhere") + "\\", Text(IDC_PATH_LIST));
}

TEST_F(SearchPaths, WhatIsTypedStaysOnce) {
    OpenIn("docs");
    const std::size_t before = Items(IDC_PATH_LIST).size();
    const std::string longPath = "Z:\\" + std::string(300, 'x');
    for (const std::string& typed : {Shown("other"), std::string(), Shown("other"), longPath}) {
        Type(IDC_PATH_LIST, typed);
        Notify(IDC_PATH_LIST, CBN_KILLFOCUS);
        EXPECT_EQ(typed, Text(IDC_PATH_LIST));
    }
    EXPECT_EQ(before + 2, Items(IDC_PATH_LIST).size());
    EXPECT_EQ(longPath, Items(IDC_PATH_LIST).back());
}

TEST_F(SearchPaths, RelatedDocumentsAndBack) {
    Remember(TEXT("RecentFileList"), TEXT("File0"), Wide("docs/machine.hsb"));
    Remember(TEXT("RecentFileList"), TEXT("File1"), TEXT(""));
    Remember(TEXT("RecentFileList"), TEXT("File2"), Wide("docs/gone.hpa"));
    OpenIn("other");
    Press(IDC_LOOK_RELATED);
    const Names recent = {Shown("docs/machine.hsb"), Shown("docs/gone.hpa")};
    EXPECT_EQ(recent, Items(IDC_PATH_LIST));
    EXPECT_EQ(recent[0], Text(IDC_PATH_LIST));
    // What the box holds is rebuilt by a change of its kind only.
    Type(IDC_PATH_LIST, "kept");
    Press(IDC_LOOK_RELATED);
    EXPECT_EQ("kept", Text(IDC_PATH_LIST));
    Type(IDC_PATH_LIST, recent[0]);
    Press(IDC_LOOK_SUBFOLDERS);
    EXPECT_EQ(Shown("docs") + "\\", Text(IDC_PATH_LIST)) << "the file's folder";
    Type(IDC_PATH_LIST, "kept");
    Press(IDC_LOOK_FOLDER);
    EXPECT_EQ("kept", Text(IDC_PATH_LIST));
}

TEST_F(SearchPaths, BrowseForAFolder) {
    const struct {
        const char* name;
        std::string typed;
        std::string opensAt;
    } kRows[] = {
        {"a folder", "docs/", "docs"},
        {"a file", "docs/machine.hsb", "docs"},
        {"none", "docs/none", "docs"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        Open(eAccessShellWindow);
        PutLookIn(row.typed);
        desk_.ExpectFolder("Choose where to look; " + Shown(row.opensAt), Wide("other"));
        Press(IDC_BROWSE);
        EXPECT_EQ(Shown("other") + "\\", Text(IDC_PATH_LIST));
        desk_.ExpectFolder("", WText());
        Press(IDC_BROWSE);
        EXPECT_EQ(Shown("other") + "\\", Text(IDC_PATH_LIST)) << "cancelled";
        Dialog()->CloseDialog(false);
    }
}

TEST_F(SearchPaths, BrowseFromATextThatNamesNoFolder) {
    Open(eAccessShellWindow);
    Type(IDC_PATH_LIST, "none");
    desk_.ExpectFolder("; " + wtext::ToUtf8(CurrentWideFolder()), WText());
    Press(IDC_BROWSE);
}

// Folders that no search looks into can't be chosen.
TEST_F(SearchPaths, BrowseRefusesUnsearchedFolders) {
    Tree({"docs/OldVersions/", "docs/recycler/"});
    OpenIn("docs");
    for (const char* folder : {"docs/OldVersions", "docs/recycler"}) {
        desk_.ExpectFolder("Choose", Wide(folder));
        desk_.ExpectFolder("; again", WText());
        Press(IDC_BROWSE);
        EXPECT_EQ(Shown("docs") + "\\", Text(IDC_PATH_LIST));
    }
}

TEST_F(SearchPaths, BrowseForAFile) {
    OpenIn("docs");
    Press(IDC_LOOK_RELATED);
    Type(IDC_PATH_LIST, Shown("docs/machine.hsb"));
    for (int time = 0; time < 2; ++time) {
        desk_.ExpectFile("Choose where to look; Design documents|", Wide("docs/machine.hsb"));
        Press(IDC_BROWSE);
        EXPECT_EQ(Shown("docs/machine.hsb"), Text(IDC_PATH_LIST));
        EXPECT_TRUE(Has(Shown("docs/machine.hsb"))) << "once, however often it is chosen";
    }
    desk_.ExpectFile("", WText());
    EXPECT_FALSE(Dialog()->OnCommandBrowse());
}

}  // namespace
