// A combo box filled with the subfolders of a folder and the drives.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/contract/dialog_support.h"

namespace {

constexpr int kBox = 10;
constexpr int kPath = 11;
constexpr UINT kFoldersAndDrives = DDL_DIRECTORY | DDL_DRIVES | DDL_EXCLUSIVE;

WText CurrentFolder() {
    WCHAR path[1024] = {};
    GetCurrentDirectoryW(1024, path);
    return path;
}

class DirectoryLists : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        start_ = CurrentFolder();
        top_ = start_ + TEXT("\\directory_list");
        std::filesystem::remove_all("directory_list");
        for (const char* name : {"b", "C", "a x", ".hidden", "b/within"})
            std::filesystem::create_directories(std::string("directory_list/") + name);
        std::ofstream("directory_list/file.txt") << "x";
        Show(TemplateBuilder()
                 .Add(TEXT("ComboBox"), TEXT(""), kTab | CBS_DROPDOWN, kBox)
                 .Add(TEXT("Static"), TEXT("before"), kShown, kPath));
        SendText(kBox, CB_ADDSTRING, 0, TEXT("earlier"));
    }
    void TearDown() override {
        DialogTest::TearDown();
        SetCurrentDirectoryW(start_.c_str());
        std::filesystem::remove_all("directory_list");
    }
    bool Fill(const WText& path, UINT types = kFoldersAndDrives) {
        WCHAR asked[1024] = {};
        path.copy(asked, 1023);
        const bool filled = DlgDirListComboBoxW(dialog_, asked, kBox, kPath, types) != FALSE;
        left_ = asked;
        return filled;
    }
    // The entries up to the drives, which differ from machine to machine.
    std::string Entries() const {
        std::string entries;
        const auto count = static_cast<WPARAM>(Send(kBox, CB_GETCOUNT));
        for (WPARAM i = 0; i < count; ++i) {
            WCHAR text[300] = {};
            Send(kBox, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
            const std::string entry = wtext::ToUtf8(text);
            if (entry.rfind("[-", 0) != 0 || entry == "[-z-]") entries += entry;
        }
        return entries;
    }

    WText start_;
    WText top_;
    WText left_;
};

TEST_F(DirectoryLists, FoldersAndDrives) {
    struct Row {
        const char* label;
        WText path;
        const char* entries;
        WText folder;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {"a folder", top_, "[..][a x][b][C][-z-]", top_, eGap::windows},
        {"with a backslash", top_ + TEXT("\\b\\"), "[..][within][-z-]", top_ + TEXT("\\b")},
        {"relative", TEXT("within"), "[..][-z-]", top_ + TEXT("\\b\\within")},
        {"none: where one is", TEXT(""), "[..][-z-]", top_ + TEXT("\\b\\within")},
        {"above", TEXT(".."), "[..][within][-z-]", top_ + TEXT("\\b")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_TRUE(Fill(row.path));
        const std::string entries = Entries();
        KNOWN_GAP(row.gap, entries == row.entries) << entries;
        EXPECT_EQ(row.folder, CurrentFolder());
        KNOWN_GAP(row.path.empty() ? eGap::windows : eGap::none,
                  left_ == (row.path.empty() ? TEXT("") : TEXT("*")));
        KNOWN_GAP(eGap::windows, TextOf(kPath) == row.folder);
    }
}

TEST_F(DirectoryLists, Root) {
    EXPECT_TRUE(Fill(TEXT("Z:\\")));
    const std::string entries = Entries();
    EXPECT_EQ(std::string::npos, entries.find("[..]"));
    EXPECT_NE(std::string::npos, entries.find("[usr]"));
    EXPECT_NE(std::string::npos, entries.find("[-z-]"));
}

// The box may be the one that shows the path, too.
TEST_F(DirectoryLists, PathInTheBoxItself) {
    WCHAR asked[1024] = {};
    top_.copy(asked, 1023);
    EXPECT_TRUE(DlgDirListComboBoxW(dialog_, asked, kBox, kBox, kFoldersAndDrives));
    EXPECT_NE(0, Send(kBox, CB_GETCOUNT));
    WCHAR text[1024] = {};
    GetDlgItemTextW(dialog_, kBox, text, 1024);
    KNOWN_GAP(eGap::windows, top_ == text);
    EXPECT_EQ(top_.size(), WTextView(text).size());
}

TEST_F(DirectoryLists, Failures) {
    struct Row {
        const char* label;
        WText path;
    };
    const Row rows[] = {
        {"missing", top_ + TEXT("\\none")},
        {"missing above", top_ + TEXT("\\none\\deeper")},
        {"a file", top_ + TEXT("\\file.txt")},
        {"another drive", TEXT("Q:\\x")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        SetCurrentDirectoryW(start_.c_str());
        SendText(kBox, CB_ADDSTRING, 0, TEXT("earlier"));
        const bool filled = Fill(row.path);
        const std::string entries = Entries();
        KNOWN_GAP(eGap::windows, !filled && entries.empty() && CurrentFolder() == start_)
            << entries;
    }
    SetCurrentDirectoryW(start_.c_str());
    KNOWN_GAP(eGap::windows, !DlgDirListComboBoxW(dialog_, top_.data(), 99, 0, kFoldersAndDrives));
    KNOWN_GAP(eGap::native, Fill(top_, DDL_DIRECTORY));
}

}  // namespace
