// Whether one value of a file satisfies one criterion. No function knows of files; none knows a
// wildcard. A condition that a function's list lacks is false, but for texts of persons.
#pragma once

#include "found/found_list.h"
#include "platform/wtext.h"

// Flags of CompareStringW. Kana type and width never count; hyphen and apostrophe are characters
// like others but in kFoldWord.
inline constexpr DWORD kFoldText =
    NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH | SORT_STRINGSORT;
inline constexpr DWORD kExactText = NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH | SORT_STRINGSORT;
inline constexpr DWORD kFoldWord = NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH;

// 2 to the power of -52.
inline constexpr double kSizeTolerance = 2.220446049250313e-16;
inline constexpr double kExactNumber = -1.0;

// `value` may be null: the file has none.
bool CompareStringValue(const SRxFoundList& list, const WCHAR* value, const WCHAR* text,
                        unsigned conditionId);
// Adds the conditions on presence and on the user's names.
bool CompareTextValue(const SRxFoundList& list, const WCHAR* value, const WCHAR* text,
                      unsigned conditionId);
// A negative tolerance asks for exact equality; else equal means less than the tolerance apart.
bool CompareRealValues(const SRxFoundList& list, double value, double target, unsigned conditionId,
                       double tolerance);
// False for a text that is more than a number; an empty one is 0.
bool CompareRealText(const SRxFoundList& list, double value, const WCHAR* text,
                     unsigned conditionId, double tolerance);
bool CompareBoolValue(const SRxFoundList& list, bool value, const WCHAR* text,
                      unsigned conditionId);
// By calendar day in local time. A null or all-zero `value`: the file has no date. An empty `text`
// is today, taken anew at each call.
bool CompareDateValue(const SRxFoundList& list, const SYSTEMTIME* value, const WCHAR* text,
                      int conditionId);

// By the extension alone; what follows a '<' is no part of the name.
bool CompareFileType(const SRxFoundList& list, const WCHAR* fileName, unsigned typeId);
// Whether reading the file's properties can matter.
bool PassesFileTypeFilter(SRxFoundList& list, const WCHAR* fileName);

// Under `flags` of CompareStringW; printable ASCII is compared without it.
bool TextsEqual(WTextView a, WTextView b, DWORD flags);
