// One value against one criterion: texts, persons, numbers, yes/no, dates, file types.
#include "search/value_comparison.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <random>
#include <utility>

#include "criteria/file_types.h"
#include "criteria/text_equality.h"
#include "resource/string_ids.h"

namespace {

// Each condition has a letter, and a table's row names the letters of those that hold.
struct Letter {
    char letter;
    LONG condition;
};
constexpr LONG kUnknown = 21799;
constexpr Letter kTexts[] = {
    {'0', COND_IS_EMPTY},    {'n', COND_NOT_EMPTY},     {'*', COND_ANY_VALUE},
    {'a', COND_IS_APP_USER}, {'l', COND_IS_LOGIN_USER}, {'b', COND_BEGINS_WITH},
    {'e', COND_ENDS_WITH},   {'c', COND_CONTAINS},      {'=', COND_EQUALS},
    {'!', COND_DIFFERS},     {'?', kUnknown},
};
constexpr Letter kNumbers[] = {
    {'=', COND_NUM_EQUALS},  {'e', COND_EQUALS},  {'>', COND_GREATER_THAN}, {'<', COND_LESS_THAN},
    {'!', COND_NUM_DIFFERS}, {'d', COND_DIFFERS}, {'*', COND_ANY_VALUE},    {'?', kUnknown},
};
constexpr Letter kYesNo[] = {
    {'y', COND_IS_YES},  {'Y', COND_IS_YES_ALT}, {'n', COND_IS_NO},  {'N', COND_IS_NO_ALT},
    {'!', COND_DIFFERS}, {'*', COND_ANY_VALUE},  {'?', COND_EQUALS},
};
constexpr Letter kDates[] = {
    {'=', COND_ON_DATE},      {'e', COND_EQUALS},     {'t', COND_TODAY},
    {'!', COND_NOT_ON_DATE},  {'d', COND_DIFFERS},    {'>', COND_ON_OR_AFTER},
    {'<', COND_ON_OR_BEFORE}, {'w', COND_THIS_WEEK},  {'W', COND_LAST_WEEK},
    {'m', COND_THIS_MONTH},   {'M', COND_LAST_MONTH}, {'*', COND_ANY_DATE},
    {'a', COND_ANY_VALUE},    {'y', COND_YESTERDAY},  {'?', kUnknown},
};

template <std::size_t N, typename Compare, typename Value, typename Wanted, typename... More>
std::string Holding(const Letter (&letters)[N], Compare compare, Value value, Wanted wanted,
                    More... more) {
    std::string holding;
    for (const Letter& each : letters) {
        const auto condition = static_cast<unsigned>(each.condition);
        if (compare(value, wanted, condition, more...)) holding += each.letter;
    }
    return holding;
}

struct TextRow {
    const WCHAR *value, *text;
    const char *folded, *exact;
};

TEST(ValueComparison, Texts) {
    const TextRow rows[] = {
        {nullptr, TEXT(""), "=!", "=!"},
        {TEXT(""), TEXT(""), "=!", "=!"},
        {TEXT(""), TEXT("a"), "!", "!"},
        {TEXT("abc"), TEXT(""), "*be!", "*be!"},  // begins all, stands in none
        {TEXT("\u00E9"), TEXT(""), "*be!", "*be!"},
        {TEXT("abc"), TEXT("abc"), "*bec=", "*bec="},
        {TEXT("abc"), TEXT("ab"), "*bc!", "*bc!"},
        {TEXT("aaab"), TEXT("aab"), "*ec!", "*ec!"},
        {TEXT("abcd"), TEXT("bc"), "*c!", "*c!"},
        {TEXT("abc"), TEXT("abcd"), "*!", "*!"},
        {TEXT("ABC"), TEXT("abc"), "*bec=", "*!"},
        {TEXT("a?c"), TEXT("a*c"), "*!", "*!"},  // no wildcards
        {TEXT("a*c"), TEXT("*"), "*c!", "*c!"},
        {TEXT("\uFF21\uFF22\uFF23"), TEXT("BC"), "*ec!", "*ec!"},  // full width
        {TEXT("\uFF21\uFF22\uFF23"), TEXT("abc"), "*bec=", "*!"},
        {TEXT("x12y"), TEXT("\uFF11\uFF12"), "*c!", "*c!"},
        {TEXT("\u30AB\u30E1"), TEXT("\uFF76"), "*bc!", "*bc!"},          // half-width kana
        {TEXT("\u304B\u3081"), TEXT("\u30AB\u30E1"), "*bec=", "*bec="},  // the two kana
        {TEXT("\u00C9T\u00C9"), TEXT("\u00E9t\u00E9"), "*bec=", "*!"},
        {TEXT("\u00E9"), TEXT("e\u0301"), "*=", "*="},  // equal, yet too short to begin with it
        {TEXT("e\u0301t"), TEXT("\u00E9"), "*!", "*!"},
        {TEXT("e\u0301t"), TEXT("e"), "*bc!", "*bc!"},
        {TEXT("\u00DF"), TEXT("ss"), "*=", "*="},  // one letter for two, and the other way round
        {TEXT("ae"), TEXT("\u00E6"), "*=", "*="},
    };
    for (const TextRow& row : rows) {
        SCOPED_TRACE((row.value != nullptr ? wtext::ToUtf8(row.value) : "null") + "|" +
                     wtext::ToUtf8(row.text));
        EXPECT_EQ(row.folded, Holding(kTexts, CompareStringValue, row.value, row.text, false));
        EXPECT_EQ(row.exact, Holding(kTexts, CompareStringValue, row.value, row.text, true));
    }
}

// Texts of few characters, so that parts are often equal; beside the fast path the system's own
// comparison of the same parts.
TEST(ValueComparison, FastPathsAsTheSystemComparesIt) {
    constexpr std::string_view kAlphabets[] = {"aAbB", "ab-' ._", "zZ{~!\"@[`", "aeEs-'\"("};
    // With accents, for two letters, of other scripts, wide, combining, without width: what stands
    // in the values that are searched for texts of the fourth alphabet.
    constexpr std::pair<unsigned, unsigned> kOthers[] = {
        {0xA0, 0x17F},    {0x300, 0x303},   {0x390, 0x3CE},   {0x400, 0x45F},   {0x5D0, 0x5EA},
        {0x200B, 0x201F}, {0x3041, 0x30FE}, {0x4E00, 0x4E10}, {0xAC00, 0xAC10}, {0xFF01, 0xFF5E}};
    std::mt19937 random(20240307);
    const auto drawOne = [&](std::size_t kind, bool isValue) {
        if (kind == 4) return 0x20 + random() % 0x5F;
        if (kind == 3 && isValue && random() % 2 == 0) {
            const auto [first, last] = kOthers[random() % std::size(kOthers)];
            return first + random() % (last - first + 1);
        }
        return std::mt19937::result_type{
            static_cast<unsigned char>(kAlphabets[kind][random() % kAlphabets[kind].size()])};
    };
    const auto draw = [&](std::size_t most, std::size_t kind, bool isValue) {
        WText text(1 + random() % most, 0);
        for (WCHAR& unit : text)
            unit = static_cast<WCHAR>(drawOne(kind, isValue));
        return text;
    };
    std::size_t contained = 0;
    for (int round = 0; round < 20000; ++round) {
        const std::size_t kind = random() % 5;
        const WText value = draw(6, kind, true);
        const WText text = draw(3, kind, false);
        const bool matchCase = random() % 2 != 0;
        const DWORD flags = matchCase ? kExactText : kFoldText;
        const auto equal = [&](std::size_t at, std::size_t length) {
            return CompareStringW(LOCALE_USER_DEFAULT, flags, value.data() + at,
                                  static_cast<int>(length), text.data(),
                                  static_cast<int>(text.size())) == CSTR_EQUAL;
        };
        const bool fits = value.size() >= text.size();
        bool contains = false;
        for (std::size_t at = 0; at + text.size() <= value.size(); ++at)
            contains = contains || equal(at, text.size());
        std::string wanted = "*";
        if (fits && equal(0, text.size())) wanted += 'b';
        if (fits && equal(value.size() - text.size(), text.size())) wanted += 'e';
        if (contains) wanted += 'c';
        wanted += equal(0, value.size()) ? '=' : '!';
        ASSERT_EQ(wanted,
                  Holding(kTexts, CompareStringValue, value.c_str(), text.c_str(), matchCase))
            << wtext::ToUtf8(value) << " | " << wtext::ToUtf8(text);
        contained += contains ? 1 : 0;
    }
    EXPECT_LT(1000u, contained) << "the drawn texts meet too seldom";
}

TEST(ValueComparison, Persons) {
    const SRxUserNames users = {TEXT("Ada Miller"), TEXT("ada")};
    const TextRow rows[] = {
        {nullptr, TEXT(""), "0!", "0!"},
        {TEXT(""), TEXT("Ada"), "0!", "0!"},
        {TEXT("Bo"), TEXT(""), "n*be!?", "n*be!?"},
        {TEXT("Ada Miller"), TEXT("ADA"), "n*abc!?", "n*a!?"},
        {TEXT("ADA"), TEXT("ada"), "n*lbec=?", "n*!?"},
    };
    for (const TextRow& row : rows) {
        EXPECT_EQ(row.folded, Holding(kTexts, CompareTextValue, row.value, row.text, false, users));
        EXPECT_EQ(row.exact, Holding(kTexts, CompareTextValue, row.value, row.text, true, users));
    }
}

TEST(ValueComparison, Numbers) {
    struct Row {
        double value, target, tolerance;
        const char* holds;
    };
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    const Row rows[] = {
        {1, 1, kExactNumber, "=e*"},
        {1, 2, kExactNumber, "<!d*"},
        {2, 1, kExactNumber, ">!d*"},
        {0.1 + 0.2, 0.3, kExactNumber, ">!d*"},
        {1, 1, kSizeTolerance, "=e*"},
        {1, 1 + kSizeTolerance, kSizeTolerance, "<!d*"},
        {1, 1.4, 0.5, "=e<!d*"},
        {1, 1.5, 0.5, "<!d*"},
        {1, 1, 0.0, "*"},
        {kNan, kNan, kExactNumber, "!d*"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.holds,
                  Holding(kNumbers, CompareRealValues, row.value, row.target, row.tolerance))
            << row.value << " " << row.target << " " << row.tolerance;
    }
}

TEST(ValueComparison, NumbersInTexts) {
    struct Row {
        double value;
        const WCHAR* text;
        const char* holds;
    };
    const Row rows[] = {
        {12.5, TEXT("12.5"), "=e*"}, {12.5, TEXT(" \t+1.25e1"), "=e*"},
        {0, TEXT(""), "=e*"},        {1, TEXT(""), ">!d*"},
        {1, TEXT("2"), "<!d*"},      {1, TEXT("1e999"), "<!d*"},
        {12, TEXT("12 mm"), ""},     {12, TEXT("12 "), ""},
        {0, TEXT("abc"), ""},        {0, TEXT(" "), ""},
        {1, TEXT("\uFF11"), ""},     {1, TEXT("1e"), ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.holds, Holding(kNumbers, CompareRealText, row.value, row.text, kExactNumber))
            << wtext::ToUtf8(row.text);
    }
}

TEST(ValueComparison, YesAndNo) {
    const std::pair<const WCHAR*, bool> rows[] = {
        {TEXT("yes"), true}, {TEXT("YES"), true}, {TEXT("\uFF59es"), true}, {TEXT("True"), true},
        {TEXT("no"), false}, {TEXT(""), false},   {TEXT("yes "), false},    {TEXT("y"), false},
    };
    for (const auto& [text, saysYes] : rows) {
        for (const bool value : {false, true}) {
            EXPECT_EQ((value ? "yY" : "nN") + std::string(value != saysYes ? "!*" : "*"),
                      Holding(kYesNo, CompareBoolValue, value, text))
                << wtext::ToUtf8(text);
        }
    }
}

// At the end of the day, since the time plays no part.
SYSTEMTIME DateOf(std::chrono::sys_days day) {
    const std::chrono::year_month_day date(day);
    return {static_cast<WORD>(static_cast<int>(date.year())),
            static_cast<WORD>(static_cast<unsigned>(date.month())),
            0,
            static_cast<WORD>(static_cast<unsigned>(date.day())),
            23,
            59,
            59,
            999};
}

std::string Holding(const SYSTEMTIME* date, const WCHAR* reference) {
    return Holding(kDates, CompareDateValue, date, reference);
}

TEST(ValueComparison, DatesAgainstADay) {
    struct Row {
        const WCHAR* reference;
        int year;
        unsigned month, day;
        const char* holds;
    };
    const Row rows[] = {
        {TEXT("2024 3 7"), 2024, 3, 7, "=et><wm*ay"},
        {TEXT("2024 3 7"), 2024, 3, 6, "!d<wm*a"},
        {TEXT("2024 3 7"), 2024, 3, 8, "!d>wm*a"},
        {TEXT("2024 3 10"), 2024, 3, 16, "!d>wm*a"},  // a Sunday begins its week
        {TEXT("2024 3 10"), 2024, 3, 17, "!d>m*a"},
        {TEXT("2024 3 10"), 2024, 3, 9, "!d<Wm*a"},
        {TEXT("2024 3 10"), 2024, 3, 3, "!d<Wm*a"},
        {TEXT("2024 3 10"), 2024, 3, 2, "!d<m*a"},
        {TEXT("2024 3 9"), 2024, 3, 3, "!d<wm*a"},  // and a Saturday ends it
        {TEXT("2024 1 31"), 2023, 12, 1, "!d<M*a"},
        {TEXT("2024 1 31"), 2024, 12, 1, "!d>*a"},
        {TEXT("2024 3 7"), 2023, 2, 7, "!d<*a"},
        {TEXT("2025 1 1"), 2024, 12, 29, "!d<wM*a"},
        {TEXT("2024 2 29"), 2024, 2, 29, "=et><wm*ay"},
        {TEXT("2024-03-07"), 2024, 3, 7, "=et><wm*ay"},  // as typed
        {TEXT("2024 3 7 12:30"), 2024, 3, 7, "=et><wm*ay"},
        {TEXT("2024 2 30"), 2024, 3, 1, "!d>*a"},  // no dates: before all
        {TEXT("soon"), 2024, 3, 7, "!d>*a"},
        {TEXT(" "), 2024, 3, 7, "!d>*a"},
    };
    for (const Row& row : rows) {
        const SYSTEMTIME date = DateOf(std::chrono::year(row.year) / row.month / row.day);
        EXPECT_EQ(row.holds, Holding(&date, row.reference))
            << wtext::ToUtf8(row.reference) << ": " << row.month << "/" << row.day;
    }
    const SYSTEMTIME none{2024, 0, 0, 7, 0, 0, 0, 0};
    EXPECT_EQ("!d", Holding(&none, TEXT("2024 3 7"))) << "a month 0 is no date";
    EXPECT_EQ("!d", Holding(nullptr, TEXT("")));
}

TEST(ValueComparison, DatesAgainstToday) {
    using namespace std::chrono;
    std::string wanted;
    std::string got;
    SYSTEMTIME before{};
    SYSTEMTIME behind{};
    do {  // again when midnight passed meanwhile
        GetLocalTime(&before);
        const sys_days today = year(before.wYear) / before.wMonth / before.wDay;
        const sys_days sunday = today - days(weekday(today).c_encoding());
        const auto month = year(before.wYear) / before.wMonth;
        wanted.clear();
        got.clear();
        for (int offset = -70; offset <= 20; ++offset) {
            const sys_days day = today + days(offset);
            const year_month_day date(day);
            std::string holds = offset == 0 ? "=et" : "!d";
            if (offset >= 0) holds += '>';
            if (offset <= 0) holds += '<';
            if (day >= sunday && day < sunday + days(7)) holds += 'w';
            if (day >= sunday - days(7) && day < sunday) holds += 'W';
            if (date.year() / date.month() == month) holds += 'm';
            if (date.year() / date.month() == month - months(1)) holds += 'M';
            const SYSTEMTIME value = DateOf(day);
            wanted += std::to_string(offset) + " " + holds + (offset == -1 ? "*ay\n" : "*a\n");
            got += std::to_string(offset) + " " + Holding(&value, TEXT("")) + "\n";
        }
        GetLocalTime(&behind);
    } while (behind.wDay != before.wDay);
    EXPECT_EQ(wanted, got);
}

TEST(ValueComparison, FileTypesOfOddNames) {
    const WText longName = TEXT("C:\\") + WText(300, 'x') + TEXT(".hpa");
    for (const WCHAR* part :
         {TEXT("a.hpa<view>"), TEXT("C:\\f\\.hpa"), TEXT(".hpa"), TEXT("a.hsb.hpa"), TEXT("A.HPa"),
          TEXT("a.\uFF48pa"), longName.c_str()}) {
        EXPECT_TRUE(CompareFileType(part, FILETYPE_PARTS)) << wtext::ToUtf8(part);
        EXPECT_FALSE(CompareFileType(part, FILETYPE_ASSEMBLIES)) << wtext::ToUtf8(part);
    }
    for (const WCHAR* other :
         {TEXT("a<b.hpa"), TEXT("C:\\f.hpa\\a"), TEXT("C:/f.hpa/a"), TEXT("hpa"), TEXT("a."),
          TEXT(""), TEXT("a.hpa.hsb"), TEXT("a.hpa "), TEXT("a.hp"), TEXT("a.hpax")}) {
        EXPECT_FALSE(CompareFileType(other, FILETYPE_PARTS)) << wtext::ToUtf8(other);
        EXPECT_TRUE(CompareFileType(other, FILETYPE_ALL)) << wtext::ToUtf8(other);
    }
}

TEST(ValueComparison, FileTypeFilter) {
    struct Row {
        std::vector<LONG> types;  // one or-group; with a negative one also the title is in it
        unsigned propSearchType;
        const char* passes;
    };
    const Row rows[] = {
        {{}, FILE_SEARCH_ANY, "hsb htm stpz cvw "},
        {{}, FILE_SEARCH_MODELS, "hsb "},
        {{}, FILE_SEARCH_OFFICE, "hsb htm "},
        {{}, FILE_SEARCH_IMPORT, "hsb htm stpz "},
        {{}, 9, "hsb htm stpz cvw "},
        {{FILETYPE_WIRE}, FILE_SEARCH_MODELS, "cvw "},  // a type wins over the class
        {{FILETYPE_HTML, FILETYPE_WIRE}, FILE_SEARCH_MODELS, "htm cvw "},
        {{COND_EQUALS}, FILE_SEARCH_ANY, ""},
        {{-1, FILETYPE_WIRE}, FILE_SEARCH_OFFICE, "hsb htm "},
    };
    for (const Row& row : rows) {
        // A criterion on another property in front is no file type.
        SRxCriteriaNode head(kTitle, COND_EQUALS, JOIN_AND, nullptr);
        SRxCriteriaNode* last = &head;
        for (const LONG type : row.types) {
            const LONG join = last == &head && type > 0 ? JOIN_AND : JOIN_OR;
            last->nextCriterion =
                new SRxCriteriaNode(type > 0 ? PROP_FILE_TYPE : kTitle, type, join, nullptr);
            last = last->nextCriterion;
        }
        const auto allowed = static_cast<eFileTypeSearch>(row.propSearchType);
        std::string passes;
        for (const char* extension : {"hsb", "htm", "stpz", "cvw"}) {
            const WText name = TEXT("a.") + wtext::FromUtf8(extension);
            if (PassesFileTypeFilter(&head, allowed, name.c_str())) {
                passes += std::string(extension) + " ";
            }
        }
        EXPECT_EQ(row.passes, passes) << row.propSearchType;
    }
}

}  // namespace
