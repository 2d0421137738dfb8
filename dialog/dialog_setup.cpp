// The controls of the find dialog as it opens: place, items, icons, the text of the server, and the
// mode that the entry chose.
#include "dialog/find_dialog.h"
#include "module/controls.h"
#include "outside/blx_registry.h"
#include "outside/md_registry.h"
#include "outside/md_window_aids.h"
#include "platform/resource_text.h"

namespace {

// A saved place so far out is moved in by this much.
constexpr LONG kScreenMargin = 20;
constexpr LONG kWayIn = 50;

void RestorePlace(const SRxFindDialog& dialog) {
    WCHAR path[kPathLength] = TEXT("\\FindExt\\LastPos");
    const HKEY key = MDxOpenRegistryKey(HKEY_CURRENT_USER, path, kPathLength);
    if (key == nullptr) return;
    LONG place[4] = {};  // left, top, width, height
    DWORD type = REG_NONE;
    DWORD cb = sizeof(place);
    const DWORD code = BLxPref_Reg::Read(key, nullptr, &type, place, &cb);
    BLxPref_Reg::CloseKey(key);
    if (code != 0 || type != REG_BINARY || cb != sizeof(place)) return;
    SetWindowPos(dialog.dialogWindow, nullptr,
                 CorrectedPlace(place[0], GetSystemMetrics(SM_CXSCREEN)),
                 CorrectedPlace(place[1], GetSystemMetrics(SM_CYSCREEN)), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOOWNERZORDER);
}

void FillLookFor(SRxFindDialog& dialog) {
    SendTo(dialog.dialogWindow, IDC_LOOK_FOR, CB_RESETCONTENT);
    if (dialog.IsAssemblyEnv()) {
        for (const LONG id : {STR_LOOK_FOR_DOCUMENTS, STR_LOOK_FOR_CONSTRAINTS,
                              STR_LOOK_FOR_FAS_ASSEMBLY, STR_LOOK_FOR_WELDS}) {
            dialog.LoadAString(IDC_LOOK_FOR, id);
        }
        dialog.SetLookForType(eLookForDocuments, false);
    } else if (dialog.IsPartEnv()) {
        for (const LONG id : {STR_LOOK_FOR_FAS_SKETCH, STR_LOOK_FOR_FAS_PART})
            dialog.LoadAString(IDC_LOOK_FOR, id);
        dialog.SetLookForType(eLookForFasSketch, false);
    } else if (!dialog.IsHalvrineEnv()) {
        dialog.LoadAString(IDC_LOOK_FOR, FILETYPE_DESIGN_DOCS);
    }
    if (dialog.IsAssemblyEnv() || dialog.IsPartEnv())
        dialog.SetAString(IDC_LOOK_FOR_LABEL, STR_LOOK_FOR_LABEL);
    SetDropWidth(dialog.dialogWindow, IDC_LOOK_FOR);
    SendTo(dialog.dialogWindow, IDC_LOOK_FOR, CB_SETCURSEL, 0);
}

void SetButtonIcon(SRxFindDialog& dialog, int button, int icon) {
    const HANDLE image = LoadImageW(dialog.resourceInstance, MAKEINTRESOURCEW(icon), IMAGE_ICON, 0,
                                    0, LR_DEFAULTSIZE);
    SendTo(dialog.dialogWindow, button, BM_SETIMAGE, IMAGE_ICON, image);
}

void SetWindowIcon(SRxFindDialog& dialog, int icon) {
    const HANDLE image =
        LoadImageW(dialog.resourceInstance, MAKEINTRESOURCEW(icon), IMAGE_ICON,
                   GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), 0);
    if (image == nullptr) return;
    SendMessageW(dialog.dialogWindow, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(image));
}

