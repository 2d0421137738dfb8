// The Windows half of the code pages.
#include "companions/md/document/code_page.h"

namespace mddoc {

// The system keeps its tables itself.
void TextDecoder::CloseConverters() {}

HRESULT TextDecoder::Convert(std::uint32_t codePage, const BYTE* bytes, std::size_t cb,
                             WText& text) {
    constexpr std::size_t kMost = 0x1FFFFFFF;
    const char* from = reinterpret_cast<const char*>(bytes);
    const int cbFrom = static_cast<int>(cb <= kMost ? cb : 0);
    const int cch = MultiByteToWideChar(codePage, 0, from, cbFrom, nullptr, 0);
    if (cch <= 0) return HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION);
    text.resize(static_cast<std::size_t>(cch));
    if (MultiByteToWideChar(codePage, 0, from, cbFrom, text.data(), cch) != cch) {
        text.clear();
        return HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION);
    }
    return S_OK;
}

int CompareWithoutCase(WTextView a, WTextView b) {
    // The system takes no empty text without a place.
    if (a.empty() || b.empty()) return static_cast<int>(b.empty()) - static_cast<int>(a.empty());
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), TRUE) -
           CSTR_EQUAL;
}

}  // namespace mddoc
