// The registry, below a key of the test's own that is gone when the test ends.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/contract/contract.h"

namespace {

constexpr REGSAM kAll = KEY_ALL_ACCESS;

template <typename Unit, std::size_t kCount>
const BYTE* Bytes(const Unit (&units)[kCount]) {
    return reinterpret_cast<const BYTE*>(units);
}

class RegistryContract : public testing::Test {
protected:
    void SetUp() override {
        path_ = WText(TEXT("Software\\ContractTest")) + wtext::FromNumber(UniqueNumber());
        RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
        DWORD disposition = 0;
        ASSERT_EQ(ERROR_SUCCESS,
                  RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr,
                                  REG_OPTION_NON_VOLATILE, kAll, nullptr, &key_, &disposition));
        ASSERT_EQ(DWORD{REG_CREATED_NEW_KEY}, disposition);
    }

    void TearDown() override {
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key_));
        EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str()));
        HKEY gone = nullptr;
        EXPECT_EQ(ERROR_FILE_NOT_FOUND,
                  RegOpenKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, KEY_READ, &gone));
    }

    // Another for each test, so that two runs at once don't meet.
    static long long UniqueNumber() {
        SYSTEMTIME now = {};
        FILETIME moment = {};
        GetLocalTime(&now);
        EXPECT_TRUE(SystemTimeToFileTime(&now, &moment));
        return moment.dwLowDateTime;
    }

    LSTATUS Create(HKEY root, LPCWSTR path, HKEY& key, REGSAM access = kAll) {
        return RegCreateKeyExW(root, path, 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                               &key, nullptr);
    }

    void Make(LPCWSTR path) {
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, Create(key_, path, key));
        ASSERT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    }

    LSTATUS Open(LPCWSTR path, HKEY& key, REGSAM access = kAll) {
        return RegOpenKeyExW(key_, path, 0, access, &key);
    }

    LSTATUS SetNumber(HKEY key, LPCWSTR name) {
        const BYTE number[4] = {1, 2, 3, 4};
        return RegSetValueExW(key, name, 0, REG_DWORD, number, sizeof number);
    }

    LSTATUS Query(HKEY key, LPCWSTR name) {
        return RegQueryValueExW(key, name, nullptr, nullptr, nullptr, nullptr);
    }

    LSTATUS Enumerate(HKEY key) {
        WCHAR name[256];
        DWORD cch = 256;
        return RegEnumKeyExW(key, 0, name, &cch, nullptr, nullptr, nullptr, nullptr);
    }

    WText path_;
    HKEY key_ = nullptr;
};

TEST_F(RegistryContract, PathsAndNames) {
    struct Row {
        const char* label;
        WText path;
        LSTATUS status;
        LPCWSTR found;  // opens afterwards
        eGap gap;
    };
    const Row rows[] = {
        {"plain", TEXT("plain"), ERROR_SUCCESS, TEXT("PLAIN"), eGap::none},
        {"nested", TEXT("a\\b\\c"), ERROR_SUCCESS, TEXT("A\\b\\C"), eGap::none},
        {"case beyond ASCII", TEXT("\u00C4\u0434"), ERROR_SUCCESS, TEXT("\u00E4\u0414"),
         eGap::none},
        {"separator at the end", TEXT("end\\"), ERROR_SUCCESS, TEXT("end"), eGap::none},
        {"doubled separator", TEXT("x\\\\y"), ERROR_SUCCESS, TEXT("x\\y"), eGap::none},
        {"other signs", TEXT("q/[\"]=@;%"), ERROR_SUCCESS, TEXT("Q/[\"]=@;%"), eGap::none},
        {"255 units", WText(255, 'n'), ERROR_SUCCESS, nullptr, eGap::none},
        {"256 units", WText(256, 'm'), ERROR_INVALID_PARAMETER, nullptr, eGap::windows},
        {"separator in front", TEXT("\\lead"), ERROR_BAD_PATHNAME, nullptr, eGap::none},
        {"control character", TEXT("a\nb"), ERROR_SUCCESS, nullptr, eGap::native},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        HKEY key = nullptr;
        const LSTATUS status = Create(key_, row.path.c_str(), key);
        KNOWN_GAP(row.gap, status == row.status) << status;
        if (key != nullptr && status == ERROR_SUCCESS) {
            EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
        }
        if (row.found != nullptr) {
            EXPECT_EQ(ERROR_SUCCESS, Open(row.found, key));
            EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
        }
    }
}

