// Comparison, message texts and the user's name.
#include <gtest/gtest.h>

#include "platform/message_format.h"
#include "tests/contract/compare_pairs.h"
#include "tests/contract/contract.h"

namespace {

constexpr DWORD kWidth = NORM_IGNOREWIDTH;
constexpr DWORD kWidthAndKana = NORM_IGNOREWIDTH | NORM_IGNOREKANATYPE;
constexpr DWORD kFolding = kWidthAndKana | SORT_STRINGSORT | NORM_IGNORECASE;
constexpr DWORD kFlagSets[] = {kFolding, kWidthAndKana | SORT_STRINGSORT,
                               kWidthAndKana | NORM_IGNORECASE, kWidth | NORM_IGNORECASE};

int LengthOf(LPCWSTR text) {
    return static_cast<int>(wtext::Length(text));
}

char DigitOf(int result) {
    return static_cast<char>('0' + result);
}

TEST(CompareString, RecordedPairs) {
    for (const ComparePair& row : kComparePairs) {
        SCOPED_TRACE(std::string(row.label) + ": '" + wtext::ToUtf8(row.a) + "' and '" +
                     wtext::ToUtf8(row.b) + "'");
        std::string got;
        for (const DWORD flags : kFlagSets) {
            const int result = CompareStringW(LOCALE_USER_DEFAULT, flags, row.a, -1, row.b, -1);
            got += DigitOf(result);
            // By lengths and the other way round the answer is the same.
            EXPECT_EQ(result, CompareStringW(LOCALE_NEUTRAL, flags, row.a, LengthOf(row.a), row.b,
                                             LengthOf(row.b)));
            EXPECT_EQ(4 - result, CompareStringW(LOCALE_USER_DEFAULT, flags, row.b, -1, row.a, -1));
        }
        KNOWN_GAP(row.gap, got == row.results) << "got " << got << ", wanted " << row.results;
    }
}

std::string KeyOf(LPCWSTR text) {
    char key[400] = {};
    const int size = LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | kFolding, text, -1,
                                  reinterpret_cast<LPWSTR>(key), sizeof key);
    EXPECT_LT(1, size);
    const int cch = *text != 0 ? LengthOf(text) : -1;
    EXPECT_EQ(size,
              LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | kFolding, text, cch, nullptr, 0))
        << "by its length, and without a buffer";
    return std::string(key, static_cast<std::size_t>(size));
}

// Two texts have equal keys where they compare as equal, and the lesser one has the lesser key.
TEST(SortKey, AgreesWithTheComparison) {
    for (const ComparePair& row : kComparePairs) {
        const int order = KeyOf(row.a).compare(KeyOf(row.b));
        const char got = order == 0 ? '2' : order < 0 ? '1' : '3';
        const int wanted = CompareStringW(LOCALE_USER_DEFAULT, kFolding, row.a, -1, row.b, -1);
        EXPECT_EQ(DigitOf(wanted), got) << row.label << ": '" << wtext::ToUtf8(row.a) << "' and '"
                                        << wtext::ToUtf8(row.b) << "'";
    }
}

TEST(SortKey, SizesAndFlags) {
    char key[100];
    const auto map = [&](DWORD flags, int cb) {
        std::memset(key, 0x55, sizeof key);
        return LCMapStringW(LOCALE_USER_DEFAULT, flags, TEXT("Br\u00E4cket \u2460"), -1,
                            reinterpret_cast<LPWSTR>(key), cb);
    };
    constexpr DWORD kKey = LCMAP_SORTKEY | kFolding;
    const int needed = map(kKey, 0);
    ASSERT_LT(1, needed);
    EXPECT_EQ(needed, map(kKey, needed));
    EXPECT_EQ(0, key[needed - 1]) << "a null at the end";
    EXPECT_EQ(0x55, key[needed]);
    EXPECT_EQ(0, map(kKey, needed - 1)) << "one byte too few";
}

// Every ASCII character against every other: the order of the table, in words as alone.
TEST(CompareString, AsciiOrderIsTotal) {
    const std::string order =
        " \t\n\v\f\r!\"#$%&()*,./"
        ":;?@[\\]^_`{|}~+<=>0123456789aAbBcCdDeEfFgGhHiIjJkKlLmMnNoOpPqQrRsStT"
        "uUvVwWxXyYzZ";
    for (std::size_t i = 0; i < order.size(); ++i) {
        for (std::size_t j = 0; j < order.size(); ++j) {
            const WCHAR a[] = {'m', static_cast<WCHAR>(order[i]), 'm', 0};
            const WCHAR b[] = {'m', static_cast<WCHAR>(order[j]), 'm', 0};
            const int wanted = i == j ? CSTR_EQUAL : i < j ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
            ASSERT_EQ(wanted, CompareStringW(LOCALE_USER_DEFAULT, kWidthAndKana | SORT_STRINGSORT,
                                             a, 3, b, 3))
                << order[i] << " and " << order[j];
        }
    }
}

// No unit behind the count is read, and one more counts.
TEST(CompareString, Lengths) {
    const auto compare = [](LPCWSTR a, int cchA) {
        return CompareStringW(LOCALE_USER_DEFAULT, kFolding, a, cchA, TEXT("ab"), -1);
    };
    EXPECT_EQ(CSTR_EQUAL, compare(TEXT("ab\u00E4"), 2));
    EXPECT_EQ(CSTR_GREATER_THAN, compare(TEXT("abc"), 3));
    EXPECT_EQ(CSTR_LESS_THAN, compare(TEXT("abc"), 0));
}

TEST(FormatMessage, Inserts) {
    struct Row {
        const char* label;
        LPCWSTR format;
        LPCWSTR wanted;
    };
    const Row rows[] = {
        {"swapped and repeated", TEXT("%2 %1 %2"), TEXT("two one two")},
        {"two digits", TEXT("%10"), TEXT("ten")},
        {"percent sign", TEXT("100%%"), TEXT("100%")},
        {"escapes", TEXT("a%nb%tc%rd%.%!% e%q"), TEXT("a\r\nb\tc\rd.! eq")},
        {"line ends become two units", TEXT("a\nb\rc\r\nd"), TEXT("a\r\nb\r\nc\r\nd")},
        {"null insert", TEXT("%3"), TEXT("(null)")},
        {"percent at the end", TEXT("a%"), TEXT("")},
        {"a form without end", TEXT("%1!s"), TEXT("")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(WText(row.wanted),
                  FormatInserts(row.format, {TEXT("one"), TEXT("two"), nullptr, TEXT(""), TEXT(""),
                                             TEXT(""), TEXT(""), TEXT(""), TEXT(""), TEXT("ten")}));
    }
    const WText longText(5000, 'x');
    EXPECT_EQ(longText + TEXT("?"), FormatInserts(TEXT("%1?"), {longText.c_str()}));
}

TEST(UserName, Sizes) {
    DWORD needed = 0;
    EXPECT_FALSE(GetUserNameW(nullptr, &needed));
    ASSERT_GT(needed, 1u);
    GuardedBuffer buffer(needed);
    DWORD cch = needed - 1;
    EXPECT_FALSE(GetUserNameW(buffer.data(), &cch));
    EXPECT_EQ(needed, cch);
    EXPECT_TRUE(GetUserNameW(buffer.data(), &cch));
    EXPECT_EQ(needed - 1, wtext::Length(buffer.data()));
    EXPECT_TRUE(buffer.IsGuardWhole());
}

}  // namespace
