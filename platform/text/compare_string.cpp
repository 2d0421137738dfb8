// Native build: CompareStringW, and LCMapStringW for keys that sort alike. Plain ASCII is compared
// through a table without a copy; any other text goes to an ICU collator whose rules put the same
// table in front of the root order.
//
// What Windows does otherwise than a plain collation is made here: forms of another width count as
// the usual ones, with and without case; a word sort passes over hyphens and apostrophes until all
// else is equal; small kana, circled, raised and styled characters are not their plain ones; and
// without NORM_IGNOREKANATYPE hiragana and katakana differ.
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

#include <array>
#include <cstddef>
#include <memory>
#include <new>

#include "platform/text/collator.h"
#include "platform/text/compare_order.h"
#include "platform/text/text_api.h"

namespace {

using platform::Collator;

struct Span {
    const WCHAR* begin;
    const WCHAR* end;  // null: up to the terminator
};

// What the fast path found. Undecided: something other than ASCII stands in the way.
enum class eOutcome { undecided, less, equal, greater };

eOutcome FromDifference(int difference) {
    if (difference == 0) return eOutcome::equal;
    return difference < 0 ? eOutcome::less : eOutcome::greater;
}

bool IsWordMark(WCHAR c) {
    return c == '-' || c == '\'';
}

constexpr WCHAR kFirstForm = 0xFF00;
constexpr std::size_t kForms = 0xF0;
constexpr WCHAR kIdeographicSpace = 0x3000;

// The usual form of each full-width and half-width character, as Unicode gives it.
std::array<WCHAR, kForms> UsualForms() {
    std::array<WCHAR, kForms> usual{};
    UErrorCode opening = U_ZERO_ERROR;
    const UNormalizer2* normalizer = unorm2_getNFKCInstance(&opening);
    for (std::size_t i = 0; i < kForms; ++i) {
        const auto c = static_cast<WCHAR>(kFirstForm + i);
        WCHAR form = 0;
        UErrorCode status = opening;
        const std::int32_t length = unorm2_getRawDecomposition(normalizer, c, &form, 1, &status);
        usual[i] = length == 1 ? form : c;
    }
    return usual;
}

// A character of another width becomes the usual one.
WCHAR FoldWidth(WCHAR c) {
    if (c == kIdeographicSpace) return ' ';
    if (c < kFirstForm || c >= kFirstForm + kForms) return c;
    static const std::array<WCHAR, kForms> usual = UsualForms();
    return usual[c - kFirstForm];
}

WCHAR UnitAt(const WCHAR* at, const WCHAR* end) {
    return at == end ? WCHAR{0} : *at;
}

// ASCII save NUL.
bool IsPlainAscii(WCHAR c) {
    return c - 1u < 0x7Fu;
}

// True where a text really ends; an embedded NUL of a counted text is no end.
bool IsEnd(const WCHAR* at, const WCHAR* end) {
    return end == nullptr || at == end;
}

// Each letter's case in a text that equals another but for case; upper is greater.
int CaseRank(WCHAR c) {
    return c >= 'A' && c <= 'Z' ? 1 : 0;
}

template <bool kWordSort, bool kMatchCase>
eOutcome CompareAscii(Span left, Span right) {
    const WCHAR* a = left.begin;
    const WCHAR* b = right.begin;
    int tie = 0;  // the first difference that counts only when all else is equal
    for (;;) {
        // Equal units first, which most names begin with.
        while (a != left.end && b != right.end && *a == *b && IsPlainAscii(*a))
            ++a, ++b;
        const WCHAR x = UnitAt(a, left.end);
        const WCHAR y = UnitAt(b, right.end);
        if ((x | y) >= 0x80) return eOutcome::undecided;
        if constexpr (kWordSort) {
            // Where only one text has a mark, that one is greater; of two marks the hyphen is.
            const bool markX = IsWordMark(x);
            const bool markY = IsWordMark(y);
            if (markX || markY) {
                if (tie == 0) tie = markX && markY ? (x == '-') - (y == '-') : markX - markY;
                a += markX;
                b += markY;
                continue;
            }
        }
        if (x == 0 || y == 0) {
            if (x == 0 && !IsEnd(a, left.end)) return eOutcome::undecided;
            if (y == 0 && !IsEnd(b, right.end)) return eOutcome::undecided;
            if (x == y) return FromDifference(tie);
            return x == 0 ? eOutcome::less : eOutcome::greater;
        }
        if (x != y) {
            const int difference = kAsciiRank[x] - kAsciiRank[y];
            if (difference != 0) return FromDifference(difference);
            if constexpr (kMatchCase) {
                if (tie == 0) tie = CaseRank(x) - CaseRank(y);
            }
        }
        ++a;
        ++b;
    }
}

// Throws, so that the next comparison tries again.
Collator OpenCollator(UColAttributeValue caseLevel) {
    Collator collator = platform::OpenTableCollator();
    if (collator == nullptr) collator = platform::OpenRulesCollator();
    UErrorCode status = U_ZERO_ERROR;
    if (collator) ucol_setAttribute(collator.get(), UCOL_CASE_LEVEL, caseLevel, &status);
    if (collator == nullptr || U_FAILURE(status)) throw std::bad_alloc();
    return collator;
}

// Opened at the first text that needs it. Null when ICU has no data, or no memory.
const UCollator* CollatorFor(bool matchCase) try {
    if (matchCase) {
        static const Collator exact = OpenCollator(UCOL_ON);
        return exact.get();
    }
    static const Collator folding = OpenCollator(UCOL_OFF);
    return folding.get();
} catch (const std::bad_alloc&) {
    return nullptr;
}

// A text as the collator gets it: full width folded, and in a word sort without its marks. File
// names fit the fixed part.
class PreparedText {
public:
    PreparedText(Span text, bool dropMarks) {
        const std::size_t size = static_cast<std::size_t>(text.end - text.begin);
        WCHAR* out = fixed_.data();
        if (size > fixed_.size()) {
            large_ = std::make_unique<WCHAR[]>(size);
            out = large_.get();
        }
        begin_ = out;
        for (const WCHAR* at = text.begin; at != text.end; ++at) {
            const WCHAR c = FoldWidth(*at);
            if (!dropMarks || !IsWordMark(c)) *out++ = c;
        }
        size_ = static_cast<std::int32_t>(out - begin_);
    }

