// Paths, attributes, folders and modules. The tree is made by files_tree.cmake; the test runs in
// the folder that holds it.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <vector>

#include "platform/files/directory_listing.h"
#include "platform/native_path.h"
#include "tests/contract/contract.h"

namespace {

// The tree is the current folder while a test runs.
class Files : public testing::Test {
protected:
    void SetUp() override {
        start_ = CurrentWideFolder();
        ASSERT_TRUE(SetCurrentDirectoryW(TEXT("files_tree")));
        tree_ = start_ + TEXT("\\files_tree");
    }
    void TearDown() override { ASSERT_TRUE(SetCurrentDirectoryW(start_.c_str())); }

    WText start_;
    WText tree_;
};

TEST_F(Files, WhatIsThere) {
    struct Row {
        LPCWSTR path;
        bool exists;
        bool isFolder;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {TEXT("plain.txt"), true, false},
        {TEXT("PLAIN.txt"), true, false, eGap::native},
        {TEXT("empty\\"), true, true},
        {TEXT(".."), true, true},
        {TEXT("links\\to_folder"), true, true},
        {TEXT("z:/"), true, true},
        {TEXT("broken\\to_nothing"), false, false},
        {TEXT("plain.txt\\"), false, false},
        {TEXT(""), false, false},
    };
    for (const Row& row : rows) {
        KNOWN_GAP(row.gap, row.exists == (PathFileExistsW(row.path) != FALSE) &&
                               row.isFolder == (PathIsDirectoryW(row.path) != FALSE))
            << wtext::ToUtf8(row.path);
    }
}

TEST_F(Files, SetCurrentDirectory) {
    struct Row {
        LPCWSTR path;
        DWORD error;     // 0: succeeds
        LPCWSTR behind;  // what then stands behind the tree's path
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {TEXT("empty"), 0, TEXT("\\empty")},
        {TEXT("empty\\"), 0, TEXT("\\empty")},
        {TEXT("links/folder"), 0, TEXT("\\links\\folder")},
        {TEXT("links\\to_folder"), 0, TEXT("\\links\\to_folder"), eGap::native},
        {TEXT("none"), ERROR_FILE_NOT_FOUND, TEXT("")},
        {TEXT("none\\none"), ERROR_PATH_NOT_FOUND, TEXT("")},
        {TEXT("plain.txt"), ERROR_DIRECTORY, TEXT("")},
        {TEXT("Q:\\none"), ERROR_PATH_NOT_FOUND, TEXT(""), eGap::windows},
        {TEXT(""), ERROR_INVALID_NAME, TEXT("")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path != nullptr ? wtext::ToUtf8(row.path) : "null");
        ASSERT_TRUE(SetCurrentDirectoryW(tree_.c_str()));
        SetLastError(kPoisonError);
        EXPECT_EQ(row.error == 0, SetCurrentDirectoryW(row.path) == TRUE);
        const DWORD error = GetLastError();
        KNOWN_GAP(row.gap, error == (row.error == 0 ? kPoisonError : row.error) &&
                               CurrentWideFolder() == tree_ + row.behind)
            << "error " << error << ", " << wtext::ToUtf8(CurrentWideFolder());
    }
}

TEST_F(Files, FullPath) {
    struct Row {
        LPCWSTR path;
        LPCWSTR full;  // "*" stands for the tree
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {TEXT("a"), TEXT("*\\a")},
        {TEXT("a\\"), TEXT("*\\a\\")},
        {TEXT("a\\..\\b"), TEXT("*\\b")},
        {TEXT("./a//b"), TEXT("*\\a\\b")},
        {TEXT("Z:a"), TEXT("*\\a")},
        {TEXT("Z:\\..\\..\\x"), TEXT("Z:\\x")},
        {TEXT("C:\\x\\.\\y"), TEXT("C:\\x\\y")},
        {TEXT("C:x"), TEXT("C:\\x")},
        {TEXT("a."), TEXT("*\\a"), eGap::native},
        {TEXT("\\\\server\\share\\x"), TEXT("\\\\server\\share\\x"), eGap::native},
        {TEXT(""), TEXT("")},
    };
    for (const Row& row : rows) {
        WText wanted = row.full;
        if (!wanted.empty() && wanted[0] == '*') wanted = tree_ + wanted.substr(1);
        const WText full = FullWidePath(row.path);
        KNOWN_GAP(row.gap, full == wanted)
            << wtext::ToUtf8(row.path) << ": " << wtext::ToUtf8(full);
    }
}

TEST(Paths, NameAndExtension) {
    struct Row {
        LPCWSTR path;
        int nameAt;
        int extensionAt;
    };
    const Row rows[] = {
        {TEXT(""), 0, 0},         {TEXT("a.txt"), 0, 1},      {TEXT("Z:\\a\\b.hpa"), 5, 6},
        {TEXT("Z:/a.b/c"), 7, 4}, {TEXT("Z:\\a.b\\c"), 7, 8}, {TEXT("Z:a"), 2, 3},
        {TEXT(".a"), 0, 0},       {TEXT("a.b c"), 0, 5},      {TEXT("\u5C3A.\u5BF8"), 0, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.path));
        EXPECT_EQ(row.nameAt, PathFindFileNameW(row.path) - row.path);
        EXPECT_EQ(row.extensionAt, PathFindExtensionW(row.path) - row.path);
        EXPECT_EQ(row.nameAt, FileNameIn(row.path).data() - row.path);
        EXPECT_EQ(row.extensionAt, ExtensionIn(row.path).data() - row.path);
    }
}

