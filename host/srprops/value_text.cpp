#include "host/srprops/value_text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "host/srprops/sha256.h"

using mddoc::PropertyValue;

namespace {

struct TypeName {
    VARTYPE type;
    const char* name;
};

constexpr TypeName kTypeNames[] = {
    {VT_EMPTY, "VT_EMPTY"},
    {VT_NULL, "VT_NULL"},
    {VT_I1, "VT_I1"},
    {VT_I2, "VT_I2"},
    {VT_I4, "VT_I4"},
    {VT_I8, "VT_I8"},
    {VT_INT, "VT_INT"},
    {VT_UI1, "VT_UI1"},
    {VT_UI2, "VT_UI2"},
    {VT_UI4, "VT_UI4"},
    {VT_UI8, "VT_UI8"},
    {VT_UINT, "VT_UINT"},
    {VT_R4, "VT_R4"},
    {VT_R8, "VT_R8"},
    {VT_CY, "VT_CY"},
    {VT_DATE, "VT_DATE"},
    {VT_BSTR, "VT_BSTR"},
    {VT_ERROR, "VT_ERROR"},
    {VT_BOOL, "VT_BOOL"},
    {VT_VARIANT, "VT_VARIANT"},
    {VT_DECIMAL, "VT_DECIMAL"},
    {VT_LPSTR, "VT_LPSTR"},
    {VT_LPWSTR, "VT_LPWSTR"},
    {VT_FILETIME, "VT_FILETIME"},
    {VT_BLOB, "VT_BLOB"},
    {VT_STREAM, "VT_STREAM"},
    {VT_STORAGE, "VT_STORAGE"},
    {VT_STREAMED_OBJECT, "VT_STREAMED_OBJECT"},
    {VT_STORED_OBJECT, "VT_STORED_OBJECT"},
    {VT_BLOB_OBJECT, "VT_BLOB_OBJECT"},
    {VT_CF, "VT_CF"},
    {VT_CLSID, "VT_CLSID"},
};

constexpr std::uint64_t kTicksInSecond = 10000000;
constexpr std::uint64_t kSecondsInDay = 86400;
constexpr std::int64_t kCurrencyUnit = 10000;
constexpr VARTYPE kVectorBit = VT_VECTOR;
constexpr VARTYPE kArrayBit = VT_ARRAY;

template <typename... Parts>
std::string Printed(const char* format, Parts... parts) {
    char buffer[96] = "";
    std::snprintf(buffer, sizeof buffer, format, parts...);
    return buffer;
}

struct Day {
    int year;
    int month;
    int day;
};

// The date of a day counted from 1 January 1601, where a cycle of 400 years begins.
Day DayOf(std::uint64_t days) {
    constexpr int kDaysIn400Years = 146097;
    constexpr int kDaysInMonths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int year = 1601 + static_cast<int>(days / kDaysIn400Years) * 400;
    auto left = static_cast<int>(days % kDaysIn400Years);
    const auto isLeap = [](int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; };
    while (left >= (isLeap(year) ? 366 : 365)) {
        left -= isLeap(year) ? 366 : 365;
        ++year;
    }
    int month = 0;
    for (;; ++month) {
        const int length = kDaysInMonths[month] + (month == 1 && isLeap(year) ? 1 : 0);
        if (left < length) break;
        left -= length;
    }
    return {year, month + 1, left + 1};
}

// The shortest digits that give the same number again; a whole number keeps a decimal.
std::string RealText(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    char buffer[64];
    const double size = std::fabs(value);
    const bool isPlain = size == 0 || (size >= 1e-4 && size < 1e16);
    const auto format = isPlain ? std::chars_format::fixed : std::chars_format::scientific;
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, format).ptr;
    std::string text(buffer, end);
    if (isPlain && text.find('.') == std::string::npos) text += ".0";
    return text;
}

std::string CurrencyText(std::int64_t value) {
    const auto whole = static_cast<long long>(value / kCurrencyUnit);
    const auto part = static_cast<int>(value % kCurrencyUnit);
    const char* sign = value < 0 && whole == 0 ? "-" : "";
    return Printed("%s%s.%04d", sign, std::to_string(whole).c_str(), part < 0 ? -part : part);
}

