#include "store/search_dialogs.h"

#include <algorithm>

#include "module/controls.h"
#include "module/dialog_help.h"
#include "module/message_kinds.h"
#include "outside/md_messages.h"
#include "outside/md_window_aids.h"
#include "platform/processes.h"
#include "platform/resource_text.h"
#include "resource/control_ids.h"
#include "resource/string_ids.h"
#include "store/saved_search.h"

namespace {

constexpr std::size_t kUsualNameLength = 130;

WText TextOf(const SRxSearchListRecord& record, UINT id) {
    return ResourceText(record.dialog->Resources(), id);
}

// True when the user agreed.
bool Show(const SRxSearchListRecord& record, const WText& text, bool question) {
    return DisplayMessageString(text.c_str(), question, eKindQuestion, kHelpSaveSearch,
                                record.window);
}

void SayNameIsTooLong(const SRxSearchListRecord& record) {
    Show(
        record,
        wtext::Format(TextOf(record, MSG_NAME_TOO_LONG), {wtext::FromNumber(record.maxNameLength)}),
        false);
}

// The two assembly environments see each other's searches; a part environment sees only its own. A
// search without an environment is everywhere but there.
bool FitsEnvironment(const WText& name, unsigned accessPoint) {
    LONG stored = 0;
    const auto isAssembly = [](unsigned place) {
        return place == eAccessAssembly || place == eAccessAssemblyAlt;
    };
    switch (EnvironmentOfSavedSearch(name.c_str(), stored)) {
        case eStoredEnvironment::NoSearch:
            return false;
        case eStoredEnvironment::Missing:
            return accessPoint != eAccessPart && accessPoint != eAccessPartAlt;
        case eStoredEnvironment::Known:
            break;
    }
    const auto place = static_cast<unsigned>(stored);
    return place == accessPoint || (isAssembly(place) && isAssembly(accessPoint));
}

void FillSearchList(SRxSearchListRecord& record) {
    record.filling = true;
    const HWND list = GetDlgItem(record.window, IDC_SEARCH_LIST);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    std::size_t longest = 0;
    for (const WText& name : SavedSearchNames()) {
        longest = std::max(longest, name.size());
        if (!FitsEnvironment(name, record.accessPoint)) continue;
        SendMessageW(list, LB_INSERTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(name.c_str()));
    }
    SendMessageW(list, LB_SETCURSEL, 0, 0);
    if (longest == 0) longest = kUsualNameLength;
    // Three quarters of an average letter, which is 4 dialog units, for each.
    RECT extent{};
    extent.right = static_cast<LONG>(longest * 3);
    MapDialogRect(record.window, &extent);
    SendMessageW(list, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(extent.right), 0);
    record.filling = false;
}

// The selected name; empty without a selection.
WText SelectedName(const SRxSearchListRecord& record, LRESULT* row) {
    const HWND list = GetDlgItem(record.window, IDC_SEARCH_LIST);
    *row = SendMessageW(list, LB_GETCURSEL, 0, 0);
    if (*row < 0) return {};
    return ReadListEntry(record.window, IDC_SEARCH_LIST, *row);
}

void Pick(SRxSearchListRecord& record) {
    LRESULT row = 0;
    const WText name = SelectedName(record, &row);
    if (!name.empty() && wtext::CopyWhole(record.name, kPathLength, name)) {
        EndDialog(record.window, 1);
    }
}

void Delete(SRxSearchListRecord& record) {
    LRESULT row = 0;
    const WText name = SelectedName(record, &row);
    if (row < 0 || name.empty()) return;
    if (!Show(record, wtext::Format(TextOf(record, MSG_ASK_DELETE), {name}), true)) return;
    std::vector<WText> finished;
    WText lock;
    const bool deleted = [&] {
        const LockWait wait(kMostLockWait);
        const bool gone = DeleteSavedSearch(name.c_str(), finished);
        lock = wait.GivenUp();
        return gone;
    }();
    if (deleted || !finished.empty()) {
        // Anew: a finished one may have no row yet, and the rows may be others since the question.
        FillSearchList(record);
        SendDlgItemMessageW(record.window, IDC_SEARCH_LIST, LB_SETCURSEL, static_cast<WPARAM>(-1),
                            0);
    }
    record.dialog->TellOfFinishedSaves(finished);
    if (!deleted) record.dialog->SayAboutSearch(MSG_DELETE_FAILED, name.c_str(), lock);
}

void OnOpenCommand(SRxSearchListRecord& record, int control, int code) {
    switch (control) {
        case IDOK:
            Pick(record);
            break;
        case IDC_SEARCH_LIST:
            if (code == LBN_DBLCLK) Pick(record);
            break;
        case IDCANCEL:
            EndDialog(record.window, 0);
            break;
        case IDC_DELETE_SEARCH:
            Delete(record);
            break;
        default:
            break;
    }
}

void PrepareNameField(SRxSearchListRecord& record) {
    record.filling = true;
    SetDlgItemTextW(record.window, IDC_SEARCH_NAME, TEXT(""));
    SendDlgItemMessageW(record.window, IDC_SEARCH_NAME, EM_LIMITTEXT, record.maxNameLength, 0);
    EnableWindow(GetDlgItem(record.window, IDOK), FALSE);
    record.filling = false;
}

// False: the dialog stays open.
bool TakeName(SRxSearchListRecord& record) {
    const LRESULT length =
        SendDlgItemMessageW(record.window, IDC_SEARCH_NAME, WM_GETTEXTLENGTH, 0, 0);
    if (length > static_cast<LRESULT>(record.maxNameLength)) {
        SayNameIsTooLong(record);
        return false;
    }
    record.name[0] = 0;
    if (length < 1) return true;
    GetDlgItemTextW(record.window, IDC_SEARCH_NAME, record.name, kPathLength);
    if (!NamesASearch(record.name)) {
        record.name[0] = 0;
        DisplayMessageString(TextOf(record, MSG_NAME_BACKSLASH).c_str(), false, eKindWarning,
                             kHelpSaveSearch, record.window);
        return false;
    }
    if (!HasSavedSearch(record.name)) return true;
    // The old search goes when the new one is written: a failure in between loses neither.
    const int answer = DisplayMessageId(record.dialog->Resources(), MSG_ASK_OVERWRITE, MB_YESNO,
                                        eKindQuestion, kHelpSaveSearch, record.window);
    if (answer == IDYES || answer == IDOK) return true;
    record.name[0] = 0;
    return false;
}

void OnSaveCommand(SRxSearchListRecord& record, int control, int code) {
    switch (control) {
        case IDOK:
            if (TakeName(record)) EndDialog(record.window, 1);
            break;
        case IDCANCEL:
            record.name[0] = 0;
            EndDialog(record.window, 0);
            break;
        case IDC_SEARCH_NAME:
            if (code == EN_MAXTEXT) {
                SayNameIsTooLong(record);
            } else if ((code == EN_CHANGE || code == EN_UPDATE) && !record.filling) {
                const LRESULT length =
                    SendDlgItemMessageW(record.window, IDC_SEARCH_NAME, WM_GETTEXTLENGTH, 0, 0);
                EnableWindow(GetDlgItem(record.window, IDOK), length > 0);
            }
            break;
        default:
            break;
    }
}

SRxSearchListRecord* RecordOf(HWND dialog) {
    return reinterpret_cast<SRxSearchListRecord*>(GetWindowLongPtrW(dialog, DWLP_USER));
}

// What differs between the dialogs.
struct DialogKind {
    int templateId;
    void (*fill)(SRxSearchListRecord&);
    void (*onCommand)(SRxSearchListRecord&, int control, int code);
};

INT_PTR Dispatch(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, const DialogKind& kind) {
    SRxSearchListRecord* record = RecordOf(dialog);
    switch (message) {
        case WM_INITDIALOG:
            SetWindowLongPtrW(dialog, DWLP_USER, lParam);
            MDxSubstituteShellFont(dialog);
            SetWindowContextHelpId(dialog, static_cast<DWORD>(kind.templateId));
            record = reinterpret_cast<SRxSearchListRecord*>(lParam);
            if (record != nullptr) {
                record->window = dialog;
                record->dialog->SetNestedDialog(dialog);
                kind.fill(*record);
            }
            return TRUE;
        case WM_COMMAND:
            if (record != nullptr) kind.onCommand(*record, LOWORD(wParam), HIWORD(wParam));
            return TRUE;
        case WM_DESTROY:
            if (record != nullptr) record->dialog->SetNestedDialog(nullptr);
            return TRUE;
        default:
            return AnswerHelpMessage(message, wParam, lParam) ? TRUE : FALSE;
    }
}

INT_PTR Receive(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, const DialogKind& kind) {
    try {
        return Dispatch(dialog, message, wParam, lParam, kind);
    } catch (...) {
        if (const auto* record = RecordOf(dialog)) record->dialog->TellOutOfMemory(dialog);
        return TRUE;
    }
}

}  // namespace

SRxSearchListRecord::SRxSearchListRecord(SRxSearchListOwner* owner, eAccessPoint from)
    : dialog(owner),
      maxNameLength(static_cast<unsigned>(MostUnitsOfSearchName())),
      accessPoint(from) {}

INT_PTR CALLBACK OpenSearchDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    return Receive(dialog, message, wParam, lParam,
                   {IDD_SR_OPENSEARCH, FillSearchList, OnOpenCommand});
}

INT_PTR CALLBACK SaveSearchDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    return Receive(dialog, message, wParam, lParam,
                   {IDD_SR_SAVESEARCH, PrepareNameField, OnSaveCommand});
}
