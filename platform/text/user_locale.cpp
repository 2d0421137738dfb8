#include "platform/text/user_locale.h"

#include <unicode/udat.h>
#include <unicode/uloc.h>

#include <cstdlib>
#include <memory>

#include "platform/text/calendar.h"

namespace {

constexpr char kAmericanEnglish[] = "en_US";
constexpr char16_t kUtc[] = u"UTC";

struct CloseFormat {
    void operator()(UDateFormat* format) const { udat_close(format); }
};
using DateFormat = std::unique_ptr<UDateFormat, CloseFormat>;

// With the Gregorian calendar and Latin digits, as Windows writes them whatever the language.
std::string LocaleName() {
    const char* name = nullptr;
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        name = std::getenv(variable);
        if (name != nullptr && *name != 0) break;
    }
    std::string locale = name == nullptr ? "" : name;
    locale = locale.substr(0, locale.find_first_of(".@"));
    if (locale.empty() || locale == "C" || locale == "POSIX") locale = kAmericanEnglish;
    return locale + "@calendar=gregorian;numbers=latn";
}

DateFormat OpenFormat(UDateFormatStyle time, UDateFormatStyle date, const std::u16string& pattern) {
    UErrorCode status = U_ZERO_ERROR;
    DateFormat format(udat_open(time, date, LocaleName().c_str(), kUtc, -1, pattern.data(),
                                static_cast<std::int32_t>(pattern.size()), &status));
    if (U_FAILURE(status)) format.reset();
    return format;
}

// Calls `get(buffer, capacity, status)` and once more when the text is longer.
template <typename Get>
std::u16string Collect(const Get& get) {
    std::u16string text(64, 0);
    for (int attempt = 0; attempt < 2; ++attempt) {
        UErrorCode status = U_ZERO_ERROR;
        const std::int32_t size = get(text.data(), static_cast<std::int32_t>(text.size()), &status);
        if (status != U_BUFFER_OVERFLOW_ERROR && U_FAILURE(status)) return {};
        const bool fits = static_cast<std::size_t>(size) <= text.size();
        text.resize(static_cast<std::size_t>(size));
        if (fits) return text;
    }
    return {};
}

void MakeBlanksPlain(std::u16string& text) {
    for (char16_t& c : text) {
        if (c == 0xA0 || c == 0x202F || (c >= 0x2002 && c <= 0x200A)) c = ' ';
    }
}

void WidenYear(std::u16string& pattern) {
    const std::size_t first = pattern.find(u'y');
    if (first == std::u16string::npos) return;
    const std::size_t next = pattern.find_first_not_of(u'y', first);
    const std::size_t length = (next == std::u16string::npos ? pattern.size() : next) - first;
    pattern.replace(first, length, u"yyyy");
}

}  // namespace

std::u16string DatePattern(eDateStyle style) {
    UDateFormatStyle time = UDAT_NONE;
    UDateFormatStyle date = UDAT_NONE;
    switch (style) {
        case eDateStyle::shortDate:
            date = UDAT_SHORT;
            break;
        case eDateStyle::longDate:
            date = UDAT_FULL;
            break;
        case eDateStyle::timeWithoutSeconds:
            time = UDAT_SHORT;
            break;
    }
    const DateFormat format = OpenFormat(time, date, u"");
    if (!format) return {};
    std::u16string pattern = Collect([&](char16_t* out, std::int32_t size, UErrorCode* status) {
        return udat_toPattern(format.get(), false, out, size, status);
    });
    MakeBlanksPlain(pattern);
    if (style == eDateStyle::shortDate) WidenYear(pattern);
    return pattern;
}

std::u16string WriteDate(const SYSTEMTIME& time, const std::u16string& pattern) {
    if (pattern.empty()) return {};
    const DateFormat format = OpenFormat(UDAT_PATTERN, UDAT_PATTERN, pattern);
    if (!format) return {};
    const std::int64_t seconds =
        DaysFromDate(time.wYear, time.wMonth, time.wDay) * kSecondsPerDay + SecondsOfDay(time);
    return Collect([&](char16_t* out, std::int32_t size, UErrorCode* status) {
        return udat_format(format.get(), static_cast<UDate>(seconds) * 1000, out, size, nullptr,
                           status);
    });
}