void ShowContext(SRxFindDialog& dialog) {
    HRESULT status = S_OK;
    WCHAR text[kPathLength] = {};
    IQxLecternServer* const reader = dialog.GetServer(&status, text, kPathLength);
    if (status < 0 || reader == nullptr) return;  // the template's text stays
    const WText shown =
        *text != 0 ? WText(text) : ResourceText(dialog.resourceInstance, STR_DEFAULT_CONTEXT);
    SetDlgItemTextW(dialog.dialogWindow, IDC_CONTEXT_TEXT, shown.c_str());
}

// The search looks into one document: nothing else can be chosen.
void SetUpForAssembly(SRxFindDialog& dialog) {
    if (const MDxFileNameNode* document = dialog.GetSelection()) {
        SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_RESETCONTENT);
        SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_INSERTSTRING, 0, document->GetFileName());
        SendTo(dialog.dialogWindow, IDC_PATH_LIST, CB_SETCURSEL, 0);
    }
    for (const int control : {IDC_BROWSE, IDC_PATH_LIST})
        EnableWindow(GetDlgItem(dialog.dialogWindow, control), FALSE);
    for (const int control : {IDC_LOOK_FOLDER, IDC_LOOK_SUBFOLDERS, IDC_LOOK_RELATED}) {
        SendTo(dialog.dialogWindow, control, BM_SETCHECK, BST_UNCHECKED);
        EnableWindow(GetDlgItem(dialog.dialogWindow, control), FALSE);
        ShowWindow(GetDlgItem(dialog.dialogWindow, control), SW_HIDE);
    }
    ShowWindow(GetDlgItem(dialog.dialogWindow, IDC_ASSEMBLY_LABEL), SW_SHOW);
    dialog.SetDialogTitle(0);
}

}  // namespace

LONG CorrectedPlace(LONG saved, LONG screen) {
    const LONG most = screen - kScreenMargin;
    const LONG place = saved > most ? most - kWayIn : saved;
    return place < 0 ? 0 : place;
}

bool SRxFindDialog::InitDialogControls() {
    const SRxQuietControls quiet(*this);
    MDxCalcSizeDialog(dialogWindow, true);
    RestorePlace(*this);
    constexpr WPARAM kRowExtent = 32000;
    SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_SETHORIZONTALEXTENT, kRowExtent);
    SendTo(dialogWindow, IDC_VALUE_EDIT, EM_LIMITTEXT, kValueLength);
    FillLookFor(*this);
    bool result = InitProperties();
    SetButtonIcon(*this, IDC_BROWSE, IDI_BROWSE);
    SetButtonIcon(*this, IDHELP, IDI_HELP_BUTTON);
    SendTo(dialogWindow, IDC_JOIN_OR, BM_SETCHECK, BST_UNCHECKED);
    SendTo(dialogWindow, IDC_JOIN_AND, BM_SETCHECK, BST_CHECKED);
    // Without it the list is empty, which the buttons show.
    (void)InitDefaultCriteria();
    SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_SETCURSEL, 0);
    SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_SETCURSEL, static_cast<WPARAM>(-1));
    InitCustomConditions(kNoId);
    ShowContext(*this);
    if (inApp && onlyAssemblies) {
        SetUpForAssembly(*this);
        SetWindowIcon(*this, IDI_FIND_IN_ASSEMBLY);
    } else {
        ShowWindow(GetDlgItem(dialogWindow, IDC_ASSEMBLY_LABEL), SW_HIDE);
        SendTo(dialogWindow, IDC_LOOK_SUBFOLDERS, BM_SETCHECK, BST_UNCHECKED);
        SendTo(dialogWindow, IDC_LOOK_RELATED, BM_SETCHECK, BST_UNCHECKED);
        SendTo(dialogWindow, IDC_LOOK_FOLDER, BM_SETCHECK, BST_CHECKED);
        result = InitPaths();
        SetWindowIcon(*this, IDI_FIND);
    }
    SetFocus(GetDlgItem(dialogWindow, IDC_PROPERTY_LIST));
    return result;
}
