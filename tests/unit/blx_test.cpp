// The base libraries: registry calls, subkeys in natural order, the listing of a folder, places.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <vector>

#include "outside/blx_directory_search.h"
#include "outside/blx_registry.h"
#include "outside/blx_util.h"
#include "platform/host/host_files.h"
#include "platform/native_path.h"
#include "tests/contract/contract.h"
#include "tests/unit/document_support.h"

namespace {

// A type that this product never writes.
constexpr DWORD kTextWithVariables = 2;

const WCHAR* const kRoot = TEXT("Software\\Sr base library test");

class BlxRegistry : public ::testing::Test {
protected:
    BlxRegistry() {
        BLxPref_Reg::DeleteKeyAndDescendants(HKEY_CURRENT_USER, kRoot);
        EXPECT_EQ(0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, kRoot, &key_));
    }
    ~BlxRegistry() override {
        EXPECT_EQ(0u, BLxPref_Reg::CloseKey(key_));
        EXPECT_EQ(0u, BLxPref_Reg::DeleteKeyAndDescendants(HKEY_CURRENT_USER, kRoot));
    }
    void MakeKey(const std::string& name) {
        HKEY made = nullptr;
        ASSERT_EQ(0u, BLxPref_Reg::CreateKey(key_, wtext::FromUtf8(name).c_str(), &made)) << name;
        ASSERT_EQ(0u, BLxPref_Reg::CloseKey(made));
    }

    HKEY key_ = nullptr;
};

std::string Rest(BLxPrefKeyIterator_Reg& keys, DWORD cch = 260) {
    std::string names;
    std::vector<WCHAR> name(cch + 1, 'g');
    while (keys.NextKey(name.data(), cch))
        names += wtext::ToUtf8(name.data()) + " ";
    EXPECT_EQ('g', name[cch]) << "behind the buffer";
    EXPECT_EQ(cch > 0 ? 0 : 'g', name[0]) << "empty at the end";
    return names;
}

TEST_F(BlxRegistry, SubkeysComeInNaturalOrder) {
    const std::string sorted =
        "Alpha Node Node01 Node1 node2 Node3a Node3b Node9 Node10 Node12 Node12-1 Node12-9 "
        "Node12-10 Node99999999999999999999 Node100000000000000000000 Z ";
    std::vector<std::string> names;
    for (std::size_t at = 0; at < sorted.size();) {
        names.push_back(sorted.substr(at, sorted.find(' ', at) - at));
        at += names.back().size() + 1;
    }
    std::shuffle(names.begin(), names.end(), std::mt19937(5));
    for (const std::string& name : names)
        MakeKey(name);
    BLxPrefKeyIterator_Reg keys(key_);
    EXPECT_EQ(sorted, Rest(keys));
    EXPECT_EQ("", Rest(keys)) << "the end stays the end";
    // A name that doesn't fit with its terminator is passed over.
    struct Row {
        DWORD cch;
        const char* names;
    };
    const Row rows[] = {
        {6, "Alpha Node Node1 node2 Node9 Z "}, {5, "Node Z "}, {2, "Z "}, {1, ""}, {0, ""}};
    for (const Row& row : rows) {
        keys.Attach(key_);
        EXPECT_EQ(row.names, Rest(keys, row.cch)) << row.cch;
    }
}

TEST_F(BlxRegistry, NamesAreThoseOfTheFirstCall) {
    MakeKey("a");
    BLxPrefKeyIterator_Reg keys(key_);
    MakeKey("b");
    WCHAR name[8];
    ASSERT_TRUE(keys.NextKey(name, 8));
    MakeKey("c");
    EXPECT_EQ(0u, BLxPref_Reg::DeleteKey(key_, TEXT("b")));
    EXPECT_EQ("b ", Rest(keys));
    keys.Attach(key_);
    EXPECT_EQ("a c ", Rest(keys));
}

