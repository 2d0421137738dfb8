// Stored bytes to text: any code page that the system knows.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/wtext.h"

namespace mddoc {

inline constexpr std::uint32_t kUtf16CodePage = 1200;

// Keeps what it has opened, so one object serves many documents.
class TextDecoder {
public:
    TextDecoder() = default;
    ~TextDecoder() { CloseConverters(); }
    TextDecoder(const TextDecoder&) = delete;
    TextDecoder& operator=(const TextDecoder&) = delete;

    // The text up to its first NUL. Bytes that the code page doesn't know are replaced; a code page
    // that the system doesn't know is ERROR_NO_UNICODE_TRANSLATION as a status, unless the text is
    // plain ASCII.
    [[nodiscard]] HRESULT Decode(std::uint32_t codePage, const BYTE* bytes, std::size_t cb,
                                 WText& text);

private:
    // The system's part. The bytes hold no NUL and are not empty.
    HRESULT Convert(std::uint32_t codePage, const BYTE* bytes, std::size_t cb, WText& text);
    void CloseConverters();

    void* converters_ = nullptr;
};

// Code pages in which the bytes below 0x80 don't stand for the characters of ASCII.
bool DiffersFromAscii(std::uint32_t codePage);

// Up to the first NUL; a last byte without its pair is left out.
void DecodeUtf16(const BYTE* bytes, std::size_t cb, WText& text);

// Negative, 0 or positive: an order of texts in which the case of all letters doesn't count, by the
// system's simple folding.
int CompareWithoutCase(WTextView a, WTextView b);

}  // namespace mddoc
