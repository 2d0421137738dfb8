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

WText CurrentFolder() {
    WText path(1024, 0);
    path.resize(GetCurrentDirectoryW(1024, path.data()));
    return path;
}

// The tree is the current folder while a test runs.
class Files : public testing::Test {
protected:
    void SetUp() override {
        start_ = CurrentFolder();
        ASSERT_TRUE(SetCurrentDirectoryW(TEXT("files_tree")));
        tree_ = start_ + TEXT("\\files_tree");
    }
    void TearDown() override { ASSERT_TRUE(SetCurrentDirectoryW(start_.c_str())); }

    WText start_;
    WText tree_;
};

TEST_F(Files, Attributes) {
    struct Row {
        LPCWSTR path;
        DWORD attributes;  // 0: fails
        DWORD error;
        eGap gap = eGap::none;
    };
    constexpr DWORD kFolder = FILE_ATTRIBUTE_DIRECTORY;
    const Row rows[] = {
        {TEXT("plain.txt"), FILE_ATTRIBUTE_ARCHIVE, 0},
        {TEXT("PLAIN.txt"), FILE_ATTRIBUTE_ARCHIVE, 0, eGap::native},
        {TEXT(".dotted"), FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN, 0},
        {TEXT("sealed.txt"), FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_READONLY, 0},
        {TEXT("empty"), kFolder, 0},
        {TEXT("empty\\"), kFolder, 0},
        {TEXT("empty/"), kFolder, 0},
        {TEXT("."), kFolder, 0},
        {TEXT(".."), kFolder, 0},
        {TEXT("links\\to_folder"), kFolder | FILE_ATTRIBUTE_REPARSE_POINT, 0},
        {TEXT("links\\to_folder\\.."), kFolder, 0},
        {TEXT("links\\to_file"), FILE_ATTRIBUTE_ARCHIVE, 0},
        {TEXT("Z:\\"), kFolder, 0, eGap::windows},
        {TEXT("z:/"), kFolder, 0, eGap::windows},
        {TEXT("broken\\to_nothing"), 0, ERROR_FILE_NOT_FOUND},
        {TEXT("none"), 0, ERROR_FILE_NOT_FOUND},
        {TEXT("none\\none"), 0, ERROR_PATH_NOT_FOUND},
        {TEXT("plain.txt\\none"), 0, ERROR_PATH_NOT_FOUND},
        {TEXT("plain.txt\\"), 0, ERROR_PATH_NOT_FOUND},
        {TEXT("Q:\\none"), 0, ERROR_PATH_NOT_FOUND, eGap::windows},
        {TEXT(""), 0, ERROR_PATH_NOT_FOUND},
        {nullptr, 0, ERROR_PATH_NOT_FOUND},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path != nullptr ? wtext::ToUtf8(row.path) : "null");
        SetLastError(kPoisonError);
        const DWORD got = GetFileAttributesW(row.path);
        const DWORD wanted = row.attributes != 0 ? row.attributes : INVALID_FILE_ATTRIBUTES;
        const DWORD error = row.attributes != 0 ? kPoisonError : row.error;
        KNOWN_GAP(row.gap, got == wanted && GetLastError() == error)
            << std::hex << got << std::dec << ", error " << GetLastError();
        const bool exists = got != INVALID_FILE_ATTRIBUTES;
        EXPECT_EQ(exists, PathFileExistsW(row.path) == TRUE);
        EXPECT_EQ(exists ? wanted & kFolder : 0, static_cast<DWORD>(PathIsDirectoryW(row.path)));
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
        {TEXT("links\\.\\folder\\..\\folder"), 0, TEXT("\\links\\folder")},
        {TEXT("."), 0, TEXT("")},
        {TEXT("links\\to_folder"), 0, TEXT("\\links\\to_folder"), eGap::native},
        {TEXT("none"), ERROR_FILE_NOT_FOUND, TEXT("")},
        {TEXT("none\\none"), ERROR_PATH_NOT_FOUND, TEXT("")},
        {TEXT("plain.txt"), ERROR_DIRECTORY, TEXT("")},
        {TEXT("Q:\\none"), ERROR_PATH_NOT_FOUND, TEXT(""), eGap::windows},
        {TEXT(""), ERROR_INVALID_NAME, TEXT("")},
        {nullptr, ERROR_INVALID_NAME, TEXT("")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path != nullptr ? wtext::ToUtf8(row.path) : "null");
        ASSERT_TRUE(SetCurrentDirectoryW(tree_.c_str()));
        SetLastError(kPoisonError);
        EXPECT_EQ(row.error == 0, SetCurrentDirectoryW(row.path) == TRUE);
        const DWORD error = GetLastError();
        KNOWN_GAP(row.gap, error == (row.error == 0 ? kPoisonError : row.error) &&
                               CurrentFolder() == tree_ + row.behind)
            << "error " << error << ", " << wtext::ToUtf8(CurrentFolder());
    }
}

