// Native build: how the environment's locale (LC_ALL, LC_TIME, LANG) writes dates and times.
#pragma once

#include <string>

#include "platform/base/types.h"

enum class eDateStyle { shortDate, longDate, timeWithoutSeconds };

// The locale's ICU pattern in the shape that Windows has: a short date tells all four digits of the
// year, and blanks are plain ones. The locale C stands for American English. Empty on failure.
std::u16string DatePattern(eDateStyle style);

// `time` written in `pattern` with the locale's names. Empty on failure.
std::u16string WriteDate(const SYSTEMTIME& time, const std::u16string& pattern);