TEST_F(BlxRegistry, NumbersOfAnotherTypeOrSizeAreNone) {
    struct Row {
        const char* label;
        DWORD type;
        DWORD cb;
        bool isNumber;
    };
    const BYTE bytes[8] = {0x78, 0x56, 0x34, 0x12, 0, 0, 0, 0};
    const Row rows[] = {
        {"number", REG_DWORD, 4, true}, {"short", REG_DWORD, 3, false},
        {"long", REG_DWORD, 8, false},  {"bytes", REG_BINARY, 4, false},
        {"text", REG_SZ, 4, false},
    };
    for (const Row& row : rows) {
        ASSERT_EQ(0u, BLxPref_Reg::Write(key_, TEXT("n"), row.type, bytes, row.cb));
        LONG value = -7;
        EXPECT_EQ(row.isNumber, BLxPref_Reg::Read(key_, TEXT("n"), &value) == 0) << row.label;
        EXPECT_EQ(row.isNumber ? 0x12345678 : -7, value) << row.label;
    }
    LONG value = -7;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, BLxPref_Reg::Read(key_, TEXT("none"), &value));
    ASSERT_EQ(0u, BLxPref_Reg::Write(key_, nullptr, DWORD{0x80000001}));
    EXPECT_EQ(0u, BLxPref_Reg::Read(key_, nullptr, &value));
    EXPECT_EQ(0x80000001u, static_cast<DWORD>(value));
}

TEST_F(BlxRegistry, TextsAsOthersMayHaveStoredThem) {
    struct Row {
        const char* label;
        DWORD type;
        WText stored;
        DWORD cb;
        const char* text;  // null: none
    };
    const Row rows[] = {
        {"whole", REG_SZ, WText(TEXT("ab\0"), 3), 6, "ab"},
        {"no terminator", REG_SZ, TEXT("ab"), 4, "ab"},
        {"half a unit behind", REG_SZ, TEXT("abc"), 5, "ab"},
        {"a null within", REG_SZ, WText(TEXT("a\0b\0"), 4), 8, "a"},
        {"another type of text", kTextWithVariables, WText(TEXT("ab\0"), 3), 6, nullptr},
        {"a number", REG_DWORD, TEXT("ab"), 4, nullptr},
    };
    for (const Row& row : rows) {
        ASSERT_EQ(0u, BLxPref_Reg::Write(key_, TEXT("t"), row.type, row.stored.c_str(), row.cb));
        BLxWString text = TEXT("before");
        const BLxResult result = BLxPref_Reg::Read(key_, TEXT("t"), &text);
        EXPECT_EQ(row.text != nullptr, result == 0) << row.label;
        EXPECT_EQ(row.text != nullptr ? row.text : "before", wtext::ToUtf8(text)) << row.label;
    }
    BLxWString text = TEXT("before");
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, BLxPref_Reg::Read(key_, TEXT("none"), &text));
    EXPECT_EQ("before", wtext::ToUtf8(text));
    for (const std::size_t length : {0, 1, 127, 128, 259, 260, 20000}) {
        const WText written(length, 0x4E2D);
        ASSERT_EQ(0u, BLxPref_Reg::Write(key_, nullptr, written.c_str()));
        ASSERT_EQ(0u, BLxPref_Reg::Read(key_, nullptr, &text));
        EXPECT_EQ(written, WText(text.begin(), text.end())) << length;
    }
}

TEST_F(BlxRegistry, RawDataTellsTypeAndSizeEvenWhenItDoesNotFit) {
    const BYTE stored[5] = {1, 2, 3, 4, 5};
    ASSERT_EQ(0u, BLxPref_Reg::Write(key_, TEXT("d"), REG_BINARY, stored, 5));
    struct Row {
        DWORD cb;
        DWORD result;
    };
    for (const Row& row :
         {Row{0, ERROR_MORE_DATA}, Row{4, ERROR_MORE_DATA}, Row{5, 0}, Row{6, 0}}) {
        BYTE data[8] = {9, 9, 9, 9, 9, 9, 9, 9};
        DWORD type = 99;
        DWORD cb = row.cb;
        EXPECT_EQ(row.result, BLxPref_Reg::Read(key_, TEXT("d"), &type, data, &cb)) << row.cb;
        EXPECT_EQ(REG_BINARY, type);
        EXPECT_EQ(5u, cb);
        EXPECT_EQ(9, data[row.cb]) << "behind the buffer";
        if (row.result == 0) {
            EXPECT_TRUE(std::equal(stored, stored + 5, data));
        }
    }
    DWORD type = 99;
    DWORD cb = 0;
    EXPECT_EQ(0u, BLxPref_Reg::Read(key_, TEXT("d"), &type, nullptr, &cb));
    EXPECT_EQ(5u, cb);
}