// What the calls with a buffer of their caller have in common: `call` gets the size and the buffer.
template <typename Call>
void CheckMeasuringCall(const WText& wanted, Call call) {
    const auto units = static_cast<DWORD>(wanted.size());
    for (const DWORD cch : {DWORD{0}, units, units + 1, units + 2}) {
        SCOPED_TRACE(cch);
        GuardedBuffer buffer(cch);
        SetLastError(kPoisonError);
        const DWORD got = call(cch, buffer.data());
        EXPECT_EQ(kPoisonError, GetLastError());
        EXPECT_TRUE(buffer.IsGuardWhole());
        if (cch > units) {
            EXPECT_EQ(units, got);
            EXPECT_EQ(wanted, buffer.Text());
        } else {
            EXPECT_EQ(units + 1, got);
            EXPECT_TRUE(buffer.IsUntouched());
        }
    }
    EXPECT_EQ(units + 1, call(0, nullptr));
}

TEST_F(Files, BufferSizes) {
    CheckMeasuringCall(tree_,
                       [](DWORD cch, LPWSTR buffer) { return GetCurrentDirectoryW(cch, buffer); });
    CheckMeasuringCall(tree_ + TEXT("\\a"), [](DWORD cch, LPWSTR buffer) {
        return GetFullPathNameW(TEXT("a"), cch, buffer, nullptr);
    });
    ASSERT_TRUE(SetCurrentDirectoryW(TEXT("Z:\\")));
    CheckMeasuringCall(TEXT("Z:\\"),
                       [](DWORD cch, LPWSTR buffer) { return GetCurrentDirectoryW(cch, buffer); });
}

