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

TEST(SortKey, SizesAndRefusals) {
    char key[100];
    const auto map = [&](DWORD flags, LPCWSTR text, int cch, int cb) {
        std::memset(key, 0x55, sizeof key);
        SetLastError(kPoisonError);
        return LCMapStringW(LOCALE_USER_DEFAULT, flags, text, cch, reinterpret_cast<LPWSTR>(key),
                            cb);
    };
    constexpr DWORD kKey = LCMAP_SORTKEY | kFolding;
    const LPCWSTR text = TEXT("Br\u00E4cket \u2460");
    const int needed = map(kKey, text, -1, 0);
    ASSERT_LT(1, needed);
    EXPECT_EQ(needed, map(kKey, text, -1, needed));
    EXPECT_EQ(0, key[needed - 1]) << "a null at the end";
    EXPECT_EQ(0x55, key[needed]);
    EXPECT_EQ(kPoisonError, GetLastError());
    const struct {
        const char* label;
        DWORD flags;
        LPCWSTR text;
        int cch;
        int cb;
        DWORD error;
        eGap gap;
    } kRows[] = {
        {"one byte too few", kKey, text, -1, needed - 1, ERROR_INSUFFICIENT_BUFFER, eGap::none},
        {"no text", kKey, nullptr, -1, 100, ERROR_INVALID_PARAMETER, eGap::none},
        {"nothing of a text", kKey, text, 0, 100, ERROR_INVALID_PARAMETER, eGap::none},
        {"no such flag", kKey | 0x80000000u, text, -1, 100, ERROR_INVALID_FLAGS, eGap::windows},
        {"flags that nobody passes", LCMAP_SORTKEY, text, -1, 100, kPoisonError, eGap::native},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        const bool fails = map(row.flags, row.text, row.cch, row.cb) == 0;
        KNOWN_GAP(row.gap, fails == (row.error != kPoisonError) && GetLastError() == row.error)
            << GetLastError();
    }
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

TEST(CompareString, LengthsAndEmbeddedNul) {
    struct Row {
        const char* label;
        WTextView a;
        int cchA;
        WTextView b;
        int cchB;
        int result;
    };
    using namespace std::string_view_literals;
    const WCHAR withNul[] = {'a', 0, 'b', 0};
    const WCHAR withOther[] = {'a', 0, 'c', 0};
    const WTextView nulB(withNul, 3);
    const WTextView nulC(withOther, 3);
    const Row rows[] = {
        {"counted stops in mid text", TEXT("bolts"), 4, TEXT("bolt"), -1, CSTR_EQUAL},
        {"counted one more", TEXT("bolts"), 5, TEXT("bolt"), -1, CSTR_GREATER_THAN},
        {"any negative length", TEXT("ab"), -5, TEXT("AB"), -1, CSTR_EQUAL},
        {"no unit behind the count is read", TEXT("ab\u00E4"), 2, TEXT("ab"), -1, CSTR_EQUAL},
        {"counted NUL doesn't count", nulB, 3, TEXT("ab"), 2, CSTR_EQUAL},
        {"behind a counted NUL", nulB, 3, nulC, 3, CSTR_LESS_THAN},
        {"a NUL at the end", nulB, 2, TEXT("a"), 1, CSTR_EQUAL},
        {"terminated at the NUL", nulB, -1, nulC, -1, CSTR_EQUAL},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(row.result, CompareStringW(LOCALE_USER_DEFAULT, kFolding, row.a.data(), row.cchA,
                                             row.b.data(), row.cchB));
    }
}

TEST(CompareString, RefusesAndLeavesTheLastError) {
    struct Row {
        const char* label;
        LCID locale;
        DWORD flags;
        LPCWSTR a;
        LPCWSTR b;
        DWORD error;  // kPoisonError: succeeds
        eGap gap;
    };
    const LPCWSTR a = TEXT("a");
    const Row rows[] = {
        {"success", LOCALE_USER_DEFAULT, kFolding, a, a, kPoisonError, eGap::none},
        {"no such locale", 0xFFFFF, kFolding, a, a, ERROR_INVALID_PARAMETER, eGap::none},
        {"no such flag", LOCALE_USER_DEFAULT, 0x80000000u, a, a, ERROR_INVALID_FLAGS, eGap::none},
        {"flags that nobody passes", LOCALE_USER_DEFAULT, 0, a, a, kPoisonError, eGap::native},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        SetLastError(kPoisonError);
        const int result = CompareStringW(row.locale, row.flags, row.a, -1, row.b, -1);
        const int wanted = row.error == kPoisonError ? CSTR_EQUAL : 0;
        KNOWN_GAP(row.gap, result == wanted && GetLastError() == row.error)
            << result << ", error " << GetLastError();
    }
}

TEST(FormatMessage, Inserts) {
    struct Row {
        const char* label;
        LPCWSTR format;
        LPCWSTR wanted;
    };
    const Row rows[] = {
        {"in order", TEXT("%1 of %2"), TEXT("one of two")},
        {"swapped and repeated", TEXT("%2 %1 %2"), TEXT("two one two")},
        {"two digits", TEXT("%10"), TEXT("ten")},
        {"a digit behind two", TEXT("%101"), TEXT("ten1")},
        {"letter behind", TEXT("%1a"), TEXT("onea")},
        {"percent sign", TEXT("100%%"), TEXT("100%")},
        {"escapes", TEXT("a%nb%tc%rd%.%!% e%q"), TEXT("a\r\nb\tc\rd.! eq")},
        {"ends at %0", TEXT("a%0b"), TEXT("a")},
        {"line ends become two units", TEXT("a\nb\rc\r\nd"), TEXT("a\r\nb\r\nc\r\nd")},
        {"null insert", TEXT("%3"), TEXT("(null)")},
        {"percent at the end", TEXT("a%"), TEXT("")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(WText(row.wanted),
                  FormatInserts(row.format, {TEXT("one"), TEXT("two"), nullptr, TEXT(""), TEXT(""),
                                             TEXT(""), TEXT(""), TEXT(""), TEXT(""), TEXT("ten")}));
    }
    const WText longText(5000, 'x');
    EXPECT_EQ(longText + TEXT("!"), FormatInserts(TEXT("%1!"), {longText.c_str()}));
}

TEST(UserName, Sizes) {
    DWORD needed = 0;
    EXPECT_FALSE(GetUserNameW(nullptr, &needed));
    ASSERT_GT(needed, 1u);
    for (const DWORD size : {needed - 1, needed}) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(size);
        DWORD cch = size;
        SetLastError(kPoisonError);
        const bool fits = size >= needed;
        EXPECT_EQ(fits, GetUserNameW(buffer.data(), &cch) != FALSE);
        EXPECT_EQ(needed, cch);
        EXPECT_EQ(fits ? kPoisonError : ERROR_INSUFFICIENT_BUFFER, GetLastError());
        EXPECT_TRUE(fits ? buffer.IsGuardWhole() : buffer.IsUntouched());
        if (fits) {
            EXPECT_EQ(needed - 1, wtext::Length(buffer.data()));
        }
    }
}

}  // namespace
