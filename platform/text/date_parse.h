// Native build: dates as people type them.
#pragma once

#include <string_view>

#include "platform/base/types.h"

// Reads three numbers for year, month and day, or a time of day, or both; blanks around them don't
// count. The numbers stand apart by blanks, '/', '-', ',' or the locale's own separator. They are
// taken in the first of these orders in which they make a date: the locale's short date, year month
// day, month day year, day month year, year day month. Years of one or two digits lie between 1950
// and 2049. False when the text is anything else; `date` is then left alone.
[[nodiscard]] bool ParseDate(std::u16string_view text, DATE& date);