TEST_F(Files, FullPath) {
    struct Row {
        LPCWSTR path;
        LPCWSTR full;  // "*" stands for the tree; null: fails
        LPCWSTR part;  // the last component; null: none
        DWORD error = kPoisonError;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {TEXT("a"), TEXT("*\\a"), TEXT("a")},
        {TEXT("a\\"), TEXT("*\\a\\"), nullptr},
        {TEXT("."), TEXT("*"), TEXT("files_tree")},
        {TEXT(".\\"), TEXT("*\\"), nullptr},
        {TEXT("a\\..\\b"), TEXT("*\\b"), TEXT("b")},
        {TEXT("a\\.."), TEXT("*"), TEXT("files_tree")},
        {TEXT("./a//b"), TEXT("*\\a\\b"), TEXT("b")},
        {TEXT("\\"), TEXT("Z:\\"), nullptr},
        {TEXT("\\x"), TEXT("Z:\\x"), TEXT("x")},
        {TEXT("/x/y"), TEXT("Z:\\x\\y"), TEXT("y")},
        {TEXT("Z:a"), TEXT("*\\a"), TEXT("a")},
        {TEXT("z:\\a"), TEXT("z:\\a"), TEXT("a")},
        {TEXT("Z:\\..\\..\\x"), TEXT("Z:\\x"), TEXT("x")},
        {TEXT("Z:\\x\\.."), TEXT("Z:\\"), nullptr},
        {TEXT("C:\\x\\.\\y"), TEXT("C:\\x\\y"), TEXT("y")},
        {TEXT("C:x"), TEXT("C:\\x"), TEXT("x")},
        {TEXT("a b"), TEXT("*\\a b"), TEXT("a b")},
        {TEXT("..."), TEXT("*\\"), nullptr, kPoisonError, eGap::native},
        {TEXT("a."), TEXT("*\\a"), TEXT("a"), kPoisonError, eGap::native},
        {TEXT("a "), TEXT("*\\a"), TEXT("a"), kPoisonError, eGap::native},
        {TEXT("nul"), TEXT("\\\\.\\nul"), nullptr, kPoisonError, eGap::native},
        {TEXT("\\\\server\\share\\x"), TEXT("\\\\server\\share\\x"), TEXT("x"), kPoisonError,
         eGap::native},
        {TEXT(""), nullptr, nullptr, ERROR_INVALID_NAME, eGap::windows},
        {nullptr, nullptr, nullptr, ERROR_INVALID_NAME, eGap::windows},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path != nullptr ? wtext::ToUtf8(row.path) : "null");
        WText wanted = row.full != nullptr ? row.full : TEXT("");
        if (!wanted.empty() && wanted[0] == '*') wanted = tree_ + wanted.substr(1);
        GuardedBuffer buffer(512);
        LPWSTR part = Poison<LPWSTR>();
        SetLastError(kPoisonError);
        const DWORD got = GetFullPathNameW(row.path, 512, buffer.data(), &part);
        const DWORD error = GetLastError();
        const bool isPart =
            row.part == nullptr ? part == nullptr : part != nullptr && row.part == WText(part);
        KNOWN_GAP(row.gap, got == wanted.size() && error == row.error &&
                               (row.full == nullptr || buffer.Text() == wanted) &&
                               (row.full == nullptr || isPart))
            << got << ", error " << error << ", "
            << (row.full != nullptr ? wtext::ToUtf8(buffer.Text()) : "") << ", part "
            << (isPart ? "right" : "wrong");
    }
}

TEST(Paths, NameAndExtension) {
    struct Row {
        LPCWSTR path;
        int nameAt;
        int extensionAt;
    };
    const Row rows[] = {
        {TEXT(""), 0, 0},
        {TEXT("a.txt"), 0, 1},
        {TEXT("Z:\\a\\b.hpa"), 5, 6},
        {TEXT("Z:/a.b/c"), 7, 4},
        {TEXT("Z:\\a.b\\c"), 7, 8},
        {TEXT("a\\b\\"), 2, 4},
        {TEXT("a\\b\\\\"), 2, 5},
        {TEXT("a\\\\b"), 3, 4},
        {TEXT("Z:a"), 2, 3},
        {TEXT("Z:"), 0, 2},
        {TEXT("Z:\\"), 0, 3},
        {TEXT("a.b.c"), 0, 3},
        {TEXT("a."), 0, 1},
        {TEXT(".a"), 0, 0},
        {TEXT("."), 0, 0},
        {TEXT(".."), 0, 1},
        {TEXT("a.b c"), 0, 5},
        {TEXT("a b.c"), 0, 3},
        {TEXT("a.b "), 0, 4},
        {TEXT("\u5C3A.\u5BF8"), 0, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.path));
        EXPECT_EQ(row.nameAt, PathFindFileNameW(row.path) - row.path);
        EXPECT_EQ(row.extensionAt, PathFindExtensionW(row.path) - row.path);
        EXPECT_EQ(row.nameAt, FileNameIn(row.path).data() - row.path);
        EXPECT_EQ(row.extensionAt, ExtensionIn(row.path).data() - row.path);
    }
    EXPECT_EQ(nullptr, PathFindFileNameW(nullptr));
    EXPECT_EQ(nullptr, PathFindExtensionW(nullptr));
}

