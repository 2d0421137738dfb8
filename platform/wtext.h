// UTF-16 text for both builds: the string type, the few operations that the C library has only for
// its own wide character, and conversion to and from UTF-8.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/system.h"

using WText = std::basic_string<WCHAR>;
using WTextView = std::basic_string_view<WCHAR>;

namespace wtext {

inline std::size_t Length(const WCHAR* text) {
    return std::char_traits<WCHAR>::length(text);
}

// Exact comparison, unit by unit; negative, 0 or positive.
int Compare(const WCHAR* a, const WCHAR* b);
// The lower-case letter of an ASCII letter, and any other unit itself.
inline WCHAR FoldAscii(WCHAR unit) {
    return unit >= 'A' && unit <= 'Z' ? static_cast<WCHAR>(unit + ('a' - 'A')) : unit;
}
// Without regard to the case of ASCII letters.
bool EqualsAsciiFold(WTextView a, WTextView b);

// Copies into a buffer of `cch` units, the terminator included. False and an empty text when it
// doesn't fit: a text is never cut.
[[nodiscard]] bool CopyWhole(WCHAR* buffer, std::size_t cch, WTextView text);

// Decimal digits, with a minus sign where needed.
WText FromNumber(long long value);

// `format` holds %s, %d, %u or %ld once or more; each is replaced by the next argument. A percent
// sign that begins none of these stands for itself, and a missing argument gives nothing.
WText Format(WTextView format, std::initializer_list<WTextView> arguments);

// Unpaired surrogates become U+FFFD.
std::string ToUtf8(WTextView text);
// Bytes that are no UTF-8 become U+FFFD; `*valid` (may be null) tells whether there were any.
WText FromUtf8(std::string_view bytes, bool* valid = nullptr);

}  // namespace wtext
