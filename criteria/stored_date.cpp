#include "criteria/stored_date.h"

namespace {

// A decimal number of at most 5 digits from the front of `text`, and the blank behind it.
bool TakeNumber(WTextView& text, WORD& number) {
    unsigned value = 0;
    std::size_t digits = 0;
    while (digits < text.size() && text[digits] >= '0' && text[digits] <= '9') {
        value = value * 10 + static_cast<unsigned>(text[digits] - '0');
        if (++digits > 5) return false;
    }
    if (digits == 0 || value > 0xFFFF) return false;
    number = static_cast<WORD>(value);
    text.remove_prefix(digits);
    if (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    return true;
}

}  // namespace

WText StoredDateText(const SYSTEMTIME& date) {
    return wtext::FromNumber(date.wYear) + TEXT(" ") + wtext::FromNumber(date.wMonth) + TEXT(" ") +
           wtext::FromNumber(date.wDay);
}

bool ReadStoredDate(WTextView text, SYSTEMTIME& date) {
    SYSTEMTIME read{};
    date = {};
    if (!TakeNumber(text, read.wYear) || !TakeNumber(text, read.wMonth) ||
        !TakeNumber(text, read.wDay) || !text.empty()) {
        return false;
    }
    date = read;
    return true;
}
