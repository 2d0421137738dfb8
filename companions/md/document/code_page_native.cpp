// The native half of the code pages, over ICU.
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <memory>
#include <numeric>
#include <string>
#include <tuple>

#include "companions/md/document/code_page.h"
#include "companions/md/document/code_page_tables_native.h"

namespace mddoc {

namespace {

struct NamedPage {
    std::uint32_t codePage;
    const char* converter;
};

// Where the name doesn't follow from the number. Of the Macintosh's double-byte sets the standard
// that each extends stands in: what differs is a handful of marks.
constexpr NamedPage kNamedPages[] = {
    {10001, "Shift_JIS"},
    {10002, "Big5"},
    {10003, "EUC-KR"},
    {10008, "GB2312"},
    {10029, "x-mac-centraleurroman"},
    {20127, "US-ASCII"},
    {20866, "KOI8-R"},
    {20932, "EUC-JP"},
    {20936, "GB2312"},
    {20949, "EUC-KR"},
    {50220, "ISO-2022-JP"},
    {50221, "ISO-2022-JP"},
    {50222, "ISO-2022-JP"},
    {50225, "ISO-2022-KR"},
    {50227, "ISO-2022-CN"},
    {50229, "ISO-2022-CN"},
    {51932, "EUC-JP"},
    {51936, "GB2312"},
    {51949, "EUC-KR"},
    {51950, "EUC-TW"},
    {52936, "HZ-GB-2312"},
    {54936, "GB18030"},
    {65000, "UTF-7"},
};

using ByteUnits = std::array<char16_t, 256>;

// What an open code page needs. Of one byte a character it is a table alone.
struct Page {
    UConverter* converter = nullptr;
    std::unique_ptr<ByteUnits> units;