TEST(Paths, RemoveFileSpec) {
    struct Row {
        LPCWSTR path;
        LPCWSTR left;
    };
    const Row rows[] = {
        {TEXT(""), TEXT("")},          {TEXT("a"), TEXT("")},
        {TEXT("a\\b"), TEXT("a")},     {TEXT("a\\b\\"), TEXT("a\\b")},
        {TEXT("a/b"), TEXT("")},       {TEXT("\\\\s\\b"), TEXT("\\\\s")},
        {TEXT("Z:\\a"), TEXT("Z:\\")}, {TEXT("Z:\\a\\b"), TEXT("Z:\\a")},
        {TEXT("Z:\\"), TEXT("Z:\\")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.path));
        WText path = row.path;
        EXPECT_EQ(path != row.left, PathRemoveFileSpecW(path.data()) != FALSE);
        EXPECT_EQ(WText(row.left), path.c_str());
    }
}

TEST(Modules, FileName) {
    WText path(1024, 0);
    path.resize(GetModuleFileNameW(nullptr, path.data(), 1024));
    EXPECT_EQ(TEXT("Z:\\"), path.substr(0, 3));
    const std::string name = wtext::ToUtf8(PathFindFileNameW(path.c_str()));
    EXPECT_EQ(0u, name.find("files_contract_test"));

    GuardedBuffer small(path.size());
    const auto cch = static_cast<DWORD>(path.size());
    EXPECT_EQ(cch, GetModuleFileNameW(nullptr, small.data(), cch)) << "cut";
    EXPECT_TRUE(small.IsGuardWhole());
    KNOWN_GAP(eGap::windows, small.Text() == path.substr(0, cch - 1)) << "with a terminator";
}

// An entry as text: the name, and behind it d for a folder, l for a link to one, . for a dot name.
using Names = std::set<std::string>;

// False when the folder can't be opened; the names must not repeat.
bool List(DirectoryListing& listing, const WCHAR* pattern, Names& names) {
    names.clear();
    if (!listing.Open(pattern)) return false;
    DirectoryListing::Entry entry{};
    while (listing.Next(entry)) {
        EXPECT_EQ(0, entry.name.data()[entry.name.size()]);
        const std::string name = wtext::ToUtf8(entry.name) + " " + (entry.isDirectory ? "d" : "") +
                                 (entry.isFolderLink ? "l" : "") + (entry.isDot ? "." : "");
        EXPECT_TRUE(names.insert(name).second) << name;
    }
    EXPECT_FALSE(listing.Failed());
    EXPECT_FALSE(listing.Next(entry));
    return true;
}

const Names kDots = {". d.", ".. d."};

Names WithDots(Names names) {
    names.insert(kDots.begin(), kDots.end());
    return names;
}

