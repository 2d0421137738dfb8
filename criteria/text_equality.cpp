#include "criteria/text_equality.h"

#include <algorithm>
#include <new>

namespace {

bool IsPrintableAscii(WTextView text) {
    for (const WCHAR unit : text) {
        if (unit < 0x20 || unit > 0x7E) return false;
    }
    return true;
}

bool AsciiEqual(WTextView a, WTextView b, bool ignoreCase) {
    return ignoreCase ? wtext::EqualsAsciiFold(a, b) : a == b;
}

// Without memory for it the system can't tell: that is no difference.
bool SystemEqual(WTextView a, WTextView b, DWORD flags) {
    const int order =
        CompareStringW(LOCALE_USER_DEFAULT, flags, a.data(), static_cast<int>(a.size()), b.data(),
                       static_cast<int>(b.size()));
    if (order == 0 && GetLastError() != ERROR_INVALID_PARAMETER) throw std::bad_alloc();
    return order == CSTR_EQUAL;
}

struct UnitRange {
    WCHAR first;
    WCHAR last;
};
// Characters that no comparison takes for ASCII, whatever stands beside them: accents count, and
// these are no wide forms and stand for no two letters, as the sharp s and thorn do.
constexpr UnitRange kForeign[] = {
    // Copyright and registered signs.
    {0x00A9, 0x00A9},
    {0x00AE, 0x00AE},
    // Latin letters with accents.
    {0x00C0, 0x00C5},
    {0x00C7, 0x00CF},
    {0x00D1, 0x00D6},
    {0x00D8, 0x00DD},
    {0x00E0, 0x00E5},
    {0x00E7, 0x00EF},
    {0x00F1, 0x00F6},
    {0x00F8, 0x00FD},
    {0x00FF, 0x00FF},
    // Greek, Cyrillic, Hebrew.
    {0x03B1, 0x03C9},
    {0x0400, 0x045F},
    {0x05D0, 0x05EA},
    // Dashes and quotation marks.
    {0x2013, 0x2014},
    {0x2018, 0x2019},
    {0x201C, 0x201E},
    // Kana, ideographs, Hangul.
    {0x3041, 0x3096},
    {0x30A1, 0x30FA},
    {0x4E00, 0x9FA5},
    {0xAC00, 0xD7A3},
};

bool IsForeign(WCHAR unit) {
    return std::any_of(std::begin(kForeign), std::end(kForeign), [unit](const UnitRange& range) {
        return unit >= range.first && unit <= range.last;
    });
}

bool IsForeignTo(WTextView ascii, WTextView text) {
    return std::any_of(text.begin(), text.end(), IsForeign) && IsPrintableAscii(ascii);
}

}  // namespace

// Printable ASCII has no two characters that are equal but for case when hyphen and apostrophe
// count (SORT_STRINGSORT), so a plain loop answers as CompareStringW does, ten times as fast. And
// natively the first call of that one builds a collation, which takes longer than 100 documents.
bool TextsEqual(WTextView a, WTextView b, DWORD flags) {
    if ((flags & SORT_STRINGSORT) != 0) {
        if (IsPrintableAscii(a) && IsPrintableAscii(b)) {
            return AsciiEqual(a, b, (flags & NORM_IGNORECASE) != 0);
        }
        if (IsForeignTo(a, b) || IsForeignTo(b, a)) return false;
    }
    return SystemEqual(a, b, flags);
}

bool ContainsText(WTextView value, WTextView text, DWORD flags) {
    if (text.empty() || value.size() < text.size()) return false;
    const bool ascii = IsPrintableAscii(text) && IsPrintableAscii(value);
    const bool ignoreCase = (flags & NORM_IGNORECASE) != 0;
    const WCHAR first = wtext::FoldAscii(text.front());
    for (std::size_t at = 0; at + text.size() <= value.size(); ++at) {
        if (ascii && wtext::FoldAscii(value[at]) != first) continue;
        const WTextView window = value.substr(at, text.size());
        if (ascii ? AsciiEqual(window, text, ignoreCase) : TextsEqual(window, text, flags)) {
            return true;
        }
    }
    return false;
}