TEST_F(RegistryContract, OpeningAndCreating) {
    const HKEY poison = reinterpret_cast<HKEY>(ULONG_PTR{0x77});
    HKEY key = poison;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Open(TEXT("none"), key));
    EXPECT_EQ(nullptr, key);
    DWORD disposition = 0;
    for (const DWORD wanted : {REG_CREATED_NEW_KEY, REG_OPENED_EXISTING_KEY}) {
        EXPECT_EQ(ERROR_SUCCESS, RegCreateKeyExW(key_, TEXT("a\\b"), 0, nullptr, 0, kAll, nullptr,
                                                 &key, &disposition));
        EXPECT_EQ(wanted, disposition);
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    }
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              RegCreateKeyExW(key_, TEXT("a"), 1, nullptr, 0, kAll, nullptr, &key, nullptr));
    // An empty path is the key itself, by another handle.
    for (const LPCWSTR path : {LPCWSTR{nullptr}, TEXT("")}) {
        ASSERT_EQ(ERROR_SUCCESS, Open(path, key));
        EXPECT_NE(key_, key);
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
        EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(key));
    }
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(HKEY_CURRENT_USER));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND,
              RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("Software\\NoSuchOne"), 0, KEY_READ, &key));
    const LSTATUS machine = RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("Software"), 0, KEY_READ, &key);
    KNOWN_GAP(eGap::native, machine == ERROR_SUCCESS);
    if (machine == ERROR_SUCCESS) {
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    }
    for (const HKEY none : {HKEY{nullptr}, reinterpret_cast<HKEY>(ULONG_PTR{0x1234567})}) {
        EXPECT_EQ(ERROR_INVALID_HANDLE, RegOpenKeyExW(none, TEXT("a"), 0, KEY_READ, &key));
        EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(none));
        EXPECT_EQ(ERROR_INVALID_HANDLE, Query(none, TEXT("a")));
        EXPECT_EQ(ERROR_INVALID_HANDLE, SetNumber(none, TEXT("a")));
        EXPECT_EQ(ERROR_INVALID_HANDLE, Enumerate(none));
        EXPECT_EQ(ERROR_INVALID_HANDLE, RegDeleteKeyW(none, TEXT("a")));
    }
}

TEST_F(RegistryContract, ValuesRoundTrip) {
    const WCHAR text[] = {'a', '"', '\\', 0xE4, 0};
    const WCHAR lines[] = {'a', '\r', '\n', 0};
    const WCHAR inner[] = {'a', 0, 'b', 0};
    const WCHAR half[] = {0xD800, 'x', 0};
    const BYTE bytes[40] = {0, 1, 0xFE, 0xFF};
    struct Row {
        const char* label;
        LPCWSTR name;
        DWORD type;
        const BYTE* data;
        DWORD cb;
    };
    const Row rows[] = {
        {"text", TEXT("Text"), REG_SZ, Bytes(text), sizeof text},
        {"line end", TEXT("lines"), REG_SZ, Bytes(lines), sizeof lines},
        {"NUL inside", TEXT("inner"), REG_SZ, Bytes(inner), sizeof inner},
        {"unpaired surrogate", TEXT("half"), REG_SZ, Bytes(half), sizeof half},
        {"empty text", TEXT("empty"), REG_SZ, Bytes(text) + 8, 2},
        {"text of no byte", TEXT("nothing"), REG_SZ, nullptr, 0},
        {"text of odd size", TEXT("odd"), REG_SZ, Bytes(text), 5},
        {"number", TEXT("number"), REG_DWORD, bytes, 4},
        {"number of three bytes", TEXT("short"), REG_DWORD, bytes, 3},
        {"bytes", TEXT("bytes"), REG_BINARY, bytes, sizeof bytes},
        {"no byte", TEXT("none"), REG_BINARY, nullptr, 0},
        {"other type", TEXT("other"), 99, bytes, 7},
        {"default by null", nullptr, REG_BINARY, bytes, 16},
        {"odd name", TEXT("a\\b\"=@;]"), REG_DWORD, bytes, 4},
    };
    HKEY key = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, Create(key_, TEXT("v"), key));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        ASSERT_EQ(ERROR_SUCCESS, RegSetValueExW(key, row.name, 0, row.type, row.data, row.cb));
    }
    ASSERT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    ASSERT_EQ(ERROR_SUCCESS, Open(TEXT("V"), key, KEY_READ));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        std::vector<BYTE> data(65, 0xAA);
        DWORD type = kPoisonError;
        DWORD cb = 64;
        ASSERT_EQ(ERROR_SUCCESS, RegQueryValueExW(key, row.name, nullptr, &type, data.data(), &cb));
        EXPECT_EQ(row.type, type);
        ASSERT_EQ(row.cb, cb);
        EXPECT_TRUE(row.cb == 0 || std::memcmp(row.data, data.data(), row.cb) == 0);
        EXPECT_EQ(0xAA, data[64]);
    }
    EXPECT_EQ(ERROR_SUCCESS, Query(key, TEXT("")));
    EXPECT_EQ(ERROR_SUCCESS, Query(key, TEXT("tEXT")));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
}