TEST_F(BlxRegistry, KeysThatAreMissingOrHaveSubkeys) {
    HKEY opened = key_;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, BLxPref_Reg::OpenKey(key_, TEXT("none"), &opened));
    EXPECT_EQ(nullptr, opened);
    MakeKey("a\\b\\c");
    EXPECT_NE(0u, BLxPref_Reg::DeleteKey(key_, TEXT("a")));
    ASSERT_EQ(0u, BLxPref_Reg::OpenKey(key_, TEXT("a\\b\\c"), &opened));
    BLxPref_Reg::CloseKey(opened);
    EXPECT_EQ(0u, BLxPref_Reg::DeleteKeyAndDescendants(key_, TEXT("a")));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, BLxPref_Reg::OpenKey(key_, TEXT("a"), &opened));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, BLxPref_Reg::DeleteKey(key_, TEXT("a")));
}

TEST_F(BlxRegistry, PathsAndNames) {
    struct Row {
        const char* label;
        WText path;
        DWORD result;
        LPCWSTR found;  // opens afterwards; null for none
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {"case beyond ASCII", TEXT("\u00C4\u0434"), 0, TEXT("\u00E4\u0414")},
        {"doubled separator", TEXT("x\\\\y"), 0, TEXT("x\\y")},
        {"255 units", WText(255, 'n'), 0, nullptr},
        {"256 units", WText(256, 'm'), ERROR_INVALID_PARAMETER, nullptr, eGap::windows},
        {"separator in front", TEXT("\\lead"), ERROR_BAD_PATHNAME, nullptr},
        {"control character", TEXT("a\nb"), 0, nullptr, eGap::native},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        HKEY key = nullptr;
        const DWORD result = BLxPref_Reg::CreateKey(key_, row.path.c_str(), &key);
        KNOWN_GAP(row.gap, result == row.result) << result;
        if (key != nullptr) BLxPref_Reg::CloseKey(key);
        if (row.found == nullptr) continue;
        ASSERT_EQ(0u, BLxPref_Reg::OpenKey(key_, row.found, &key));
        BLxPref_Reg::CloseKey(key);
    }
}

TEST_F(BlxRegistry, DeletedKeysSayThatTheyAre) {
    MakeKey("d\\sub");
    HKEY opened[2] = {};
    HKEY other = nullptr;
    ASSERT_EQ(0u, BLxPref_Reg::OpenKey(key_, TEXT("d"), &opened[0]));
    ASSERT_EQ(0u, BLxPref_Reg::OpenKey(key_, TEXT("d\\sub"), &opened[1]));
    ASSERT_EQ(0u, BLxPref_Reg::DeleteKeyAndDescendants(key_, TEXT("D")));
    // A new key of the name is another one.
    MakeKey("d\\sub");
    for (const HKEY gone : opened) {
        LONG number = 0;
        EXPECT_EQ(ERROR_KEY_DELETED, BLxPref_Reg::Read(gone, TEXT("n"), &number));
        EXPECT_EQ(ERROR_KEY_DELETED, BLxPref_Reg::Write(gone, TEXT("n"), number));
        BLxPrefKeyIterator_Reg keys(gone);
        EXPECT_EQ("", Rest(keys));
        EXPECT_EQ(ERROR_KEY_DELETED, BLxPref_Reg::CreateKey(gone, TEXT("x"), &other));
        EXPECT_EQ(ERROR_KEY_DELETED, BLxPref_Reg::OpenKey(gone, TEXT("x"), &other));
        EXPECT_EQ(0u, BLxPref_Reg::CloseKey(gone));
    }
}

