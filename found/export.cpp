// The command that writes the rows to a text file which the user names.
#include "found/found_dialog.h"
#include "found/hit_list_file.h"
#include "module/message_kinds.h"
#include "module/text_lengths.h"
#include "outside/md_messages.h"
#include "platform/resource_text.h"
#include "resource/string_ids.h"

namespace {

constexpr WCHAR kFilters[] = TEXT("(*.txt)\0*.txt\0(*.*)\0*.*\0");

// The file that the user names; empty when none is.
WText AskForFile(const SRxFoundList& list) {
    const WText title = ResourceText(list.dialog->Resources(), STR_EXPORT_TITLE);
    BLxWString folder = list.dialog->LookIn();
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

}  // namespace

bool ExportResults(SRxFoundList& list) {
    const WText path = AskForFile(list);
    if (path.empty()) return false;
    const HINSTANCE resources = list.dialog->Resources();
    const HWND window = list.window;
    const eHitListWrite result = WriteHitList(path, resources, CountRows(list),
                                              [&list](int row) { return PathOfRow(list, row); });
    if (result != eHitListWrite::Written) {
        DisplayMessageFileName(resources, path.c_str(), MSG_EXPORT_FAILED, kHelpFoundList, window,
                               MB_OK);
    }
    if (result == eHitListWrite::NotOpened) return true;
    // As far as it could be written the list is in the file, so this follows a failure, too.
    DisplayMessageId(resources, MSG_EXPORT_DONE, MB_OK, eKindInformation, 0, window);
    return true;
}
