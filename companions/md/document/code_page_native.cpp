// The native half of the code pages, over ICU.
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <cstdio>
#include <limits>

#include "companions/md/document/code_page.h"

namespace mddoc {

namespace {

struct NamedPage {
    std::uint32_t codePage;
    const char* converter;
};

// Where the name doesn't follow from the number. Of the Macintosh's double-byte sets the standard
// that each extends stands in: what differs is a handful of marks.
constexpr NamedPage kNamedPages[] = {
    {10000, "macintosh"},     {10001, "Shift_JIS"},
    {10002, "Big5"},          {10003, "EUC-KR"},
    {10006, "x-mac-greek"},   {10007, "x-mac-cyrillic"},
    {10008, "GB2312"},        {10029, "x-mac-centraleurroman"},
    {10081, "x-mac-turkish"}, {20127, "US-ASCII"},
    {20866, "KOI8-R"},        {20932, "EUC-JP"},
    {20936, "GB2312"},        {20949, "EUC-KR"},
    {21866, "KOI8-U"},        {50220, "ISO-2022-JP"},
    {50221, "ISO-2022-JP"},   {50222, "ISO-2022-JP"},
    {50225, "ISO-2022-KR"},   {50227, "ISO-2022-CN"},
    {51932, "EUC-JP"},        {51936, "GB2312"},
    {51949, "EUC-KR"},        {52936, "HZ-GB-2312"},
    {54936, "GB18030"},       {65000, "UTF-7"},
};

UConverter* OpenConverter(std::uint32_t codePage) {
    char name[32] = "";
    for (const NamedPage& row : kNamedPages) {
        if (row.codePage == codePage) std::snprintf(name, sizeof name, "%s", row.converter);
    }
    const bool isWindows = (codePage >= 1250 && codePage <= 1258) || codePage == 874 ||
                           codePage == 932 || codePage == 936 || codePage == 949 || codePage == 950;
    if (name[0] != 0) {
        // found in the table
    } else if (isWindows) {
        std::snprintf(name, sizeof name, "windows-%u", codePage);
    } else if (codePage >= 28591 && codePage <= 28605) {
        std::snprintf(name, sizeof name, "ISO-8859-%u", codePage - 28590);
    } else if (codePage < 1200) {
        std::snprintf(name, sizeof name, "ibm-%u", codePage);
    } else {
        return nullptr;
    }
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(name, &error);
    return U_SUCCESS(error) ? converter : nullptr;
}

}  // namespace

void TextDecoder::CloseConverter() {
    if (converter_ != nullptr) ucnv_close(static_cast<UConverter*>(converter_));
    converter_ = nullptr;
    converterPage_ = 0;
}

HRESULT TextDecoder::Convert(std::uint32_t codePage, const BYTE* bytes, std::size_t cb,
                             WText& text) {
    if (converter_ == nullptr || converterPage_ != codePage) {
        CloseConverter();
        converter_ = OpenConverter(codePage);
        converterPage_ = codePage;
    }
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) / 4;
    if (converter_ == nullptr || cb > kMost) {
        return HRESULT_FROM_WIN32(ERROR_NO_UNICODE_TRANSLATION);
    }
    const auto convert = [&](std::size_t cch) {
        text.resize(cch);
        UErrorCode error = U_ZERO_ERROR;
        const std::int32_t length = ucnv_toUChars(
            static_cast<UConverter*>(converter_), text.data(), static_cast<std::int32_t>(cch),
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
        const UChar32 one = u_toupper(a[i]);
        const UChar32 other = u_toupper(b[i]);
        if (one != other) return one < other ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

}  // namespace mddoc
