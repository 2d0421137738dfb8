#include "found/hit_list_file.h"

#include <algorithm>
#include <bit>

#include "platform/output_file.h"
#include "platform/resource_text.h"
#include "resource/string_ids.h"

namespace {

constexpr WCHAR kByteOrderMark = 0xFEFF;
constexpr const WCHAR* kLineEnd = TEXT("\r\n");

using FormatCall = int(WINAPI*)(LCID, DWORD, const SYSTEMTIME*, LPCWSTR, LPWSTR, int);

// As the user's settings write it; empty when they can't.
WText Formatted(FormatCall format, DWORD flags, const SYSTEMTIME& now) {
    const int size = format(LOCALE_NEUTRAL, flags, &now, nullptr, nullptr, 0);
    WText text(static_cast<std::size_t>(std::max(size, 0)), 0);
    if (size <= 0 || format(LOCALE_NEUTRAL, flags, &now, nullptr, text.data(), size) <= 0) {
        return {};
    }
    text.pop_back();  // the terminator
    return text;
}

WText DateAndTime() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return Formatted(GetDateFormatW, DATE_LONGDATE, now) + TEXT(" ") +
           Formatted(GetTimeFormatW, TIME_NOSECONDS, now);
}

bool WriteText(OutputFile& file, const WText& text) {
    static_assert(std::endian::native == std::endian::little && sizeof(WCHAR) == 2);
    return file.Write(text.data(), text.size() * sizeof(WCHAR));
}

bool WriteLines(OutputFile& file, int count, const std::function<WText(int)>& pathOf) {
    constexpr std::size_t kEnough = 0x8000;  // units that go out at once
    WText lines;
    for (int row = 0; row < count; ++row) {
        lines += pathOf(row) + kLineEnd;
        if (lines.size() < kEnough && row + 1 < count) continue;
        if (!WriteText(file, lines)) return false;
        lines.clear();
    }
    return true;
}

}  // namespace

eHitListWrite WriteHitList(const WText& path, HINSTANCE resources, int count,
                           const std::function<WText(int)>& pathOf) {
    OutputFile file;
    if (!file.Open(path)) return eHitListWrite::NotOpened;
    const WText heading = kByteOrderMark + ResourceText(resources, STR_EXPORT_HEADING) + kLineEnd;
    const bool written = WriteText(file, heading) &&
                         WriteText(file, DateAndTime() + kLineEnd + kLineEnd) &&
                         WriteLines(file, count, pathOf);
    // What the system still holds back can fail as well.
    return file.Close() && written ? eHitListWrite::Written : eHitListWrite::NotWhole;
}
