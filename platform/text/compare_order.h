// The order of the ASCII characters in text comparison: stated once, for the table of the fast path
// and for the collation rules of the full one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

// Everything in front of the digits, from least to greatest. The apostrophe and the hyphen stand
// here as a string sort ranks them.
inline constexpr char kOrderBeforeDigits[] =
    "\x01\x02\x03\x04\x05\x06\x07\x08\x0E\x0F\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19\x1A\x1B\x1C"
    "\x1D\x1E\x1F\x7F'- \x09\x0A\x0B\x0C\x0D!\"#$%&()*,./:;?@[\\]^_`{|}~+<=>";

// One rank for a letter of either case; 0 for NUL, which has no rank of its own.
inline constexpr std::array<std::uint8_t, 128> kAsciiRank = [] {
    std::array<std::uint8_t, 128> rank{};
    std::uint8_t next = 1;
    for (std::size_t i = 0; i + 1 < sizeof kOrderBeforeDigits; ++i) {
        rank[static_cast<unsigned char>(kOrderBeforeDigits[i])] = next++;
    }
    for (std::size_t c = '0'; c <= '9'; ++c)
        rank[c] = next++;
    for (std::size_t c = 'a'; c <= 'z'; ++c) {
        rank[c] = next;
        rank[c - 'a' + 'A'] = next++;
    }
    return rank;
}();
static_assert(kAsciiRank['Z'] == 127 - 26, "every character but NUL has a rank");