    const WCHAR* data() const { return begin_; }
    std::int32_t size() const { return size_; }

private:
    std::array<WCHAR, 300> fixed_;
    std::unique_ptr<WCHAR[]> large_;
    const WCHAR* begin_ = nullptr;
    std::int32_t size_ = 0;
};

// The marks of two texts that are equal without them; see CompareAscii.
int CompareMarks(Span left, Span right) {
    const WCHAR* a = left.begin;
    const WCHAR* b = right.begin;
    while (a != left.end || b != right.end) {
        const WCHAR x = FoldWidth(UnitAt(a, left.end));
        const WCHAR y = FoldWidth(UnitAt(b, right.end));
        const bool markX = IsWordMark(x);
        const bool markY = IsWordMark(y);
        if (markX != markY) return markX - markY;
        if (markX && x != y) return x == '-' ? 1 : -1;
        if (a != left.end) ++a;
        if (b != right.end) ++b;
    }
    return 0;
}

// Small forms, in both kana at the same distance from the first letter.
bool IsSmallKana(WCHAR c) {
    const WCHAR hiragana = c >= 0x30A1 && c <= 0x30F6 ? static_cast<WCHAR>(c - 0x60) : c;
    switch (hiragana) {
        case 0x3041:
        case 0x3043:
        case 0x3045:
        case 0x3047:
        case 0x3049:
        case 0x3063:
        case 0x3083:
        case 0x3085:
        case 0x3087:
        case 0x308E:
        case 0x3095:
        case 0x3096:
            return true;
        default:
            return false;
    }
}

// Ranks the forms of one kana from least to greatest; 0 for what is no kana.
int KanaRank(WCHAR c, bool bySyllabary) {
    const bool hiragana = c >= 0x3041 && c <= 0x3096;
    const bool katakana = c >= 0x30A1 && c <= 0x30FA;
    if (!hiragana && !katakana) return 0;
    return 1 + (IsSmallKana(c) ? 0 : 1) + (bySyllabary && hiragana ? 2 : 0);
}

// Circled, raised, lowered and styled characters sort behind the plain one; 0 for any other.
int StyleRank(UChar32 c) {
    // Most letters are known to have no such form; asking for each would be slow.
    if (c < 0xAA || (c >= 0xC0 && c < 0x2B0) || (c >= 0x300 && c < 0x1000)) return 0;
    switch (u_getIntPropertyValue(c, UCHAR_DECOMPOSITION_TYPE)) {
        case U_DT_CIRCLE:
        case U_DT_FONT:
        case U_DT_SQUARE:
        case U_DT_SUB:
        case U_DT_SUPER:
            return static_cast<int>(u_tolower(c));
        case U_DT_COMPAT:
            // Signs such as that of degrees Celsius, and the micro sign; but not ligatures.
            return (c >= 0x2100 && c <= 0x214F) || c == 0xB5 ? static_cast<int>(c) : 0;
        default:
            return 0;
    }
}

// Steps through the characters of a text that `rank` ranks, one rank at a time; 0 at the end.
template <typename Rank>
int NextRank(const PreparedText& text, std::int32_t& at, const Rank& rank) {
    while (at < text.size()) {
        UChar32 c = 0;
        U16_NEXT(text.data(), at, text.size(), c);
        if (const int found = rank(c); found != 0) return found;
    }
    return 0;
}

// The first difference in rank between two texts that are equal to the collator.
template <typename Rank>
int CompareRanks(const PreparedText& left, const PreparedText& right, const Rank& rank) {
    std::int32_t a = 0;
    std::int32_t b = 0;
    for (;;) {
        const int x = NextRank(left, a, rank);
        const int y = NextRank(right, b, rank);
        if (x != y) return x < y ? -1 : 1;
        if (x == 0) return 0;
    }
}

int CompareForms(DWORD flags, const PreparedText& a, const PreparedText& b) {
    const bool bySyllabary = (flags & NORM_IGNOREKANATYPE) == 0;
    const int kana = CompareRanks(a, b, [bySyllabary](UChar32 c) {
        return c > 0xFFFF ? 0 : KanaRank(static_cast<WCHAR>(c), bySyllabary);
    });
    return kana != 0 ? kana : CompareRanks(a, b, StyleRank);
}

eOutcome CompareFully(DWORD flags, Span left, Span right) {
    const UCollator* collator = CollatorFor((flags & NORM_IGNORECASE) == 0);
    if (collator == nullptr) return eOutcome::undecided;
    const bool wordSort = (flags & SORT_STRINGSORT) == 0;
    const PreparedText a(left, wordSort);
    const PreparedText b(right, wordSort);
    int difference = ucol_strcoll(collator, a.data(), a.size(), b.data(), b.size());
    if (difference == 0) difference = CompareForms(flags, a, b);
    if (difference == 0 && wordSort) difference = CompareMarks(left, right);
    return FromDifference(difference);
}

eOutcome CompareQuickly(DWORD flags, Span left, Span right) {
    if ((flags & SORT_STRINGSORT) == 0) return CompareAscii<true, false>(left, right);
    if ((flags & NORM_IGNORECASE) == 0) return CompareAscii<false, true>(left, right);
    return CompareAscii<false, false>(left, right);
}

bool IsKnownLocale(LCID locale) {
    return locale == LOCALE_USER_DEFAULT || locale == LOCALE_NEUTRAL;
}

bool AreKnownFlags(DWORD flags) {
    constexpr DWORD kWidth = NORM_IGNOREWIDTH;
    constexpr DWORD kWidthAndKana = NORM_IGNOREWIDTH | NORM_IGNOREKANATYPE;
    return flags == (kWidthAndKana | SORT_STRINGSORT | NORM_IGNORECASE) ||
           flags == (kWidthAndKana | SORT_STRINGSORT) ||
           flags == (kWidthAndKana | NORM_IGNORECASE) || flags == (kWidth | NORM_IGNORECASE);
}

Span SpanOf(LPCWSTR text, int cch) {
    return {text, cch < 0 ? nullptr : text + cch};
}

Span Counted(Span text) {
    if (text.end != nullptr) return text;
    return {text.begin, text.begin + std::char_traits<WCHAR>::length(text.begin)};
}

// The bytes of a key. Counts on when the buffer is full.
class KeyWriter {
public:
    KeyWriter(std::uint8_t* buffer, std::size_t size) : buffer_(buffer), size_(size) {}
    void Put(std::uint32_t byte) {
        if (used_ < size_) buffer_[used_] = static_cast<std::uint8_t>(byte);
        ++used_;
    }
    // False when the collator fails.
    bool PutCollation(const UCollator* collator, const PreparedText& text) {
        const std::size_t room = used_ < size_ ? size_ - used_ : 0;
        const std::int32_t length =
            ucol_getSortKey(collator, text.data(), text.size(),
                            room > 0 ? buffer_ + used_ : nullptr, static_cast<std::int32_t>(room));
        used_ += static_cast<std::size_t>(length);
        return length > 0;
    }
    std::size_t Used() const { return used_; }

private:
    std::uint8_t* buffer_;
    std::size_t size_;
    std::size_t used_ = 0;
};

// Behind the collator's key what CompareForms looks at: no rank holds a null, which ends each part.
bool WriteKey(Span text, KeyWriter& key) {
    const UCollator* collator = CollatorFor(false);
    const PreparedText prepared(text, false);
    if (collator == nullptr || !key.PutCollation(collator, prepared)) return false;
    std::int32_t at = 0;
    const auto kana = [](UChar32 c) {
        return c > 0xFFFF ? 0 : KanaRank(static_cast<WCHAR>(c), false);
    };
    while (const int rank = NextRank(prepared, at, kana))
        key.Put(static_cast<std::uint32_t>(rank));
    key.Put(0);
    at = 0;
    while (const int rank = NextRank(prepared, at, StyleRank)) {
        const auto bits = static_cast<std::uint32_t>(rank);
        for (const unsigned shift : {18u, 12u, 6u, 0u})
            key.Put(1 + ((bits >> shift) & 0x3F));
    }
    key.Put(0);
    return true;
}

}  // namespace

