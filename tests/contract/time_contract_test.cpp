// System time, file time, variant time, and dates as text in the user's locale.
#include <gtest/gtest.h>

#include "tests/contract/contract.h"

namespace {

SYSTEMTIME Moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                  int milliseconds = 0) {
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    time.wDayOfWeek = 9;  // never read
    time.wHour = static_cast<WORD>(hour);
    time.wMinute = static_cast<WORD>(minute);
    time.wSecond = static_cast<WORD>(second);
    time.wMilliseconds = static_cast<WORD>(milliseconds);
    return time;
}

bool SameMoment(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return a.wYear == b.wYear && a.wMonth == b.wMonth && a.wDay == b.wDay && a.wHour == b.wHour &&
           a.wMinute == b.wMinute && a.wSecond == b.wSecond && a.wMilliseconds == b.wMilliseconds;
}

std::uint64_t Ticks(const FILETIME& time) {
    return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

TEST(SystemTime, ToFileTimeAndBack) {
    struct Row {
        const char* label;
        SYSTEMTIME time;
        std::uint64_t ticks;
        int dayOfWeek;
    };
    const Row rows[] = {
        {"the first", Moment(1601, 1, 1), 0, 1},
        {"leap day", Moment(2024, 2, 29), 0x01DA6AA23CE90000u, 4},
        {"last of a day", Moment(2024, 1, 1, 23, 59, 59, 999), 133'486'271'999'990'000u, 1},
        {"the last", Moment(30827, 12, 31, 23, 59, 59, 999), 0x7FFF35F4F06C58F0u, 5},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        FILETIME file = Poison<FILETIME>();
        EXPECT_TRUE(SystemTimeToFileTime(&row.time, &file));
        EXPECT_EQ(row.ticks, Ticks(file));
        SYSTEMTIME back = Poison<SYSTEMTIME>();
        EXPECT_TRUE(FileTimeToSystemTime(&file, &back));
        EXPECT_TRUE(SameMoment(row.time, back));
        EXPECT_EQ(row.dayOfWeek, back.wDayOfWeek);
    }
}

TEST(SystemTime, RefusesWhatIsNoTime) {
    struct Row {
        SYSTEMTIME time;
        eGap gap = eGap::none;
    };
    const Row rows[] = {{Moment(1600, 12, 31)},
                        {Moment(30828, 1, 1), eGap::windows},
                        {Moment(2024, 13, 1)},
                        {Moment(2024, 2, 30)},
                        {Moment(2023, 2, 29), eGap::windows},
                        {Moment(2024, 1, 1, 0, 0, 0, 1000)}};
    for (const Row& row : rows) {
        FILETIME file = Poison<FILETIME>();
        const bool refused = SystemTimeToFileTime(&row.time, &file) == FALSE && IsPoison(file);
        KNOWN_GAP(row.gap, refused) << row.time.wYear << '-' << row.time.wMonth;
    }
}

// The test runs in the zone America/New_York.
TEST(SystemTime, LocalTimeFollowsTheRuleOfThatDate) {
    struct Row {
        SYSTEMTIME utc, local;
    };
    const Row rows[] = {{Moment(2024, 3, 1, 2), Moment(2024, 2, 29, 21)},
                        {Moment(2024, 3, 10, 6, 59, 59), Moment(2024, 3, 10, 1, 59, 59)},
                        {Moment(2024, 3, 10, 7), Moment(2024, 3, 10, 3)},
                        {Moment(2024, 11, 3, 6), Moment(2024, 11, 3, 1)}};
    for (const Row& row : rows) {
        SYSTEMTIME local = Poison<SYSTEMTIME>();
        EXPECT_TRUE(SystemTimeToTzSpecificLocalTime(nullptr, &row.utc, &local));
        EXPECT_TRUE(SameMoment(row.local, local)) << local.wDay << ". " << local.wHour;
    }
}

TEST(VariantTime, ToSystemTime) {
    struct Row {
        const char* label;
        double date;
        bool converts;
        SYSTEMTIME time;
        int dayOfWeek;
        eGap dayOfWeekGap = eGap::none;
    };
    const Row rows[] = {
        {"day 0", 0, true, Moment(1899, 12, 30), 6},
        {"negative fraction counts away from zero", -0.25, true, Moment(1899, 12, 30, 6), 6},
        {"the first", -657434, true, Moment(100, 1, 1), 5},
        {"before the first", -657435, false, {}, 0},
        {"the last", 2958465.99999, true, Moment(9999, 12, 31, 23, 59, 59), 5},
        {"past the last", 2958466, false, {}, 0},
        {"rounded to the second", 45358 + 1.6 / 86400, true, Moment(2024, 3, 7, 0, 0, 2), 4},
        {"rounded to the next day", 45358.999999, true, Moment(2024, 3, 8), 5, eGap::windows},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        SYSTEMTIME time = Poison<SYSTEMTIME>();
        EXPECT_EQ(row.converts, VariantTimeToSystemTime(row.date, &time) != 0);
        if (row.converts) {
            EXPECT_TRUE(SameMoment(row.time, time)) << time.wDay << ' ' << time.wSecond;
            KNOWN_GAP(row.dayOfWeekGap, row.dayOfWeek == time.wDayOfWeek) << time.wDayOfWeek;
        } else {
            EXPECT_TRUE(IsPoison(time));
        }
    }
}

using FormatCall = int(WINAPI*)(LCID, DWORD, const SYSTEMTIME*, LPCWSTR, LPWSTR, int);

TEST(DateText, Forms) {
    struct Row {
        const char* label;
        FormatCall call;
        DWORD flags;
        SYSTEMTIME time;
        LPCWSTR wanted;
    };
    const Row rows[] = {
        {"short", GetDateFormatW, DATE_SHORTDATE, Moment(2024, 3, 7), TEXT("3/7/2024")},
        {"long", GetDateFormatW, DATE_LONGDATE, Moment(2024, 3, 7),
         TEXT("Thursday, March 7, 2024")},
        {"afternoon", GetTimeFormatW, TIME_NOSECONDS, Moment(2024, 3, 7, 14, 5, 9),
         TEXT("2:05 PM")},
        {"midnight", GetTimeFormatW, TIME_NOSECONDS, Moment(2024, 3, 7), TEXT("12:00 AM")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        // Asked for the size first.
        const auto format = [&row](LPWSTR buffer, int size) {
            return row.call(LOCALE_NEUTRAL, row.flags, &row.time, nullptr, buffer, size);
        };
        const int size = format(nullptr, 0);
        ASSERT_LT(0, size);
        GuardedBuffer buffer(static_cast<std::size_t>(size));
        EXPECT_EQ(size, format(buffer.data(), size));
        EXPECT_EQ(wtext::ToUtf8(row.wanted), wtext::ToUtf8(buffer.Text()));
        EXPECT_TRUE(buffer.IsGuardWhole());
    }
}

}  // namespace