std::string Repeat(const char* text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST_F(Files, Listings) {
    Names many;
    for (int i = 1; i <= 3000; ++i)
        many.insert("entry_with_a_name_of_middling_length_" + std::to_string(i) + " ");
    struct Row {
        LPCWSTR pattern;
        Names names;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {TEXT("empty\\*"), kDots},
        {TEXT("many\\*"), WithDots(many)},
        {TEXT("links\\*"),
         WithDots({"folder d", "to_folder dl", "to_parent dl", "file.txt ", "to_file "})},
        {TEXT("broken\\*"), WithDots({"to_nothing "}), eGap::windows},
        {TEXT("links\\to_parent\\links\\folder\\*"), kDots},
        {TEXT("long\\*"), WithDots({Repeat("a", 255) + " ", Repeat("尺", 85) + " "})},
        {TEXT("scripts\\*"), WithDots({"Größe ", "Размер ", "μέγεθος ", "尺寸 ", "サイズ ", "크기 ",
                                       "גודל ", "حجم ", "ขนาด ", "आकार ", "📐 ", "e\u0301 ", "a b ",
                                       "a;b ", "100% ", "#1 ", "a. ", "~x "})},
        {TEXT("prefix\\abc*"), {"abc ", "ABCD.txt ", "abcdef "}},
        {TEXT("prefix\\\u00FC*"), {"Über.txt ", "überall "}},
        {TEXT("prefix\\*b*"),
         {"abc ", "ABCD.txt ", "abcdef ", "ab ", "xabc ", "Über.txt ", "überall ", "uber "},
         eGap::native},
    };
    DirectoryListing listing;  // one object for all, as the walk uses it
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.pattern));
        Names names;
        const bool opened = List(listing, row.pattern, names);
        KNOWN_GAP(row.gap, opened && names == row.names) << opened << testing::PrintToString(names);
    }
}

TEST_F(Files, ListingsThatFail) {
    struct Row {
        LPCWSTR pattern;
        DWORD error;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {TEXT("none\\*"), ERROR_PATH_NOT_FOUND},
        {TEXT("plain.txt\\*"), ERROR_DIRECTORY, eGap::windows},
        {TEXT("broken\\to_nothing\\*"), ERROR_PATH_NOT_FOUND, eGap::windows},
        {TEXT("Q:\\*"), ERROR_PATH_NOT_FOUND},
        {TEXT("empty\\abc*"), ERROR_FILE_NOT_FOUND},
    };
    DirectoryListing listing;
    DirectoryListing::Entry entry{};
    EXPECT_FALSE(listing.Next(entry));
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.pattern));
        ASSERT_TRUE(listing.Open(TEXT("many\\*")));
        ASSERT_TRUE(listing.Next(entry));
        SetLastError(kPoisonError);
        EXPECT_FALSE(listing.Open(row.pattern));
        const DWORD error = GetLastError();
        KNOWN_GAP(row.gap, error == row.error) << error;
        EXPECT_FALSE(listing.Next(entry));
        EXPECT_FALSE(listing.Failed());
    }
}

TEST_F(Files, NativePaths) {
    const WText plain = tree_ + TEXT("\\plain.txt");
    EXPECT_EQ(plain, AbsoluteWidePath(NativePathFromWide(TEXT("plain.txt"))));
    EXPECT_EQ(plain, AbsoluteWidePath(NativePathFromWide(plain)));
    EXPECT_TRUE(AbsoluteWidePath(NativePath()).empty());
    EXPECT_EQ(WText(TEXT("Gr\u00F6\u00DFe")), WideNameFromTyped("Größe"));
    EXPECT_EQ("plain.txt", DisplayPath(TEXT("plain.txt")));
    EXPECT_EQ("Größe", DisplayPath(TEXT("Gr\u00F6\u00DFe")));

    std::uint64_t bytes = 0;
    EXPECT_TRUE(FileSize(TEXT("plain.txt"), bytes));
    EXPECT_EQ(11u, bytes);
    EXPECT_TRUE(FileSize(TEXT("links\\to_file"), bytes));
    EXPECT_EQ(1u, bytes);
    for (const LPCWSTR none :
         {TEXT("none"), TEXT("broken\\to_nothing"), TEXT("links\\folder"), TEXT("")}) {
        EXPECT_FALSE(FileSize(none, bytes)) << wtext::ToUtf8(none);
        EXPECT_EQ(0u, bytes);
    }
}

}  // namespace