TEST_F(RegistryContract, QuerySizes) {
    const WCHAR text[] = {'a', 'b', 'c', 0};
    struct Row {
        const char* label;
        DWORD stored;
        DWORD size;
        LSTATUS status;
        DWORD needed;
    };
    const Row rows[] = {
        {"size 0", 8, 0, ERROR_MORE_DATA, 8},
        {"one too small", 8, 7, ERROR_MORE_DATA, 8},
        {"exact", 8, 8, ERROR_SUCCESS, 8},
        {"one more", 8, 9, ERROR_SUCCESS, 8},
        {"stored without terminator", 6, 8, ERROR_SUCCESS, 8},
        {"stored without, no room for it", 6, 7, ERROR_MORE_DATA, 8},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        ASSERT_EQ(ERROR_SUCCESS,
                  RegSetValueExW(key_, TEXT("s"), 0, REG_SZ, Bytes(text), row.stored));
        std::vector<BYTE> data(row.size + 1, 0xAA);
        DWORD type = kPoisonError;
        DWORD cb = row.size;
        EXPECT_EQ(row.status, RegQueryValueExW(key_, TEXT("s"), nullptr, &type, data.data(), &cb));
        EXPECT_EQ(DWORD{REG_SZ}, type);
        EXPECT_EQ(row.needed, cb);
        EXPECT_EQ(0xAA, data[row.size]);
        if (row.status == ERROR_SUCCESS) {
            EXPECT_EQ(0, std::memcmp(text, data.data(), sizeof text));
        }
    }
    DWORD cb = kPoisonError;
    DWORD type = kPoisonError;
    BYTE byte = 0;
    EXPECT_EQ(ERROR_SUCCESS, RegQueryValueExW(key_, TEXT("s"), nullptr, &type, nullptr, &cb));
    EXPECT_EQ(8u, cb);
    EXPECT_EQ(ERROR_SUCCESS, Query(key_, TEXT("s")));
    EXPECT_EQ(ERROR_INVALID_PARAMETER,
              RegQueryValueExW(key_, TEXT("s"), nullptr, &type, &byte, nullptr));
    cb = type = kPoisonError;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND,
              RegQueryValueExW(key_, TEXT("none"), nullptr, &type, &byte, &cb));
    EXPECT_EQ(kPoisonError, cb);
    EXPECT_EQ(kPoisonError, type);
    EXPECT_EQ(ERROR_NOACCESS, RegSetValueExW(key_, TEXT("s"), 0, REG_BINARY, nullptr, 4));
    EXPECT_EQ(ERROR_SUCCESS, SetNumber(key_, WText(16383, 'v').c_str()));
    EXPECT_EQ(ERROR_INVALID_PARAMETER, SetNumber(key_, WText(16384, 'v').c_str()));
}

