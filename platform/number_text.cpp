#include "platform/number_text.h"

#include <charconv>
#include <clocale>
#include <limits>
#include <string>

namespace {

bool IsSpace(WCHAR c) {
    return c == ' ' || (c >= 0x09 && c <= 0x0D);
}
bool IsDigit(WCHAR c) {
    return c >= '0' && c <= '9';
}

std::size_t CountSpaces(WTextView text) {
    std::size_t count = 0;
    while (count < text.size() && IsSpace(text[count]))
        ++count;
    return count;
}

WCHAR DecimalSeparator() {
    const WText text = wtext::FromUtf8(std::localeconv()->decimal_point);
    return text.empty() ? WCHAR{'.'} : text.front();
}

// Whatever could belong to a number, with the locale's separator as a point. Stops at the first
// other character, the point of another locale among them.
std::string Narrow(WTextView text) {
    const WCHAR separator = DecimalSeparator();
    std::string narrow;
    for (const WCHAR c : text) {
        if (c == separator) {
            narrow += '.';
        } else if (c == '.' || c <= ' ' || c >= 0x7F) {
            break;
        } else {
            narrow += static_cast<char>(c);
        }
    }
    return narrow;
}

// True when a decimal or hexadecimal number that no double can hold is too large, not too small.
// Either way its first digit other than 0, moved by the exponent, is far from the point.
bool IsHuge(const char* at, const char* end, bool hex) {
    const char exponentLetter = hex ? 'p' : 'e';
    const long long digitWeight = hex ? 4 : 1;
    long long magnitude = 0;
    bool significant = false;
    bool fraction = false;
    for (; at != end && (*at | 0x20) != exponentLetter; ++at) {
        if (*at == '.') {
            fraction = true;
            continue;
        }
        significant = significant || *at != '0';
        if (!fraction && significant) magnitude += digitWeight;
        if (fraction && !significant) magnitude -= digitWeight;
    }
    if (at != end) {
        ++at;
        const bool negative = *at == '-';
        if (*at == '-' || *at == '+') ++at;
        long long exponent = 0;
        for (; at != end; ++at) {
            if (exponent < std::numeric_limits<int>::max()) exponent = exponent * 10 + (*at - '0');
        }
        magnitude += negative ? -exponent : exponent;
    }
    return magnitude > 0;
}

// The number at the front of `narrow`, which has no sign; the characters read, 0 for none.
std::size_t ReadUnsigned(const std::string& narrow, double& value) {
    const char* begin = narrow.data();
    const char* end = begin + narrow.size();
    bool hex = narrow.size() > 2 && narrow[0] == '0' && (narrow[1] | 0x20) == 'x';
    // The conversion takes a sign of its own, which has been read already.
    const char* digits = hex ? begin + 2 : begin;
    if (digits == end || *digits == '-') hex = false, digits = begin;
    if (digits == end || *digits == '-') return 0;
    std::from_chars_result result = std::from_chars(
        digits, end, value, hex ? std::chars_format::hex : std::chars_format::general);
    const bool named = hex && result.ec != std::errc::invalid_argument &&
                       ((*digits | 0x20) == 'i' || (*digits | 0x20) == 'n');
    if (hex && (result.ec == std::errc::invalid_argument || named)) {
        // "0x" without a digit is the number 0.
        value = 0;
        return 1;
    }
    if (result.ec == std::errc::invalid_argument) return 0;
    if (result.ec == std::errc::result_out_of_range) {
        value = IsHuge(digits, result.ptr, hex) ? std::numeric_limits<double>::infinity() : 0;
    }
    return static_cast<std::size_t>(result.ptr - begin);
}

}  // namespace

bool SetUserLocale() {
    return std::setlocale(LC_ALL, "") != nullptr;
}

bool ParseReal(WTextView text, double& value, std::size_t& consumed) {
    value = 0;
    consumed = 0;
    std::size_t at = CountSpaces(text);
    const bool negative = at < text.size() && text[at] == '-';
    if (negative || (at < text.size() && text[at] == '+')) ++at;
    const std::size_t length = ReadUnsigned(Narrow(text.substr(at)), value);
    if (length == 0) return false;
    if (negative) value = -value;
    consumed = at + length;
    return true;
}

bool ParseInteger(WTextView text, LONG& value, std::size_t& consumed) {
    value = 0;
    consumed = 0;
    std::size_t at = CountSpaces(text);
    const bool negative = at < text.size() && text[at] == '-';
    if (negative || (at < text.size() && text[at] == '+')) ++at;
    const std::size_t first = at;
    constexpr long long kLeast = std::numeric_limits<LONG>::min();
    constexpr long long kMost = std::numeric_limits<LONG>::max();
    long long number = 0;
    for (; at < text.size() && IsDigit(text[at]); ++at) {
        if (number <= kMost) number = number * 10 + (text[at] - '0');
    }
    if (at == first) return false;
    if (negative) number = -number;
    value = static_cast<LONG>(number < kLeast ? kLeast : number > kMost ? kMost : number);
    consumed = at;
    return true;
}