TEST(Paths, RemoveFileSpec) {
    struct Row {
        LPCWSTR path;
        LPCWSTR left;
    };
    const Row rows[] = {
        {TEXT(""), TEXT("")},
        {TEXT("a"), TEXT("")},
        {TEXT("a\\b"), TEXT("a")},
        {TEXT("a\\b\\"), TEXT("a\\b")},
        {TEXT("a\\\\b"), TEXT("a\\")},
        {TEXT("a/b"), TEXT("")},
        {TEXT("\\a"), TEXT("\\")},
        {TEXT("\\"), TEXT("\\")},
        {TEXT("\\\\"), TEXT("\\\\")},
        {TEXT("\\\\s\\b"), TEXT("\\\\s")},
        {TEXT("\\\\s"), TEXT("\\\\")},
        {TEXT("Z:\\a"), TEXT("Z:\\")},
        {TEXT("Z:\\a\\b"), TEXT("Z:\\a")},
        {TEXT("Z:\\"), TEXT("Z:\\")},
        {TEXT("Z:"), TEXT("Z:")},
        {TEXT("Z:a"), TEXT("Z:")},
        {TEXT("Z:\\\\a"), TEXT("Z:\\")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.path));
        WText path = row.path;
        EXPECT_EQ(path != row.left, PathRemoveFileSpecW(path.data()) != FALSE);
        EXPECT_EQ(WText(row.left), path.c_str());
    }
    EXPECT_FALSE(PathRemoveFileSpecW(nullptr));
}

void CodeOfThisProgram() {}

TEST(Modules, FileName) {
    WText path(1024, 0);
    path.resize(GetModuleFileNameW(nullptr, path.data(), 1024));
    EXPECT_EQ(TEXT("Z:\\"), path.substr(0, 3));
    const std::string name = wtext::ToUtf8(PathFindFileNameW(path.c_str()));
    EXPECT_EQ(0u, name.find("files_contract_test"));

    const auto units = static_cast<DWORD>(path.size());
    for (const DWORD cch : {DWORD{0}, DWORD{1}, units, units + 1, units + 2}) {
        SCOPED_TRACE(cch);
        GuardedBuffer buffer(cch);
        SetLastError(kPoisonError);
        const DWORD got = GetModuleFileNameW(nullptr, buffer.data(), cch);
        EXPECT_EQ(cch > units ? units : cch, got);
        EXPECT_EQ(cch > units ? DWORD{ERROR_SUCCESS} : DWORD{ERROR_INSUFFICIENT_BUFFER},
                  GetLastError());
        EXPECT_TRUE(buffer.IsGuardWhole());
        if (cch != 0) {
            // A cut name is terminated.
            KNOWN_GAP(cch > units ? eGap::none : eGap::windows,
                      buffer.Text() == path.substr(0, cch > units ? units : cch - 1));
        }
    }
    GuardedBuffer buffer(4);
    SetLastError(kPoisonError);
    EXPECT_EQ(
        0u, GetModuleFileNameW(reinterpret_cast<HMODULE>(std::uintptr_t{0x10}), buffer.data(), 4));
    EXPECT_EQ(DWORD{ERROR_MOD_NOT_FOUND}, GetLastError());
}

TEST(Modules, HandleFromAddress) {
    constexpr DWORD kFlags =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    HMODULE module = Poison<HMODULE>();
    SetLastError(kPoisonError);
    ASSERT_TRUE(GetModuleHandleExW(kFlags, reinterpret_cast<LPCWSTR>(&CodeOfThisProgram), &module));
    EXPECT_EQ(kPoisonError, GetLastError());
    WCHAR byHandle[1024];
    WCHAR byNull[1024];
    EXPECT_NE(0u, GetModuleFileNameW(module, byHandle, 1024));
    EXPECT_NE(0u, GetModuleFileNameW(nullptr, byNull, 1024));
    EXPECT_EQ(WText(byNull), byHandle);

    HMODULE program = Poison<HMODULE>();
    ASSERT_TRUE(GetModuleHandleExW(kFlags, nullptr, &program));
    EXPECT_EQ(module, program);

    const WCHAR onTheStack = 0;
    SetLastError(kPoisonError);
    EXPECT_FALSE(GetModuleHandleExW(kFlags, &onTheStack, &module));
    EXPECT_EQ(DWORD{ERROR_MOD_NOT_FOUND}, GetLastError());
    EXPECT_EQ(nullptr, module);
}

