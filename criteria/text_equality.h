// When two texts count as equal: for values of criteria, names of files, entries of lists.
#pragma once

#include "platform/wtext.h"

// Flags of CompareStringW. Kana type and width never count; hyphen and apostrophe are characters
// like others but in kFoldWord.
inline constexpr DWORD kFoldText =
    NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH | SORT_STRINGSORT;
inline constexpr DWORD kExactText = NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH | SORT_STRINGSORT;
inline constexpr DWORD kFoldWord = NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH;
// For names that the application gives: kana type counts.
inline constexpr DWORD kFoldName = NORM_IGNORECASE | NORM_IGNOREWIDTH;

// Under `flags` of CompareStringW; printable ASCII is compared without it. Throws std::bad_alloc
// where the system has no memory to compare.
bool TextsEqual(WTextView a, WTextView b, DWORD flags);
// An empty `text` is in no value.
bool ContainsText(WTextView value, WTextView text, DWORD flags);
