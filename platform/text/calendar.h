// Native build: days and dates of the Gregorian calendar, carried back before its introduction.
#pragma once

#include <chrono>
#include <cstdint>

#include "platform/base/types.h"

inline constexpr std::int64_t kTicksPerSecond = 10'000'000;  // a file time counts 100 ns
inline constexpr std::int64_t kSecondsPerDay = 86'400;
inline constexpr std::int64_t kDaysFrom1601To1970 = 134'774;

inline bool IsDate(int year, int month, int day) {
    using std::chrono::year_month_day;
    return month >= 0 && day >= 0 &&
           year_month_day(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                          std::chrono::day(static_cast<unsigned>(day)))
               .ok();
}

// Days since 1970-01-01. A month of 1 to 12 is needed; a day outside the month runs over.
inline std::int64_t DaysFromDate(int year, int month, int day) {
    const std::chrono::sys_days first =
        std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) / 1;
    return first.time_since_epoch().count() + day - 1;
}

// The date and the day of the week; the time of day is set to 0.
inline SYSTEMTIME DateFromDays(std::int64_t days) {
    const std::chrono::sys_days point{std::chrono::days(days)};
    const std::chrono::year_month_day date(point);
    SYSTEMTIME result = {};
    result.wYear = static_cast<WORD>(static_cast<int>(date.year()));
    result.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
    result.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
    result.wDayOfWeek = static_cast<WORD>(std::chrono::weekday(point).c_encoding());
    return result;
}

inline bool IsTimeOfDay(const SYSTEMTIME& time) {
    return time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60 && time.wMilliseconds < 1000;
}

// The years that a file time is documented for, and a date and time of day that exist.
inline bool IsSystemTime(const SYSTEMTIME& time) {
    return time.wYear >= 1601 && time.wYear <= 30827 &&
           IsDate(time.wYear, time.wMonth, time.wDay) && IsTimeOfDay(time);
}

inline std::int64_t SecondsOfDay(const SYSTEMTIME& time) {
    return (time.wHour * 60 + time.wMinute) * 60 + time.wSecond;
}

// Days since 1899-12-30 with the time of day as the fraction; two digits of a year are a year of
// this or the last century, and a day outside its month runs over. False for a date that such a
// number can't hold.
bool VariantTimeOf(const SYSTEMTIME& time, double& result);
