#include <cstdint>

#include "criteria/stored_date.h"
#include "outside/md_small_aids.h"
#include "resource/string_ids.h"
#include "search/value_comparison.h"

namespace {

// In the 100-nanosecond ticks of a FILETIME. A week runs from Sunday to Saturday.
constexpr std::int64_t kDayTicks = 864000000000;
constexpr std::int64_t kSixDayTicks = 6 * kDayTicks;
constexpr int kMonths = 12;

// Midnight of the date's day; 0 for what is no date.
std::int64_t DayTicks(const SYSTEMTIME& date) {
    SYSTEMTIME midnight = date;
    midnight.wHour = midnight.wMinute = midnight.wSecond = midnight.wMilliseconds = 0;
    FILETIME ticks;
    if (!SystemTimeToFileTime(&midnight, &ticks)) return 0;
    return (static_cast<std::int64_t>(ticks.dwHighDateTime) << 32) | ticks.dwLowDateTime;
}

SYSTEMTIME DateOfTicks(std::int64_t ticks) {
    const FILETIME time = {static_cast<DWORD>(ticks & 0xFFFFFFFF), static_cast<DWORD>(ticks >> 32)};
    SYSTEMTIME date{};
    if (!FileTimeToSystemTime(&time, &date)) return {};
    return date;
}

// Read here and not by the system, so that no regional setting takes part.
bool ParseStoredDate(WTextView text, SYSTEMTIME& date) {
    SYSTEMTIME read;
    if (!ReadStoredDate(text, read)) return false;
    const std::int64_t ticks = DayTicks(read);
    if (read.wYear < 100 || ticks == 0) return false;
    date = DateOfTicks(ticks);  // with its day of the week
    return true;
}

bool ParseTypedDate(const WCHAR* text, SYSTEMTIME& date) {
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(text);
    const HRESULT status =
        value.bstrVal != nullptr ? VariantChangeType(&value, &value, 0, VT_DATE) : E_OUTOFMEMORY;
    if (SUCCEEDED(status)) SysTimeFromOleDate(value.date, &date);
    VariantClear(&value);
    return SUCCEEDED(status);
}

SYSTEMTIME ReferenceDate(const WCHAR* text, int conditionId) {
    SYSTEMTIME date{};
    if (*text == 0) {
        GetLocalTime(&date);
        if (conditionId == COND_YESTERDAY) date = DateOfTicks(DayTicks(date) - kDayTicks);
    } else if (!ParseStoredDate(text, date) && !ParseTypedDate(text, date)) {
        date = SYSTEMTIME{};
    }
    return date;
}

bool IsMonthBefore(const SYSTEMTIME& date, const SYSTEMTIME& reference) {
    const bool january = reference.wMonth <= 1;
    const int year = reference.wYear - (january ? 1 : 0);
    const int month = january ? kMonths : reference.wMonth - 1;
    return date.wYear == year && date.wMonth == month;
}

}  // namespace

bool CompareDateValue(const SYSTEMTIME* value, const WCHAR* text, int conditionId) {
    if (value == nullptr || value->wMonth == 0) {
        return conditionId == COND_DIFFERS || conditionId == COND_NOT_ON_DATE;
    }
    const SYSTEMTIME reference = ReferenceDate(text, conditionId);
    const std::int64_t day = DayTicks(*value);
    const std::int64_t wanted = DayTicks(reference);
    const std::int64_t sunday = wanted - reference.wDayOfWeek * kDayTicks;
    switch (conditionId) {
        case COND_ANY_DATE:
        case COND_ANY_VALUE:
            return true;
        case COND_EQUALS:
        case COND_ON_DATE:
        case COND_TODAY:
        case COND_YESTERDAY:
            return day == wanted;
        case COND_DIFFERS:
        case COND_NOT_ON_DATE:
            return day != wanted;
        case COND_ON_OR_AFTER:
            return day >= wanted;
        case COND_ON_OR_BEFORE:
            return day <= wanted;
        case COND_THIS_MONTH:
            return value->wYear == reference.wYear && value->wMonth == reference.wMonth;
        case COND_LAST_MONTH:
            return IsMonthBefore(*value, reference);
        case COND_THIS_WEEK:
            return sunday <= day && day <= sunday + kSixDayTicks;
        case COND_LAST_WEEK:
            return sunday - kDayTicks - kSixDayTicks <= day && day <= sunday - kDayTicks;
        default:
            return false;
    }
}
