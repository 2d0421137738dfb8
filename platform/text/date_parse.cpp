#include "platform/text/date_parse.h"

#include <array>
#include <string>

#include "platform/text/calendar.h"
#include "platform/text/text_api.h"
#include "platform/text/user_locale.h"

namespace {

constexpr std::size_t kMostDigits = 4;

// The places of year, month and day among the three numbers.
struct FieldOrder {
    std::size_t year;
    std::size_t month;
    std::size_t day;
};

struct ShortDate {
    FieldOrder order = {2, 0, 1};
    std::u16string separators;
};

// The order of the letters y, M and d in the locale's pattern, and what stands between them.
ShortDate UserShortDate() {
    ShortDate result;
    std::size_t fields = 0;
    char16_t last = 0;
    for (const char16_t c : DatePattern(eDateStyle::shortDate)) {
        if (c == last) continue;
        last = c;
        switch (c) {
            case 'y':
                result.order.year = fields++;
                break;
            case 'M':
                result.order.month = fields++;
                break;
            case 'd':
                result.order.day = fields++;
                break;
            default:
                result.separators += c;
        }
    }
    return fields == 3 ? result : ShortDate{};
}

bool IsDigit(char16_t c) {
    return c >= '0' && c <= '9';
}
bool IsBlank(char16_t c) {
    return c == ' ' || (c >= 0x09 && c <= 0x0D);
}
bool IsLetter(char16_t c, char letter) {
    return (c | 0x20) == letter;
}

class DateReader {
public:
    explicit DateReader(std::u16string_view text) : rest_(text) {}

    bool Read(DATE& date) {
        while (SkipBlanks(), !rest_.empty()) {
            if (!ReadPart()) return false;
        }
        if (separatorPending_ || (fields_ == 0 && !hasTime_)) return false;
        SYSTEMTIME moment = {};
        moment.wYear = 1899;
        moment.wMonth = 12;
        moment.wDay = 30;
        if (fields_ != 0 && (fields_ != numbers_.size() || !Arrange(moment))) return false;
        moment.wHour = time_.wHour;
        moment.wMinute = time_.wMinute;
        moment.wSecond = time_.wSecond;
        return VariantTimeOf(moment, date);
    }

private:
    char16_t Front() const { return rest_.empty() ? u'\0' : rest_.front(); }

    void SkipBlanks() {
        while (IsBlank(Front()))
            rest_.remove_prefix(1);
    }

    bool Skip(char16_t c) {
        if (Front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool ReadNumber(int& number) {
        std::size_t digits = 0;
        number = 0;
        while (digits <= kMostDigits && IsDigit(Front())) {
            number = number * 10 + (Front() - '0');
            rest_.remove_prefix(1);
            ++digits;
        }
        return digits != 0 && digits <= kMostDigits;
    }

    bool ReadPart() {
        if (IsSeparator(Front())) {
            // One between two numbers of the date.
            if (separatorPending_ || fields_ == 0 || fields_ == numbers_.size()) return false;
            separatorPending_ = true;
            rest_.remove_prefix(1);
            return true;
        }
        int number = 0;
        if (!ReadNumber(number)) return false;
        if (Front() == ':') return ReadTime(number);
        if (ReadHalfDay(number)) return SetTime(number, 0, 0);
        if (fields_ == numbers_.size()) return false;
        numbers_[fields_++] = number;
        separatorPending_ = false;
        return rest_.empty() || IsBlank(Front()) || IsSeparator(Front());
    }

    bool ReadTime(int hour) {
        int minute = 0;
        int second = 0;
        Skip(':');
        if (!ReadNumber(minute)) return false;
        if (Skip(':') && !ReadNumber(second)) return false;
        const std::u16string_view behind = rest_;
        if (!ReadHalfDay(hour)) rest_ = behind;
        return SetTime(hour, minute, second);
    }

    // AM or PM behind an hour: brings the hour to the clock of 24. An hour past 12 stays.
    bool ReadHalfDay(int& hour) {
        const std::u16string_view before = rest_;
        SkipBlanks();
        const bool morning = IsLetter(Front(), 'a');
        if ((morning || IsLetter(Front(), 'p')) && rest_.size() >= 2 && IsLetter(rest_[1], 'm') &&
            (rest_.size() == 2 || IsBlank(rest_[2]))) {
            rest_.remove_prefix(2);
            if (morning && hour == 12) hour = 0;
            if (!morning && hour < 12) hour += 12;
            return true;
        }
        rest_ = before;
        return false;
    }

    bool SetTime(int hour, int minute, int second) {
        if (hasTime_ || separatorPending_ || hour > 23 || minute > 59 || second > 59) return false;
        if (fields_ != 0 && fields_ != numbers_.size()) return false;
        hasTime_ = true;
        time_.wHour = static_cast<WORD>(hour);
        time_.wMinute = static_cast<WORD>(minute);
        time_.wSecond = static_cast<WORD>(second);
        return rest_.empty() || IsBlank(Front());
    }

    bool IsSeparator(char16_t c) const {
        if (c == '/' || c == '-' || c == ',') return true;
        return c == '.' && locale_.separators.find(c) != std::u16string::npos;
    }

    bool Arrange(SYSTEMTIME& moment) const {
        const FieldOrder orders[] = {locale_.order, {0, 1, 2}, {2, 0, 1}, {2, 1, 0}, {0, 2, 1}};
        for (const FieldOrder& order : orders) {
            const int year = FullYear(numbers_[order.year]);
            if (!IsDate(year, numbers_[order.month], numbers_[order.day])) continue;
            moment.wYear = static_cast<WORD>(year);
            moment.wMonth = static_cast<WORD>(numbers_[order.month]);
            moment.wDay = static_cast<WORD>(numbers_[order.day]);
            return true;
        }
        return false;
    }

    static int FullYear(int year) {
        if (year >= 100) return year;
        return year < 50 ? year + 2000 : year + 1900;
    }

    std::u16string_view rest_;
    const ShortDate locale_ = UserShortDate();
    std::array<int, 3> numbers_{};
    std::size_t fields_ = 0;
    bool separatorPending_ = false;
    bool hasTime_ = false;
    SYSTEMTIME time_ = {};
};

}  // namespace

bool ParseDate(std::u16string_view text, DATE& date) {
    return DateReader(text).Read(date);
}