std::string GuidText(const GUID& guid) {
    std::string text =
        Printed("{%08X-%04X-%04X-", static_cast<unsigned>(guid.Data1),
                static_cast<unsigned>(guid.Data2), static_cast<unsigned>(guid.Data3));
    for (int i = 0; i < 8; ++i) {
        text += Printed(i == 2 ? "-%02X" : "%02X", static_cast<unsigned>(guid.Data4[i]));
    }
    return text + "}";
}

}  // namespace

std::string TypeText(VARTYPE type) {
    if ((type & kVectorBit) != 0) {
        return std::string("VT_VECTOR|") + TypeText(static_cast<VARTYPE>(type & ~kVectorBit));
    }
    if ((type & kArrayBit) != 0) {
        return std::string("VT_ARRAY|") + TypeText(static_cast<VARTYPE>(type & ~kArrayBit));
    }
    for (const TypeName& row : kTypeNames) {
        if (row.type == type) return row.name;
    }
    return Printed("VT_0x%04X", static_cast<unsigned>(type));
}

std::string EscapedText(WTextView text) {
    std::string out;
    for (const char c : wtext::ToUtf8(text)) {
        const auto unit = static_cast<unsigned char>(c);
        // Behind C2 comes the second half of the control characters.
        const bool isUpperControl = unit >= 0x80 && unit < 0xA0 && !out.empty() &&
                                    static_cast<unsigned char>(out.back()) == 0xC2;
        if (isUpperControl) {
            out.pop_back();
            out += Printed("\\u%04X", static_cast<unsigned>(unit));
        } else if (c == '\\') {
            out += "\\\\";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (unit < 0x20 || unit == 0x7F) {
            out += Printed("\\u%04X", static_cast<unsigned>(unit));
        } else {
            out += c;
        }
    }
    return out;
}

std::string TimeText(std::uint64_t ticks) {
    const std::uint64_t seconds = ticks / kTicksInSecond;
    const Day date = DayOf(seconds / kSecondsInDay);
    if (date.year > 9999) return "ticks:" + std::to_string(ticks);
    const auto inDay = static_cast<unsigned>(seconds % kSecondsInDay);
    return Printed("%04d-%02d-%02dT%02u:%02u:%02u.%07uZ", date.year, date.month, date.day,
                   inDay / 3600, inDay / 60 % 60, inDay % 60,
                   static_cast<unsigned>(ticks % kTicksInSecond));
}

std::string BlobText(const std::vector<BYTE>& bytes) {
    constexpr std::size_t kShownBytes = 8;
    const Sha256Digest digest = Sha256(bytes.data(), bytes.size());
    std::string text = "bytes:" + std::to_string(bytes.size()) + ":sha256:";
    for (std::size_t i = 0; i < kShownBytes; ++i) {
        text += Printed("%02x", static_cast<unsigned>(digest[i]));
    }
    return text;
}

std::string ValueText(const PropertyValue& value) {
    if ((value.type & kVectorBit) != 0) {
        std::string text;
        for (std::size_t i = 0; i < value.elements.size(); ++i) {
            if (i > 0) text += "\\|";
            text += ValueText(value.elements[i]);
        }
        return text;
    }
    switch (value.type) {
        case VT_EMPTY:
        case VT_NULL:
            return "";
        case VT_BOOL:
            return value.number != 0 ? "true" : "false";
        case VT_UI8:
            return std::to_string(static_cast<std::uint64_t>(value.number));
        case VT_R4:
        case VT_R8:
        case VT_DATE:
            return RealText(value.real);
        case VT_CY:
            return CurrencyText(value.number);
        case VT_CLSID:
            return GuidText(value.guid);
        case VT_FILETIME:
            return TimeText(mddoc::Ticks(value.time));
        case VT_BLOB:
        case VT_BLOB_OBJECT:
        case VT_CF:
            return "bytes:" + std::to_string(value.cbBlob);
        case VT_LPSTR:
        case VT_LPWSTR:
        case VT_BSTR:
        case VT_STREAM:
        case VT_STORAGE:
        case VT_STREAMED_OBJECT:
        case VT_STORED_OBJECT:
            return EscapedText(value.text);
        default:
            return std::to_string(value.number);
    }
}
