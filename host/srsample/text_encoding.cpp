#include "host/srsample/text_encoding.h"

namespace {

constexpr std::uint16_t kUtf16 = 1200;
constexpr std::uint16_t kUtf8 = 65001;

// Neighbouring characters that are neighbours in a code page too.
struct Run {
    std::uint16_t codePage;
    WCHAR first;
    WCHAR last;
    std::uint16_t code;
};
constexpr Run kRuns[] = {
    {1252, 0x00A0, 0x00FF, 0xA0},  {1250, 0x0141, 0x0141, 0xA3},  // L with stroke
    {1250, 0x00C4, 0x00C4, 0xC4},                                 // umlauts
    {1250, 0x00E4, 0x00E4, 0xE4},  {1250, 0x00F6, 0x00F6, 0xF6},
    {1250, 0x00FC, 0x00FC, 0xFC},  {1250, 0x00E9, 0x00E9, 0xE9},  // with acute
    {1250, 0x00ED, 0x00ED, 0xED},  {1251, 0x0410, 0x044F, 0xC0},
    {932, 0x7530, 0x7530, 0x9363},  // the name of one person
    {932, 0x4E2D, 0x4E2D, 0x9286}, {932, 0x512A, 0x512A, 0x9744},
    {932, 0x5B50, 0x5B50, 0x8E71},
};

// 0 for a character that the page doesn't have.
std::uint16_t CodeOf(std::uint16_t codePage, WCHAR unit) {
    if (unit < 0x80) return static_cast<std::uint16_t>(unit);
    for (const Run& run : kRuns) {
        if (run.codePage != codePage || unit < run.first || unit > run.last) continue;
        return static_cast<std::uint16_t>(run.code + (unit - run.first));
    }
    return 0;
}

}  // namespace

bool AppendEncoded(std::uint16_t codePage, WTextView text, ByteWriter& out) {
    if (codePage == kUtf16) {
        out.Units(text);
        return true;
    }
    if (codePage == kUtf8) {
        for (const char c : wtext::ToUtf8(text))
            out.Byte(static_cast<std::uint8_t>(c));
        return true;
    }
    bool hasAll = true;
    for (const WCHAR unit : text) {
        std::uint16_t code = CodeOf(codePage, unit);
        if (code == 0) {
            code = '?';
            hasAll = false;
        }
        if (code > 0xFF) out.Byte(static_cast<std::uint8_t>(code >> 8));
        out.Byte(static_cast<std::uint8_t>(code));
    }
    return hasAll;
}

bool CodePageHas(std::uint16_t codePage, WTextView text) {
    ByteWriter unused;
    return AppendEncoded(codePage, text, unused);
}
