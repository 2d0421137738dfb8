// A combo box filled with the subfolders of a folder and the drives.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/native_path.h"
#include "tests/contract/dialog_support.h"

namespace {

constexpr int kBox = 11;
constexpr int kPath = 15;
constexpr UINT kFoldersAndDrives = DDL_DIRECTORY | DDL_DRIVES | DDL_EXCLUSIVE;

class DirectoryLists : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        start_ = CurrentWideFolder();
        top_ = start_ + TEXT("\\directory_list");
        std::filesystem::remove_all("directory_list");
        for (const char* name : {"b", "C", "a x", ".hidden", "b/within"})
            std::filesystem::create_directories(std::string("directory_list/") + name);
        std::ofstream("directory_list/file.txt") << "x";
        Show(kLists);
        SendText(kBox, CB_ADDSTRING, 0, TEXT("earlier"));
    }
    void TearDown() override {
        DialogTest::TearDown();
        SetCurrentDirectoryW(start_.c_str());
        std::filesystem::remove_all("directory_list");
    }
    bool Fill(const WText& path) {
        WCHAR asked[1024] = {};
        path.copy(asked, 1023);
        const bool filled =
            DlgDirListComboBoxW(dialog_, asked, kBox, kPath, kFoldersAndDrives) != FALSE;
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
        WText path;
        const char* entries;
        WText folder;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {top_, "[..][a x][b][C][-z-]", top_, eGap::windows},
        {top_ + TEXT("\\b\\"), "[..][within][-z-]", top_ + TEXT("\\b")},
        {TEXT(""), "[..][within][-z-]", top_ + TEXT("\\b")},
        {TEXT(".."), "[..][a x][b][C][-z-]", top_, eGap::windows},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.path));
        EXPECT_TRUE(Fill(row.path));
        const std::string entries = Entries();
        KNOWN_GAP(row.gap, entries == row.entries) << entries;
        EXPECT_EQ(row.folder, CurrentWideFolder());
        KNOWN_GAP(row.path.empty() ? eGap::windows : eGap::none,
                  left_ == (row.path.empty() ? TEXT("") : TEXT("*")));
        KNOWN_GAP(eGap::windows, TextOf(kPath) == row.folder);
    }
}

TEST_F(DirectoryLists, Failures) {
    for (const WText& path : {top_ + TEXT("\\none"), top_ + TEXT("\\file.txt")}) {
        SetCurrentDirectoryW(start_.c_str());
        SendText(kBox, CB_ADDSTRING, 0, TEXT("earlier"));
        const bool filled = Fill(path);
        KNOWN_GAP(eGap::windows, !filled && Entries().empty() && CurrentWideFolder() == start_)
            << Entries();
    }
}

}  // namespace
