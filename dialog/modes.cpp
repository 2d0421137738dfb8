// What the place of the start and the kind of thing looked for change in the dialog.
#include "dialog/find_dialog.h"
#include "module/controls.h"
#include "platform/resource_text.h"

bool SRxFindDialog::IsAssemblyEnv() const {
    return accessPoint == eAccessAssembly || accessPoint == eAccessAssemblyAlt;
}

bool SRxFindDialog::IsPartEnv() const {
    return accessPoint == eAccessPart || accessPoint == eAccessPartAlt;
}

bool SRxFindDialog::IsHalvrineEnv() const {
    return accessPoint != eAccessFindFiles && accessPoint != eAccessShellWindow &&
           accessPoint != eAccessShellNoWindow;
}

void SRxFindDialog::SetDialogTitle(unsigned) {
    LONG title = 0;
    if (!IsAssemblyEnv() && !IsPartEnv()) {
        title = STR_TITLE_FILES;
    } else {
        switch (lookFor) {
            case eLookForDocuments:
                title = IsAssemblyEnv() ? STR_TITLE_DOCUMENTS : 0;
                break;
            case eLookForConstraints:
                title = IsAssemblyEnv() ? STR_TITLE_CONSTRAINTS : 0;
                break;
            case eLookForFasAssembly:
                title = IsAssemblyEnv() ? STR_TITLE_FAS_ASSEMBLY : 0;
                break;
            case eLookForWelds:
                title = IsAssemblyEnv() ? STR_TITLE_WELDS : 0;
                break;
            case eLookForFasSketch:
                title = IsPartEnv() ? STR_TITLE_FAS_SKETCH : 0;
                break;
            case eLookForFasPart:
                title = IsPartEnv() ? STR_TITLE_FAS_PART : 0;
                break;
            case eLookForNone:
            case eLookForFiles:
                break;
        }
    }
    // A kind that the environment doesn't have leaves the title empty.
    const WText text =
        title != 0 ? ResourceText(resourceInstance, static_cast<UINT>(title)) : WText();
    SetWindowTextW(dialogWindow, text.c_str());
}

void SRxFindDialog::SetLookForType(eLookFor value, bool selectItem) {
    lookFor = value;
    if (lookForOut != nullptr) *lookForOut = value;
    const auto row = lookForStrings.find(value);
    if (row == lookForStrings.end()) return;
    SetDialogTitle(0);
    if (!selectItem) return;
    const LRESULT count = SendTo(dialogWindow, IDC_LOOK_FOR, CB_GETCOUNT);
    for (WPARAM item = 0; static_cast<LRESULT>(item) < count; ++item) {
        if (SendTo(dialogWindow, IDC_LOOK_FOR, CB_GETITEMDATA, item) != row->second) continue;
        SendTo(dialogWindow, IDC_LOOK_FOR, CB_SETCURSEL, item);
        InitProperties();
        return;
    }
}

void SRxFindDialog::SetLookForType() {
    const LONG chosen = SelectedData(dialogWindow, IDC_LOOK_FOR);
    if (chosen == kNoId) return;
    for (const auto& [kind, stringId] : lookForStrings) {
        if (stringId == chosen) {
            SetLookForType(kind, false);
            return;
        }
    }
}
