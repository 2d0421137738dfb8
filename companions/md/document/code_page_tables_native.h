// The code pages of one byte a character in which Windows and ICU differ, natively.
#pragma once

#include <cstdint>
#include <string_view>

namespace mddoc {

struct BytePage {
    std::uint32_t codePage;
    const char* base;           // ICU's converter; null: none is near
    std::u16string_view units;  // pairs of a byte and its unit; without a base those from 0x80 on
    char16_t firstPrivate;  // bytes that stand for nothing are numbered from here; 0: they aren't
};

// Null: ICU has the code page as Windows has it, or not at all.
const BytePage* FindBytePage(std::uint32_t codePage);

}  // namespace mddoc