TEST_F(RegistryContract, AccessIsKeptTo) {
    struct Row {
        const char* label;
        REGSAM access;
        bool query;
        bool set;
        bool enumerate;
        bool create;
        eGap createGap;
    };
    const Row rows[] = {
        {"all", kAll, true, true, true, true, eGap::none},
        {"read", KEY_READ, true, false, true, false, eGap::windows},
        {"write", KEY_WRITE, false, true, false, true, eGap::none},
        {"query", KEY_QUERY_VALUE, true, false, false, false, eGap::windows},
        {"none", 0, false, false, false, false, eGap::windows},
    };
    Make(TEXT("k\\sub"));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        HKEY key = nullptr;
        HKEY made = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, Open(TEXT("k"), key));
        ASSERT_EQ(ERROR_SUCCESS, SetNumber(key, TEXT("n")));
        ASSERT_EQ(ERROR_SUCCESS, RegCloseKey(key));
        ASSERT_EQ(ERROR_SUCCESS, Open(TEXT("k"), key, row.access));
        const auto status = [](bool allowed) {
            return static_cast<LSTATUS>(allowed ? ERROR_SUCCESS : ERROR_ACCESS_DENIED);
        };
        EXPECT_EQ(status(row.query), Query(key, TEXT("n")));
        EXPECT_EQ(status(row.enumerate), Enumerate(key));
        EXPECT_EQ(status(row.set), SetNumber(key, TEXT("n")));
        KNOWN_GAP(row.createGap, Create(key, TEXT("new"), made) == status(row.create));
        if (made != nullptr) {
            EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(made));
            // Deleting asks for no right of the handle.
            EXPECT_EQ(ERROR_SUCCESS, RegDeleteKeyW(key, TEXT("new")));
        }
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    }
}

TEST_F(RegistryContract, EnumerationOrder) {
    struct Row {
        const char* label;
        std::vector<LPCWSTR> made;
        std::vector<LPCWSTR> wanted;
        eGap gap;
    };
    const Row rows[] = {
        {"none", {}, {}, eGap::none},
        {"case and digits",
         {TEXT("zeta"), TEXT("Alpha"), TEXT("beta"), TEXT("9"), TEXT("10"), TEXT("aZ"), TEXT("a b"),
          TEXT("\u00C4b"), TEXT("\u00E4a")},
         {TEXT("10"), TEXT("9"), TEXT("a b"), TEXT("Alpha"), TEXT("aZ"), TEXT("beta"), TEXT("zeta"),
          TEXT("\u00E4a"), TEXT("\u00C4b")},
         eGap::none},
        {"signs between the cases",
         {TEXT("_x"), TEXT("a"), TEXT("Z")},
         {TEXT("a"), TEXT("Z"), TEXT("_x")},
         eGap::windows},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        HKEY key = nullptr;
        ASSERT_EQ(ERROR_SUCCESS, Create(key_, TEXT("e"), key));
        for (const LPCWSTR name : row.made) {
            HKEY made = nullptr;
            ASSERT_EQ(ERROR_SUCCESS, Create(key, name, made));
            ASSERT_EQ(ERROR_SUCCESS, RegCloseKey(made));
        }
        std::vector<WText> found;
        WCHAR name[32];
        DWORD cch = 32;
        LSTATUS status = ERROR_SUCCESS;
        for (DWORD i = 0; i < 20; ++i, cch = 32) {
            status = RegEnumKeyExW(key, i, name, &cch, nullptr, nullptr, nullptr, nullptr);
            if (status != ERROR_SUCCESS) break;
            EXPECT_EQ(wtext::Length(name), cch);
            found.emplace_back(name);
        }
        EXPECT_EQ(ERROR_NO_MORE_ITEMS, status);
        const std::vector<WText> wanted(row.wanted.begin(), row.wanted.end());
        KNOWN_GAP(row.gap, found == wanted);
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
        EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeW(key_, TEXT("e")));
    }
}