int CompareStringW(LCID locale, DWORD flags, LPCWSTR a, int cchA, LPCWSTR b, int cchB) {
    if (a == nullptr || b == nullptr || !IsKnownLocale(locale)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (!AreKnownFlags(flags)) {
        SetLastError(ERROR_INVALID_FLAGS);
        return 0;
    }
    const Span left = SpanOf(a, cchA);
    const Span right = SpanOf(b, cchB);
    eOutcome outcome = CompareQuickly(flags, left, right);
    if (outcome == eOutcome::undecided)
        outcome = CompareFully(flags, Counted(left), Counted(right));
    switch (outcome) {
        case eOutcome::less:
            return CSTR_LESS_THAN;
        case eOutcome::equal:
            return CSTR_EQUAL;
        case eOutcome::greater:
            return CSTR_GREATER_THAN;
        case eOutcome::undecided:
            break;
    }
    SetLastError(ERROR_GEN_FAILURE);
    return 0;
}

int LCMapStringW(LCID locale, DWORD flags, LPCWSTR text, int cch, LPWSTR buffer, int cb) {
    constexpr DWORD kKeyFlags =
        LCMAP_SORTKEY | SORT_STRINGSORT | NORM_IGNORECASE | NORM_IGNOREKANATYPE | NORM_IGNOREWIDTH;
    if (text == nullptr || cch == 0 || cb < 0 || (cb > 0 && buffer == nullptr) ||
        !IsKnownLocale(locale)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (flags != kKeyFlags) {
        SetLastError(ERROR_INVALID_FLAGS);
        return 0;
    }
    KeyWriter key(reinterpret_cast<std::uint8_t*>(buffer), static_cast<std::size_t>(cb));
    if (!WriteKey(Counted(SpanOf(text, cch)), key)) {
        SetLastError(ERROR_GEN_FAILURE);
        return 0;
    }
    if (cb != 0 && key.Used() > static_cast<std::size_t>(cb)) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    return static_cast<int>(key.Used());
}
