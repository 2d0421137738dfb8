// Text to stored bytes, in the code pages that a sample library uses.
#pragma once

#include <cstdint>

#include "host/srsample/byte_writer.h"

// Adds the text without a terminator. The page is 1200, 65001, or one of 1250, 1251, 1252 and 932,
// of which only the characters of the samples are known; any other character is a question mark,
// and the result false.
bool AppendEncoded(std::uint16_t codePage, WTextView text, ByteWriter& out);

bool CodePageHas(std::uint16_t codePage, WTextView text);
