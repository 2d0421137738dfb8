// Native build: the clock and the conversions between system time, file time and variant time.
#include <time.h>

#include <cmath>

#include "platform/text/calendar.h"
#include "platform/text/text_api.h"

namespace {

constexpr std::int64_t kDaysFrom1899To1970 = 25'569;
constexpr double kFirstVariantDay = -657'434;  // year 100
constexpr double kLastVariantDay = 2'958'465;  // year 9999
constexpr int kFirstYearOfLastCentury = 50;    // two digits: 50 to 99 mean 1950 to 1999

void SetTimeOfDay(SYSTEMTIME& time, std::int64_t seconds) {
    time.wHour = static_cast<WORD>(seconds / 3600);
    time.wMinute = static_cast<WORD>(seconds / 60 % 60);
    time.wSecond = static_cast<WORD>(seconds % 60);
}

SYSTEMTIME FromBrokenDown(const struct tm& parts, WORD milliseconds) {
    SYSTEMTIME time = {};
    time.wYear = static_cast<WORD>(parts.tm_year + 1900);
    time.wMonth = static_cast<WORD>(parts.tm_mon + 1);
    time.wDayOfWeek = static_cast<WORD>(parts.tm_wday);
    time.wDay = static_cast<WORD>(parts.tm_mday);
    time.wHour = static_cast<WORD>(parts.tm_hour);
    time.wMinute = static_cast<WORD>(parts.tm_min);
    time.wSecond = static_cast<WORD>(parts.tm_sec);
    time.wMilliseconds = milliseconds;
    return time;
}

// The broken-down local time by the rule that TZ gives for that moment.
bool ToLocal(time_t moment, struct tm& parts) {
    tzset();
    return localtime_r(&moment, &parts) != nullptr;
}

BOOL FailWith(DWORD error) {
    SetLastError(error);
    return FALSE;
}

}  // namespace

void GetLocalTime(SYSTEMTIME* now) {
    struct timespec moment = {};
    struct tm parts = {};
    clock_gettime(CLOCK_REALTIME, &moment);
    ToLocal(moment.tv_sec, parts);
    *now = FromBrokenDown(parts, static_cast<WORD>(moment.tv_nsec / 1'000'000));
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* time, FILETIME* result) {
    if (!IsSystemTime(*time)) return FailWith(ERROR_INVALID_PARAMETER);
    const std::int64_t days =
        DaysFromDate(time->wYear, time->wMonth, time->wDay) + kDaysFrom1601To1970;
    const std::int64_t ticks = (days * kSecondsPerDay + SecondsOfDay(*time)) * kTicksPerSecond +
                               time->wMilliseconds * (kTicksPerSecond / 1000);
    result->dwLowDateTime = static_cast<DWORD>(ticks);
    result->dwHighDateTime = static_cast<DWORD>(ticks >> 32);
    return TRUE;
}

BOOL FileTimeToSystemTime(const FILETIME* time, SYSTEMTIME* result) {
    if (time->dwHighDateTime >= 0x80000000u) return FailWith(ERROR_INVALID_PARAMETER);
    const std::int64_t ticks =
        static_cast<std::int64_t>(time->dwHighDateTime) << 32 | time->dwLowDateTime;
    const std::int64_t seconds = ticks / kTicksPerSecond;
    *result = DateFromDays(seconds / kSecondsPerDay - kDaysFrom1601To1970);
    SetTimeOfDay(*result, seconds % kSecondsPerDay);
    result->wMilliseconds = static_cast<WORD>(ticks % kTicksPerSecond / (kTicksPerSecond / 1000));
    return TRUE;
}

BOOL SystemTimeToTzSpecificLocalTime(const TIME_ZONE_INFORMATION* zone, const SYSTEMTIME* utc,
                                     SYSTEMTIME* local) {
    if (zone != nullptr) return FailWith(ERROR_NOT_SUPPORTED);
    if (!IsSystemTime(*utc)) return FailWith(ERROR_INVALID_PARAMETER);
    const std::int64_t days = DaysFromDate(utc->wYear, utc->wMonth, utc->wDay);
    struct tm parts = {};
    if (!ToLocal(days * kSecondsPerDay + SecondsOfDay(*utc), parts)) {
        return FailWith(ERROR_INVALID_PARAMETER);
    }
    const SYSTEMTIME shifted = FromBrokenDown(parts, utc->wMilliseconds);
    if (!IsSystemTime(shifted)) return FailWith(ERROR_INVALID_PARAMETER);
    *local = shifted;
    return TRUE;
}

bool VariantTimeOf(const SYSTEMTIME& time, double& result) {
    if (time.wMonth > 12 || time.wDay > 31 || time.wYear > 9999) return false;
    int year = time.wYear;
    if (year < kFirstYearOfLastCentury) {
        year += 2000;
    } else if (year < 100) {
        year += 1900;
    }
    // A month 0 and a day outside its month run over, as on Windows.
    const int month = time.wMonth == 0 ? 12 : time.wMonth;
    if (time.wMonth == 0) --year;
    const std::int64_t seconds = SecondsOfDay(time);
    const std::int64_t days =
        DaysFromDate(year, month, time.wDay) + kDaysFrom1899To1970 + seconds / kSecondsPerDay;
    const double fraction =
        static_cast<double>(seconds % kSecondsPerDay) / static_cast<double>(kSecondsPerDay);
    // The fraction counts away from zero: noon of the day before day 0 is -1.5.
    const double date = static_cast<double>(days) + (days < 0 ? -fraction : fraction);
    if (date <= kFirstVariantDay - 1 || date >= kLastVariantDay + 1) return false;
    result = date;
    return true;
}

INT VariantTimeToSystemTime(DATE date, SYSTEMTIME* result) {
    if (!(date > kFirstVariantDay - 1 && date < kLastVariantDay + 1)) return FALSE;
    double day = 0;
    const double fraction = std::fabs(std::modf(date, &day));
    std::int64_t days = static_cast<std::int64_t>(day) - kDaysFrom1899To1970;
    std::int64_t seconds = std::llround(fraction * static_cast<double>(kSecondsPerDay));
    if (seconds == kSecondsPerDay) {
        ++days;
        seconds = 0;
    }
    *result = DateFromDays(days);
    SetTimeOfDay(*result, seconds);
    return TRUE;
}
