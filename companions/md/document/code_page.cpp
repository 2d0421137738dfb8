#include "companions/md/document/code_page.h"

#include <algorithm>
#include <string_view>

#include "companions/md/document/little_endian.h"

namespace mddoc {

namespace {

constexpr std::uint32_t kDefaultCodePage = 1252;
constexpr std::uint32_t kUtf16BigEndian = 1201;
constexpr std::uint32_t kUtf8 = 65001;

void DecodeUtf16BigEndian(const BYTE* bytes, std::size_t cb, WText& text) {
    text.clear();
    for (std::size_t i = 0; i + 1 < cb; i += 2) {
        const auto unit = static_cast<WCHAR>((bytes[i] << 8) | bytes[i + 1]);
        if (unit == 0) return;
        text += unit;
    }
}

}  // namespace

bool DiffersFromAscii(std::uint32_t codePage) {
    const bool isEbcdic = codePage == 37 || codePage == 500 || codePage == 870 || codePage == 875 ||
                          (codePage >= 1026 && codePage <= 1149) ||
                          (codePage >= 20273 && codePage <= 20424) || codePage == 20833 ||
                          codePage == 20838 || codePage == 20871 || codePage == 20880 ||
                          codePage == 20905 || codePage == 20924 || codePage == 21025 ||
                          (codePage >= 50930 && codePage <= 50939);
    const bool isSwitched = (codePage >= 50220 && codePage <= 50229) || codePage == 52936;
    const bool isSevenBit = (codePage >= 20105 && codePage <= 20108) || codePage == 20269;
    const bool isWide = codePage == 12000 || codePage == 12001 || codePage == 65000;
    return isEbcdic || isSwitched || isSevenBit || isWide;
}

void DecodeUtf16(const BYTE* bytes, std::size_t cb, WText& text) {
    text.clear();
    for (std::size_t i = 0; i + 1 < cb; i += 2) {
        const auto unit = static_cast<WCHAR>(Load16(bytes + i));
        if (unit == 0) return;
        text += unit;
    }
}

HRESULT TextDecoder::Decode(std::uint32_t codePage, const BYTE* bytes, std::size_t cb,
                            WText& text) {
    text.clear();
    if (cb == 0) return S_OK;
    if (codePage == 0) codePage = kDefaultCodePage;
    if (codePage == kUtf16CodePage) {
        DecodeUtf16(bytes, cb, text);
        return S_OK;
    }
    if (codePage == kUtf16BigEndian) {
        DecodeUtf16BigEndian(bytes, cb, text);
        return S_OK;
    }
    const BYTE* end = std::find(bytes, bytes + cb, BYTE{0});
    if (end == bytes) return S_OK;
    const bool isAscii = std::all_of(bytes, end, [](BYTE byte) { return byte < 0x80; });
    if (isAscii && !DiffersFromAscii(codePage)) {
        text.assign(bytes, end);
        return S_OK;
    }
    const auto length = static_cast<std::size_t>(end - bytes);
    if (codePage == kUtf8) {
        text = wtext::FromUtf8(std::string_view(reinterpret_cast<const char*>(bytes), length));
        return S_OK;
    }
    const HRESULT status = Convert(codePage, bytes, length, text);
    // There was none in the bytes: it stands for one that the code page doesn't know.
    std::replace(text.begin(), text.end(), WCHAR{0}, WCHAR{0xFFFD});
    return status;
}

}  // namespace mddoc
