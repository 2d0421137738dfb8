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
}

TEST(Libraries, Strings) {
    const HMODULE library = Load(BesideTheProgram(TEXT("SrRes.dll")));
    ASSERT_NE(nullptr, library);
    const auto load = [library](UINT id, GuardedBuffer& buffer, int cch) {
        return LoadStringW(library, id, buffer.data(), cch);
    };
    GuardedBuffer buffer(4);
    EXPECT_EQ(3, load(STR_YES_WORD, buffer, 4));
    EXPECT_EQ(TEXT("yes"), buffer.Text());
    EXPECT_EQ(2, load(STR_YES_WORD, buffer, 3));
    EXPECT_EQ(TEXT("ye"), buffer.Text()) << "cut";
    EXPECT_TRUE(buffer.IsGuardWhole());
    GuardedBuffer absent(4);
    EXPECT_EQ(0, load(1, absent, 4));
    KNOWN_GAP(eGap::windows, absent.Text().empty());
    LPCWSTR text = nullptr;
    EXPECT_EQ(3, LoadStringW(library, STR_YES_WORD, reinterpret_cast<LPWSTR>(&text), 0));
    EXPECT_EQ(TEXT("yes"), WTextView(text, 3)) << "the text in the library itself";
    FreeLibrary(library);
}

}  // namespace