    Page() = default;
    ~Page() {
        if (converter != nullptr) ucnv_close(converter);
    }
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;
};

constexpr char16_t kUnknown = 0xFFFD;
constexpr std::uint32_t kSevenBits = 20127;  // the eighth counts for nothing

std::string ConverterName(std::uint32_t codePage) {
    for (const NamedPage& row : kNamedPages) {
        if (row.codePage == codePage) return row.converter;
    }
    const bool isWindows = (codePage >= 1250 && codePage <= 1258) || codePage == 874 ||
                           codePage == 932 || codePage == 936 || codePage == 949 ||
                           codePage == 950 || (codePage >= 57002 && codePage <= 57011);
    if (isWindows) return "windows-" + std::to_string(codePage);
    if (codePage >= 28591 && codePage <= 28605) {
        return "ISO-8859-" + std::to_string(codePage - 28590);
    }
    if (codePage < 1200) return "ibm-" + std::to_string(codePage);
    // The code pages of mainframes have their old number behind that of their group.
    const bool isMainframe = codePage >= 20273 && codePage <= 21025 && DiffersFromAscii(codePage);
    if (isMainframe) return "ibm-" + std::to_string(codePage - 20000);
    if (codePage >= 50930 && codePage <= 50939) return "ibm-" + std::to_string(codePage - 50000);
    return {};
}

UConverter* OpenConverter(const std::string& name) {
    UErrorCode error = U_ZERO_ERROR;
    // Without a name ICU would open its default.
    UConverter* converter = name.empty() ? nullptr : ucnv_open(name.c_str(), &error);
    return U_SUCCESS(error) ? converter : nullptr;
}

// The unit of each byte as Windows has it. Null where ICU makes more than one unit of a byte.
std::unique_ptr<ByteUnits> UnitsOf(std::uint32_t codePage, const BytePage* row,
                                   UConverter* converter) {
    auto units = std::make_unique<ByteUnits>();
    units->fill(kUnknown);
    if (converter != nullptr) {
        std::array<char, std::tuple_size_v<ByteUnits>> bytes;
        std::iota(bytes.begin(), bytes.end(), '\0');
        UErrorCode error = U_ZERO_ERROR;
        const auto count = static_cast<std::int32_t>(units->size());
        const std::int32_t length =
            ucnv_toUChars(converter, units->data(), count, bytes.data(), count, &error);
        if (length != count || U_FAILURE(error)) return nullptr;
    }
    // ICU swaps three control characters of the old ones.
    const bool hasAscii = !DiffersFromAscii(codePage);
    for (std::size_t byte = 0; hasAscii && byte < 0x80; ++byte)
        (*units)[byte] = static_cast<char16_t>(byte);
    if (row != nullptr && row->base == nullptr) {
        std::copy(row->units.begin(), row->units.end(), units->begin() + 0x80);
        return units;
    }
    if (row != nullptr) {
        for (std::size_t i = 0; i + 1 < row->units.size(); i += 2)
            (*units)[row->units[i]] = row->units[i + 1];
    }
    char16_t next = row != nullptr ? row->firstPrivate : char16_t{0};
    for (std::size_t byte = 0x80; byte < units->size(); ++byte) {
        if ((*units)[byte] != kUnknown) continue;
        if (codePage == kSevenBits) {
            (*units)[byte] = static_cast<char16_t>(byte & 0x7F);
        } else if (hasAscii && byte < 0xA0) {
            (*units)[byte] = static_cast<char16_t>(byte);
        } else if (next != 0) {
            (*units)[byte] = next++;
        }
    }
    return units;
}

std::unique_ptr<Page> OpenPage(std::uint32_t codePage) {
    const BytePage* row = FindBytePage(codePage);
    auto page = std::make_unique<Page>();
    if (row == nullptr) {
        page->converter = OpenConverter(ConverterName(codePage));
    } else if (row->base != nullptr) {
        page->converter = OpenConverter(row->base);
    }
    const bool isTable = row != nullptr && row->base == nullptr;
    if (page->converter == nullptr && !isTable) return nullptr;
    if (isTable || ucnv_getMaxCharSize(page->converter) == 1) {
        page->units = UnitsOf(codePage, row, page->converter);
    }
    return page;
}

// The code pages of the documents so far, since neighbours differ in theirs. A null is one that
// isn't known.
using Pages = std::map<std::uint32_t, std::unique_ptr<Page>>;
// No system has more; a library of hostile documents asks for others.
constexpr std::size_t kMostPages = 200;

// As ICU does, for most letters without a call.
UChar32 ToUpper(WCHAR c) {
    if (c >= 0x80) return u_toupper(c);
    return c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c;
}

}  // namespace

void TextDecoder::CloseConverters() {
    delete static_cast<Pages*>(converters_);
    converters_ = nullptr;
}

HRESULT TextDecoder::Convert(std::uint32_t codePage, const BYTE* bytes, std::size_t cb,
                             WText& text) {
    if (converters_ == nullptr) converters_ = new Pages;
    Pages& pages = *static_cast<Pages*>(converters_);
    auto found = pages.find(codePage);
    if (found == pages.end()) {
        if (pages.size() >= kMostPages) pages.clear();
        found = pages.emplace(codePage, OpenPage(codePage)).first;
    }
    const Page* page = found->second.get();
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) / 4;
    if (page == nullptr || cb > kMost) {
        return HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION);
    }
    if (page->units != nullptr) {
        text.resize(cb);
        std::transform(bytes, bytes + cb, text.begin(),
                       [page](BYTE byte) { return (*page->units)[byte]; });
        return S_OK;
    }
    const auto convert = [&](std::size_t cch) {
        text.resize(cch);
        UErrorCode error = U_ZERO_ERROR;
        const std::int32_t length = ucnv_toUChars(
            page->converter, text.data(), static_cast<std::int32_t>(cch),
            reinterpret_cast<const char*>(bytes), static_cast<std::int32_t>(cb), &error);
        return error == U_BUFFER_OVERFLOW_ERROR || U_SUCCESS(error) ? length : -1;
    };
    // Few bytes stand for more than one unit.
    std::int32_t length = convert(cb);
    if (length > 0 && static_cast<std::size_t>(length) > cb) {
        length = convert(static_cast<std::size_t>(length));
    }
    if (length < 0) {
        text.clear();
        return HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION);
    }
    text.resize(static_cast<std::size_t>(length));
    return S_OK;
}

int CompareWithoutCase(WTextView a, WTextView b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (a[i] == b[i]) continue;
        const UChar32 one = ToUpper(a[i]);
        const UChar32 other = ToUpper(b[i]);
        if (one != other) return one < other ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

}  // namespace mddoc
