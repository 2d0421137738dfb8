// The rows as a text file: UTF-16, little-endian, with a byte order mark.
#include <algorithm>
#include <bit>

#include "found/found_dialog.h"
#include "outside/md_messages.h"
#include "platform/output_file.h"
#include "platform/resource_text.h"
#include "search/search.h"

namespace {

constexpr WCHAR kByteOrderMark = 0xFEFF;
constexpr const WCHAR* kLineEnd = TEXT("\r\n");
constexpr WCHAR kFilters[] = TEXT("(*.txt)\0*.txt\0(*.*)\0*.*\0");

// The file that the user names; empty when none is.
WText AskForFile(const SRxFoundList& list) {
    const WText title = ResourceText(list.dialog->resourceInstance, STR_EXPORT_TITLE);
    BLxWString folder = ReadControlText(list.dialog->dialogWindow, IDC_PATH_LIST);
    PathRemoveFileSpecW(folder.data());
    WCHAR path[kPathLength] = {};
    OPENFILENAMEW request{};
    request.lStructSize = sizeof request;
    request.hwndOwner = list.window;
    request.lpstrFilter = kFilters;
    request.lpstrFile = path;
    request.nMaxFile = kPathLength;
    request.lpstrInitialDir = folder.c_str();
    request.lpstrTitle = title.c_str();
    request.Flags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_NOREADONLYRETURN;
    request.lpstrDefExt = TEXT(".txt");
    if (GetSaveFileNameW(&request)) return path;
    (void)CommDlgExtendedError();
    return {};
}

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

bool WriteRows(const SRxFoundList& list, OutputFile& file) {
    constexpr std::size_t kEnough = 0x8000;  // units that go out at once
    WText lines;
    const int count = CountRows(list);
    for (int row = 0; row < count; ++row) {
        lines += PathOfRow(list, row) + kLineEnd;
        if (lines.size() < kEnough && row + 1 < count) continue;
        if (!WriteText(file, lines)) return false;
        lines.clear();
    }
    return true;
}

bool WriteResults(const SRxFoundList& list, OutputFile& file) {
    const WText heading =
        kByteOrderMark + ResourceText(list.dialog->resourceInstance, STR_EXPORT_HEADING) + kLineEnd;
    const bool written = WriteText(file, heading) &&
                         WriteText(file, DateAndTime() + kLineEnd + kLineEnd) &&
                         WriteRows(list, file);
    // What the system still holds back can fail as well.
    return file.Close() && written;
}

}  // namespace

bool ExportResults(SRxFoundList& list) {
    const WText path = AskForFile(list);
    if (path.empty()) return false;
    const HINSTANCE resources = list.dialog->resourceInstance;
    const HWND window = list.window;
    const auto tellFailed = [&] {
        DisplayMessageFileName(resources, path.c_str(), MSG_EXPORT_FAILED, kHelpFoundList, window,
                               MB_OK);
    };
    OutputFile file;
    if (!file.Open(path)) {
        tellFailed();
        return true;
    }
    // As far as it could be written the list stands in the file, so that is told behind a failure
    // too.
    if (!WriteResults(list, file)) tellFailed();
    DisplayMessageId(resources, MSG_EXPORT_DONE, MB_OK, eKindInformation, 0, window);
    return true;
}