class BlxDirectorySearch : public ::testing::Test {
protected:
    BlxDirectorySearch() {
        std::filesystem::create_directories(folder_ / "full" / "sub");
        std::filesystem::create_directories(folder_ / "empty");
        for (const char* name : {"a.hpa", "b", "...x"})
            std::ofstream(folder_ / "full" / name);
    }

    WText Pattern(const char* name) const {
        const std::string path = (folder_ / name).string();
        return AbsoluteWidePath(NativePathFromLine(path)) + TEXT("\\*");
    }
    // The present entry and those behind it, folders with a slash; sorted.
    static std::string Rest(DirectorySearch& search, BLxWString entry) {
        std::vector<std::string> names;
        for (; !search.Done(); entry = search.Next()) {
            EXPECT_EQ(entry == TEXT(".") || entry == TEXT(".."), search.IsDot());
            names.push_back(wtext::ToUtf8(entry) + (search.IsDirectory() ? "/" : ""));
        }
        EXPECT_EQ(BLxWString(), entry);
        EXPECT_FALSE(search.IsDirectory() || search.IsDot() || search.Failed());
        EXPECT_EQ(BLxWString(), search.Next());
        EXPECT_TRUE(search.Done());
        std::sort(names.begin(), names.end());
        std::string all;
        for (const std::string& name : names)
            all += name + " ";
        return all;
    }

    const TempFolder place_;
    const std::filesystem::path folder_ = place_.Path();
};

TEST_F(BlxDirectorySearch, EntriesAndDots) {
    DirectorySearch search(Pattern("full").c_str(), false);
    EXPECT_TRUE(search.Done()) << "before the start";
    EXPECT_EQ("...x ../ ./ a.hpa b sub/ ", Rest(search, search.Start()));
    EXPECT_EQ("...x ../ ./ a.hpa b sub/ ", Rest(search, search.Start())) << "starts afresh";
    search.SetSkipDots(true);
    EXPECT_EQ("...x a.hpa b sub/ ", Rest(search, search.Start()));
    DirectorySearch empty(Pattern("empty").c_str(), false);
    // From the next entry on: the first one is a dot entry here.
    const BLxWString first = empty.Start();
    EXPECT_TRUE(empty.IsDot());
    empty.SetSkipDots(true);
    EXPECT_EQ(wtext::ToUtf8(first) + "/ ", Rest(empty, first));
}

TEST_F(BlxDirectorySearch, WhatCannotBeListedIsDoneAtOnce) {
    struct Row {
        const char* label;
        WText pattern;
        bool recursive;
    };
    const Row rows[] = {
        {"missing", Pattern("none"), false},
        {"a file", Pattern("full/b"), false},
        {"no pattern", TEXT(""), false},
    };
    for (const Row& row : rows) {
        DirectorySearch search(row.pattern.c_str(), row.recursive);
        EXPECT_EQ(BLxWString(), search.Start()) << row.label;
        EXPECT_TRUE(search.Done()) << row.label;
        EXPECT_EQ("", Rest(search, search.Next())) << row.label;
    }
}

TEST(BlxUtil, TheResourceLibraryLiesBesideTheLibraries) {
    const BLxWString path = BLxUtil::GetLPResourceDLLPath(TEXT("SrRes.dll"));
    EXPECT_TRUE(PathFileExistsW(path.c_str())) << wtext::ToUtf8(path);
    ASSERT_LT(10u, path.size());
    EXPECT_EQ(BLxWString(TEXT("\\SrRes.dll")), path.substr(path.size() - 10));
    EXPECT_EQ(BLxWString(TEXT(":\\")), path.substr(1, 2)) << "a whole path";
}

}  // namespace