TEST(Modules, ProcessId) {
    EXPECT_NE(0u, GetCurrentProcessId());
    EXPECT_EQ(GetCurrentProcessId(), GetCurrentProcessId());
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
        {TEXT("empty/*"), kDots},
        {TEXT("many\\*"), WithDots(many)},
        {TEXT("links\\*"),
         WithDots({"folder d", "to_folder dl", "to_parent dl", "file.txt ", "to_file "})},
        {TEXT("broken\\*"), WithDots({"to_nothing "}), eGap::windows},
        {TEXT("links\\to_folder\\*"), kDots},
        {TEXT("links\\to_parent\\links\\folder\\*"), kDots},
        {TEXT("long\\*"), WithDots({Repeat("a", 255) + " ", Repeat("尺", 85) + " "})},
        {TEXT("scripts\\*"), WithDots({"Größe ", "Размер ", "μέγεθος ", "尺寸 ", "サイズ ", "크기 ",
                                       "גודל ", "حجم ", "ขนาด ", "आकार ", "📐 ", "e\u0301 ", "a b ",
                                       "a;b ", "100% ", "#1 ", "a. ", "~x "})},
        {TEXT("prefix\\abc*"), {"abc ", "ABCD.txt ", "abcdef "}},
        {TEXT("prefix\\ABC*"), {"abc ", "ABCD.txt ", "abcdef "}},
        {TEXT("prefix\\abcdef*"), {"abcdef "}},
        {TEXT("prefix\\\u00FC*"), {"Über.txt ", "überall "}},
        {TEXT("prefix\\u*"), {"uber "}},
        {TEXT("empty\\.*"), kDots},
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
        {TEXT("none\\none\\*"), ERROR_PATH_NOT_FOUND},
        {TEXT("plain.txt\\*"), ERROR_DIRECTORY, eGap::windows},
        {TEXT("plain.txt\\none\\*"), ERROR_PATH_NOT_FOUND},
        {TEXT("broken\\to_nothing\\*"), ERROR_PATH_NOT_FOUND, eGap::windows},
        {TEXT("Q:\\*"), ERROR_PATH_NOT_FOUND},
        {TEXT("empty\\abc*"), ERROR_FILE_NOT_FOUND},
        {TEXT("prefix\\abcz*"), ERROR_FILE_NOT_FOUND},
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

TEST_F(Files, ListingIsMovable) {
    DirectoryListing first;
    ASSERT_TRUE(first.Open(TEXT("prefix\\abcdef*")));
    DirectoryListing second = std::move(first);
    DirectoryListing::Entry entry{};
    ASSERT_TRUE(second.Next(entry));
    EXPECT_EQ(TEXT("abcdef"), entry.name);
    EXPECT_FALSE(second.Next(entry));
}

TEST_F(Files, NativePaths) {
    const WText plain = tree_ + TEXT("\\plain.txt");
    EXPECT_EQ(plain, AbsoluteWidePath(NativePathFromWide(TEXT("plain.txt"))));
    EXPECT_EQ(plain, AbsoluteWidePath(NativePathFromWide(plain)));
    EXPECT_TRUE(AbsoluteWidePath(NativePath()).empty());
    EXPECT_EQ(WText(TEXT("Gr\u00F6\u00DFe")), WideNameFromTyped("Größe"));
    EXPECT_EQ("plain.txt", DisplayPath(TEXT("plain.txt")));
    EXPECT_EQ("Größe", DisplayPath(TEXT("Gr\u00F6\u00DFe")));

    struct Row {
        LPCWSTR path;
        bool found;
        std::uint64_t bytes;
    };
    const Row rows[] = {{TEXT("plain.txt"), true, 11},
                        {TEXT("many\\entry_with_a_name_of_middling_length_1"), true, 0},
                        {TEXT("links\\to_file"), true, 1},
                        {TEXT("none"), false, 0},
                        {TEXT("broken\\to_nothing"), false, 0},
                        {TEXT("Q:\\none"), false, 0},
                        {TEXT(""), false, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.path));
        auto bytes = Poison<std::uint64_t>();
        EXPECT_EQ(row.found, FileSize(row.path, bytes));
        EXPECT_EQ(row.bytes, bytes);
    }
}

}  // namespace
