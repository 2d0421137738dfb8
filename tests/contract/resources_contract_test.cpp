// The resource library beside the test program and its strings.
#include <gtest/gtest.h>

#include "resource/string_ids.h"
#include "tests/contract/contract.h"

namespace {

WText BesideTheProgram(LPCWSTR name) {
    WCHAR path[1024];
    GetModuleFileNameW(nullptr, path, 1024);
    *PathFindFileNameW(path) = 0;
    return WText(path) + name;
}

HMODULE Load(const WText& path) {
    return LoadLibraryExW(path.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
}

TEST(Libraries, LoadAndFree) {
    const WText path = BesideTheProgram(TEXT("SrRes.dll"));
    SetLastError(kPoisonError);
    const HMODULE first = Load(path);
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(kPoisonError, GetLastError());
    EXPECT_EQ(first, Load(path));
    WCHAR text[8];
    EXPECT_TRUE(FreeLibrary(first));
    EXPECT_EQ(3, LoadStringW(first, STR_YES_WORD, text, 8));
    EXPECT_TRUE(FreeLibrary(first));
    EXPECT_EQ(0, LoadStringW(first, STR_YES_WORD, text, 8));
    EXPECT_FALSE(FreeLibrary(first));
}

TEST(Libraries, RefusedFiles) {
    struct Row {
        const char* label;
        WText path;
        DWORD error;
    };
    const Row rows[] = {
        {"missing file", BesideTheProgram(TEXT("none.dll")), ERROR_MOD_NOT_FOUND},
        {"no image", BesideTheProgram(TEXT("..\\CMakeCache.txt")), ERROR_BAD_EXE_FORMAT},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        SetLastError(kPoisonError);
        EXPECT_EQ(nullptr, Load(row.path));
        EXPECT_EQ(row.error, GetLastError());
    }
    const HMODULE withCode =
        LoadLibraryExW(BesideTheProgram(TEXT("SrRes.dll")).c_str(), nullptr, 0);
    KNOWN_GAP(eGap::native, withCode != nullptr);
    if (withCode != nullptr) FreeLibrary(withCode);
    EXPECT_FALSE(FreeLibrary(nullptr));
}

class Strings : public testing::Test {
protected:
    void SetUp() override {
        library_ = Load(BesideTheProgram(TEXT("SrRes.dll")));
        ASSERT_NE(nullptr, library_);
    }
    void TearDown() override { FreeLibrary(library_); }
    HMODULE library_ = nullptr;
};

TEST_F(Strings, BufferSizes) {
    struct Row {
        const char* label;
        UINT id;
        int cch;
        int result;
        LPCWSTR text;
        DWORD error = kPoisonError;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {"exact", STR_YES_WORD, 4, 3, TEXT("yes")},
        {"first of its block", 21696 + 4, 64, 6, TEXT("Folder")},
        {"absent block", 1, 64, 0, TEXT(""), ERROR_RESOURCE_NAME_NOT_FOUND, eGap::windows},
        {"a number's low 16 bits count", 0x10000 + STR_YES_WORD, 64, 3, TEXT("yes")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        GuardedBuffer buffer(static_cast<std::size_t>(row.cch));
        SetLastError(kPoisonError);
        const int result = LoadStringW(library_, row.id, buffer.data(), row.cch);
        const DWORD error = GetLastError();
        EXPECT_TRUE(buffer.IsGuardWhole());
        const bool written = !buffer.IsUntouched() && buffer.Text() == row.text;
        KNOWN_GAP(row.gap, result == row.result && error == row.error && written)
            << result << ", error " << error << ", text " << written;
    }
}

}  // namespace
