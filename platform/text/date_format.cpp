// Native build: GetDateFormatW and GetTimeFormatW for the user's locale.
#include <string>

#include "platform/text/calendar.h"
#include "platform/text/text_api.h"
#include "platform/text/user_locale.h"

namespace {

int FailWith(DWORD error) {
    SetLastError(error);
    return 0;
}

bool IsUserLocale(LCID locale) {
    return locale == LOCALE_USER_DEFAULT || locale == LOCALE_NEUTRAL;
}

int PutText(const std::u16string& text, LPWSTR buffer, int cchBuffer) {
    if (text.empty()) return FailWith(ERROR_GEN_FAILURE);
    const int needed = static_cast<int>(text.size()) + 1;
    if (cchBuffer == 0) return needed;
    if (cchBuffer < needed) return FailWith(ERROR_INSUFFICIENT_BUFFER);
    text.copy(buffer, text.size());
    buffer[text.size()] = 0;
    return needed;
}

// What both calls ask of their arguments; ERROR_SUCCESS when they are in order.
DWORD CheckCall(LCID locale, bool knownFlags, LPCWSTR format, LPCWSTR buffer, int cchBuffer) {
    if (cchBuffer < 0 || (cchBuffer > 0 && buffer == nullptr) || !IsUserLocale(locale)) {
        return ERROR_INVALID_PARAMETER;
    }
    return knownFlags && format == nullptr ? ERROR_SUCCESS : ERROR_INVALID_FLAGS;
}

}  // namespace

int GetDateFormatW(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCWSTR format, LPWSTR buffer,
                   int cchBuffer) {
    const bool knownFlags = flags == DATE_SHORTDATE || flags == DATE_LONGDATE;
    const DWORD error = CheckCall(locale, knownFlags, format, buffer, cchBuffer);
    if (error != ERROR_SUCCESS) return FailWith(error);
    SYSTEMTIME day = {};
    if (date != nullptr) {
        day = *date;
    } else {
        GetLocalTime(&day);
    }
    // The time of day doesn't count here, nor need it be one.
    day.wHour = day.wMinute = day.wSecond = day.wMilliseconds = 0;
    if (!IsSystemTime(day)) return FailWith(ERROR_INVALID_PARAMETER);
    const eDateStyle style = flags == DATE_LONGDATE ? eDateStyle::longDate : eDateStyle::shortDate;
    return PutText(WriteDate(day, DatePattern(style)), buffer, cchBuffer);
}

int GetTimeFormatW(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCWSTR format, LPWSTR buffer,
                   int cchBuffer) {
    const DWORD error = CheckCall(locale, flags == TIME_NOSECONDS, format, buffer, cchBuffer);
    if (error != ERROR_SUCCESS) return FailWith(error);
    SYSTEMTIME moment = {};
    if (time != nullptr) {
        moment = *time;
    } else {
        GetLocalTime(&moment);
    }
    if (!IsTimeOfDay(moment)) return FailWith(ERROR_INVALID_PARAMETER);
    // The date doesn't count here, nor need it be one.
    moment.wYear = 2000;
    moment.wMonth = moment.wDay = 1;
    return PutText(WriteDate(moment, DatePattern(eDateStyle::timeWithoutSeconds)), buffer,
                   cchBuffer);
}
