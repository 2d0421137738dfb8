// Whether one value of a file satisfies one criterion. No function knows of files; none knows a
// wildcard. A condition that a function's list lacks is false, but for texts of persons.
#pragma once

#include "criteria/user_names.h"
#include "platform/wtext.h"

// 2 to the power of -52.
inline constexpr double kSizeTolerance = 2.220446049250313e-16;
inline constexpr double kExactNumber = -1.0;

// `value` may be null: the file has none.
bool CompareStringValue(const WCHAR* value, const WCHAR* text, unsigned conditionId,
                        bool matchCase);
// Adds the conditions on presence and on the user's names.
bool CompareTextValue(const WCHAR* value, const WCHAR* text, unsigned conditionId, bool matchCase,
                      const SRxUserNames& users);
// A negative tolerance asks for exact equality; else equal means less than the tolerance apart.
bool CompareRealValues(double value, double target, unsigned conditionId, double tolerance);
// False for a text that is more than a number; an empty one is 0.
bool CompareRealText(double value, const WCHAR* text, unsigned conditionId, double tolerance);
bool CompareBoolValue(bool value, const WCHAR* text, unsigned conditionId);
// By calendar day in local time. A null or all-zero `value`: the file has no date. An empty `text`
// is today, taken anew at each call.
bool CompareDateValue(const SYSTEMTIME* value, const WCHAR* text, int conditionId);
