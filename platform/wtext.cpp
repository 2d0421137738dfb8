#include "platform/wtext.h"

#include <algorithm>

namespace wtext {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

// One character from the front of `bytes`; 0 bytes consumed when they are no UTF-8 (overlong forms,
// surrogates and values above U+10FFFF included).
std::size_t DecodeUtf8(std::string_view bytes, char32_t& c) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) {
        c = lead;
        return 1;
    }
    std::size_t length = 0;
    char32_t least = 0;
    if ((lead & 0xE0) == 0xC0) {
        length = 2, least = 0x80, c = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, least = 0x800, c = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, least = 0x10000, c = lead & 0x07;
    } else {
        return 0;
    }
    if (bytes.size() < length) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
        c = (c << 6) | (byte(i) & 0x3F);
    }
    if (c < least || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return 0;
    return length;
}

void AppendUtf16(WText& out, char32_t c) {
    if (c < 0x10000) {
        out += static_cast<WCHAR>(c);
    } else {
        out += static_cast<WCHAR>(0xD800 + ((c - 0x10000) >> 10));
        out += static_cast<WCHAR>(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
}

// The length of the placeholder (%s, %d ...) at the front of `text`, 0 if there is none.
std::size_t ConversionLength(WTextView text) {
    if (text.size() >= 2 && (text[1] == 's' || text[1] == 'd' || text[1] == 'u')) return 2;
    if (text.size() >= 3 && text[1] == 'l' && (text[2] == 'd' || text[2] == 'u')) return 3;
    return 0;
}

}  // namespace

int Compare(const WCHAR* a, const WCHAR* b) {
    return WTextView(a).compare(WTextView(b));
}

bool EqualsAsciiFold(WTextView a, WTextView b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (FoldAscii(a[i]) != FoldAscii(b[i])) return false;
    }
    return true;
}

bool CopyWhole(WCHAR* buffer, std::size_t cch, WTextView text) {
    if (cch == 0) return false;
    const bool fits = text.size() < cch;
    if (fits) text.copy(buffer, text.size());
    buffer[fits ? text.size() : 0] = 0;
    return fits;
}

WText FromNumber(long long value) {
    WText text;
    for (const char c : std::to_string(value))
        text += static_cast<WCHAR>(c);
    return text;
}

WText Format(WTextView format, std::initializer_list<WTextView> arguments) {
    WText text;
    auto next = arguments.begin();
    while (!format.empty()) {
        const std::size_t length = format.front() == '%' ? ConversionLength(format) : 0;
        if (length == 0) {
            text += format.front();
            format.remove_prefix(1);
            continue;
        }
        if (next != arguments.end()) text += *next++;
        format.remove_prefix(length);
    }
    return text;
}

std::string ToUtf8(WTextView text) {
    // Most texts are ASCII at least to begin with.
    std::size_t plain = 0;
    while (plain < text.size() && static_cast<std::make_unsigned_t<WCHAR>>(text[plain]) < 0x80)
        ++plain;
    std::string bytes(plain, 0);
    std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(plain), bytes.begin(),
                   [](WCHAR unit) { return static_cast<char>(unit); });
    for (std::size_t i = plain; i < text.size(); ++i) {
        char32_t c = static_cast<std::make_unsigned_t<WCHAR>>(text[i]);
        if (c >= 0xD800 && c <= 0xDFFF) {
            const char32_t low = i + 1 < text.size() ? text[i + 1] : 0;
            if (c <= 0xDBFF && low >= 0xDC00 && low <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            } else {
                c = kReplacement;
            }
        }
        AppendUtf8(bytes, c);
    }
    return bytes;
}

WText FromUtf8(std::string_view bytes, bool* valid) {
    WText text;
    text.reserve(bytes.size());
    if (valid != nullptr) *valid = true;
    while (!bytes.empty()) {
        char32_t c = 0;
        std::size_t length = DecodeUtf8(bytes, c);
        if (length == 0) {
            c = kReplacement;
            length = 1;
            if (valid != nullptr) *valid = false;
        }
        AppendUtf16(text, c);
        bytes.remove_prefix(length);
    }
    return text;
}

}  // namespace wtext