TEST_F(RegistryContract, EnumerationSizes) {
    Make(TEXT("abc"));
    for (const DWORD size : {DWORD{0}, DWORD{3}, DWORD{4}, DWORD{5}}) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(size);
        DWORD cch = size;
        const bool fits = size >= 4;
        EXPECT_EQ(fits ? ERROR_SUCCESS : ERROR_MORE_DATA,
                  RegEnumKeyExW(key_, 0, buffer.data(), &cch, nullptr, nullptr, nullptr, nullptr));
        EXPECT_TRUE(buffer.IsGuardWhole());
        if (fits) {
            EXPECT_EQ(3u, cch);
            EXPECT_EQ(WText(TEXT("abc")), buffer.Text());
        }
    }
}

TEST_F(RegistryContract, Deletion) {
    struct Row {
        const char* label;
        LSTATUS(WINAPI* call)(HKEY, LPCWSTR);
        LPCWSTR path;
        LSTATUS status;
    };
    Make(TEXT("full\\sub\\deep"));
    Make(TEXT("leaf"));
    const Row rows[] = {
        {"with subkeys", RegDeleteKeyW, TEXT("full"), ERROR_ACCESS_DENIED},
        {"no such key", RegDeleteKeyW, TEXT("none"), ERROR_FILE_NOT_FOUND},
        {"null", RegDeleteKeyW, nullptr, ERROR_INVALID_PARAMETER},
        {"leaf", RegDeleteKeyW, TEXT("LEAF"), ERROR_SUCCESS},
        {"leaf again", RegDeleteKeyW, TEXT("leaf"), ERROR_FILE_NOT_FOUND},
        {"by path", RegDeleteKeyW, TEXT("full\\sub\\deep"), ERROR_SUCCESS},
        {"no such tree", RegDeleteTreeW, TEXT("none"), ERROR_FILE_NOT_FOUND},
        {"tree", RegDeleteTreeW, TEXT("full"), ERROR_SUCCESS},
        {"tree again", RegDeleteTreeW, TEXT("full"), ERROR_FILE_NOT_FOUND},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(row.status, row.call(key_, row.path));
    }
    // Without a path the key loses what it holds and stays.
    Make(TEXT("sub"));
    ASSERT_EQ(ERROR_SUCCESS, SetNumber(key_, TEXT("n")));
    EXPECT_EQ(ERROR_SUCCESS, RegDeleteTreeW(key_, nullptr));
    EXPECT_EQ(ERROR_NO_MORE_ITEMS, Enumerate(key_));
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, Query(key_, TEXT("n")));
}

TEST_F(RegistryContract, DeletedKeysSayThatTheyAre) {
    Make(TEXT("d\\sub"));
    HKEY key = nullptr;
    HKEY sub = nullptr;
    HKEY other = nullptr;
    ASSERT_EQ(ERROR_SUCCESS, Open(TEXT("d"), key));
    ASSERT_EQ(ERROR_SUCCESS, Open(TEXT("d\\sub"), sub));
    ASSERT_EQ(ERROR_SUCCESS, RegDeleteTreeW(key_, TEXT("D")));
    // A new key of the name is another one.
    Make(TEXT("d\\sub"));
    for (const HKEY gone : {key, sub}) {
        EXPECT_EQ(ERROR_KEY_DELETED, Query(gone, TEXT("n")));
        EXPECT_EQ(ERROR_KEY_DELETED, SetNumber(gone, TEXT("n")));
        EXPECT_EQ(ERROR_KEY_DELETED, Enumerate(gone));
        EXPECT_EQ(ERROR_KEY_DELETED, Create(gone, TEXT("x"), other));
        EXPECT_EQ(ERROR_KEY_DELETED, RegOpenKeyExW(gone, TEXT("x"), 0, KEY_READ, &other));
        EXPECT_EQ(ERROR_KEY_DELETED, RegDeleteKeyW(gone, TEXT("x")));
        EXPECT_EQ(ERROR_KEY_DELETED, RegDeleteTreeW(gone, nullptr));
        EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(gone));
    }
}

}  // namespace
