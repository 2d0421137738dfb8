// A date as a criterion's value holds it: year, month and day in decimal with single blanks, the
// same in every regional setting.
#pragma once

#include "platform/wtext.h"

// The form of year, month and day of `date`.
WText StoredDateText(const SYSTEMTIME& date);

// Year, month and day, all else 0. False, and `date` all 0, for a text that isn't of that form;
// whether the calendar has the day isn't asked.
[[nodiscard]] bool ReadStoredDate(WTextView text, SYSTEMTIME& date);
