// The lists of the find dialog, filled from the catalogue, and the check of typed input.
#include "criteria/catalogue.h"
#include "criteria/text_equality.h"
#include "dialog/find_dialog.h"
#include "module/controls.h"
#include "module/registry_key.h"
#include "outside/md_property_rows.h"
#include "outside/md_registry.h"
#include "outside/md_window_aids.h"
#include "platform/number_text.h"
#include "platform/resource_text.h"

namespace {

constexpr DWORD kPropertyNameLength = 261;  // units of a custom property's key with the terminator

void AddConditions(SRxFindDialog& dialog, std::span<const LONG> conditions) {
    for (const LONG condition : conditions) {
        if (condition == COND_IS_APP_USER) {
            dialog.StoreAString(IDC_CONDITION_LIST, dialog.appUserName, condition);
        } else if (condition == COND_IS_LOGIN_USER) {
            const bool another = dialog.loginUserName[0] != 0 &&
                                 !TextsEqual(dialog.loginUserName, dialog.appUserName, kFoldName);
            if (another) dialog.StoreAString(IDC_CONDITION_LIST, dialog.loginUserName, condition);
        } else {
            dialog.LoadAString(IDC_CONDITION_LIST, condition);
        }
    }
}

bool FillValueList(SRxFindDialog& dialog, LONG property) {
    if (property == PROP_COMP_COLOR) {
        SendTo(dialog.dialogWindow, IDC_VALUE_LIST, CB_RESETCONTENT);
        for (int i = 0; const BLxWString* name = dialog.params.GetColor(i); ++i) {
            if (!dialog.StoreAString(IDC_VALUE_LIST, name->c_str(), i)) break;
        }
        return true;
    }
    const std::vector<LONG> entries = ValueListOf(property, dialog.accessPoint);
    if (entries.empty()) return false;
    SendTo(dialog.dialogWindow, IDC_VALUE_LIST, CB_RESETCONTENT);
    for (const LONG entry : entries)
        dialog.LoadAString(IDC_VALUE_LIST, entry);
    return true;
}

void ShowValueControl(SRxFindDialog& dialog, int shown, bool enabled) {
    if (shown != IDC_VALUE_EDIT || !enabled)
        SetDlgItemTextW(dialog.dialogWindow, IDC_VALUE_EDIT, TEXT(""));
    for (const int control : {IDC_VALUE_EDIT, IDC_VALUE_LIST, IDC_VALUE_DATE}) {
        const HWND window = GetDlgItem(dialog.dialogWindow, control);
        ShowWindow(window, control == shown ? SW_SHOW : SW_HIDE);
        EnableWindow(window, control == shown && enabled);
    }
}

}  // namespace

bool SRxFindDialog::LoadAString(int control, int stringId) {
    const WText text = ResourceText(resourceInstance, static_cast<UINT>(stringId));
    return !text.empty() && StoreAString(control, text.c_str(), stringId);
}

bool SRxFindDialog::SetAString(int control, int stringId) {
    const WText text = ResourceText(resourceInstance, static_cast<UINT>(stringId));
    if (text.empty()) return false;
    SetDlgItemTextW(dialogWindow, control, text.c_str());
    return true;
}

bool SRxFindDialog::StoreAString(int control, const WCHAR* text, int itemData) {
    const LRESULT item = SendTo(dialogWindow, control, CB_ADDSTRING, 0, text);
    if (item < 0) return false;
    SendTo(dialogWindow, control, CB_SETITEMDATA, static_cast<WPARAM>(item), itemData);
    return true;
}

bool SRxFindDialog::InitProperties() {
    SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_RESETCONTENT);
    for (const PropertyRow& row : kPropertyRows) {
        if (IsCategoryOffered(lookFor, onlyAssemblies, row.category)) {
            LoadAString(IDC_PROPERTY_LIST, row.stringId);
        }
    }
    if (lookFor == eLookForNone || lookFor == eLookForDocuments) LoadUserProps();
    SetDropWidth(dialogWindow, IDC_PROPERTY_LIST);
    SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_SETCURSEL, static_cast<WPARAM>(-1));
    return true;
}

void SRxFindDialog::LoadUserProps() {
    WCHAR path[kPathLength] = TEXT("\\Wardstone\\CustomProps");
    const RegistryKeyOwner key(MDxOpenRegistryKey(HKEY_CURRENT_USER, path, kPathLength));
    if (key) {
        BLxPrefKeyIterator_Reg names(key.get());
        WCHAR name[kPropertyNameLength];
        while (names.NextKey(name, kPropertyNameLength))
            StoreAString(IDC_PROPERTY_LIST, name, kNoId);
    }
    for (const LONG id : FixedCustomProperties()) {
        const WText name = ResourceText(resourceInstance, static_cast<UINT>(id));
        const bool known = SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT,
                                  static_cast<WPARAM>(-1), name.c_str()) >= 0;
        if (!name.empty() && !known) StoreAString(IDC_PROPERTY_LIST, name.c_str(), kNoId);
    }
}

void SRxFindDialog::InitConditions() {
    const LRESULT item = SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_GETCURSEL);
    const LONG property = SelectedData(dialogWindow, IDC_PROPERTY_LIST);
    if (property == kNoId) {
        InitCustomConditions(static_cast<int>(item));
        return;
    }
    SendTo(dialogWindow, IDC_CONDITION_LIST, CB_RESETCONTENT);
    const PropertyKind* kind = FindPropertyKind(property);
    if (kind != nullptr) {
        AddConditions(*this, ConditionsOf(kind->conditions));
        const bool pick = modal && !onlyAssemblies && inApp && selectionSlot != nullptr;
        if (kind->conditions == eConditionList::FileType && pick)
            AddConditions(*this, PickConditions());
    }
    SendTo(dialogWindow, IDC_CONDITION_LIST, CB_SETEXTENDEDUI, TRUE);
    SendTo(dialogWindow, IDC_CONDITION_LIST, CB_SETCURSEL, 0);
    if (kind != nullptr &&
        (kind->conditions == eConditionList::Text || kind->conditions == eConditionList::Person)) {
        const WText first = ResourceText(resourceInstance, COND_BEGINS_WITH);
        SendTo(dialogWindow, IDC_CONDITION_LIST, CB_SELECTSTRING, static_cast<WPARAM>(-1),
               first.c_str());
    }
    EnableValueEdit();
    SetDropWidth(dialogWindow, IDC_CONDITION_LIST);
}

void SRxFindDialog::InitCustomConditions(int item) {
    SendTo(dialogWindow, IDC_CONDITION_LIST, CB_SETEXTENDEDUI, TRUE);
    SendTo(dialogWindow, IDC_CONDITION_LIST, CB_RESETCONTENT);
    if (item == kNoId)
        item = static_cast<int>(SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_GETCURSEL));
    bool yesNo = false;
    if (item != kNoId) {
        yesNo = TextsEqual(ReadComboEntry(dialogWindow, IDC_PROPERTY_LIST, item).c_str(),
                           ResourceText(resourceInstance, USER_PROP_YES_NO).c_str(), kFoldName);
    }
    AddConditions(*this, ConditionsOf(yesNo ? eConditionList::YesNo : eConditionList::All));
    SendTo(dialogWindow, IDC_CONDITION_LIST, CB_SETCURSEL, 0);
    EnableValueEdit();
    SetDropWidth(dialogWindow, IDC_CONDITION_LIST);
}

bool SRxFindDialog::EnableValueEdit() {
    const LONG condition = SelectedData(dialogWindow, IDC_CONDITION_LIST);
    const eValueControl control = ValueControlOf(condition);
    // The property decides first, the condition second.
    if (FillValueList(*this, SelectedData(dialogWindow, IDC_PROPERTY_LIST))) {
        SendTo(dialogWindow, IDC_VALUE_LIST, CB_SETCURSEL, 0);
        SetDropWidth(dialogWindow, IDC_VALUE_LIST);
        ShowValueControl(*this, IDC_VALUE_LIST, true);
    } else if (control == eValueControl::Date) {
        ShowValueControl(*this, IDC_VALUE_DATE, true);
    } else if (control == eValueControl::None) {
        ShowValueControl(*this, IDC_VALUE_EDIT, false);
    } else {
        ShowValueControl(*this, IDC_VALUE_EDIT, true);
        OnCommandValueEdit();
        return true;
    }
    EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), TRUE);
    return true;
}

eInputType SRxFindDialog::GetInputType(int propertyStringId) const {
    return InputTypeOf(propertyStringId);
}

bool SRxFindDialog::IsInputOk(int propertyStringId, const WCHAR* text, int conditionId) const {
    const WTextView typed = text;
    eInputType type = InputTypeOf(propertyStringId);
    const bool number = conditionId == COND_NUM_EQUALS || conditionId == COND_GREATER_THAN ||
                        conditionId == COND_LESS_THAN || conditionId == COND_NUM_DIFFERS;
    if (propertyStringId < 0 && number) type = eInputType::Real;
    std::size_t consumed = 0;
    LONG integer = 0;
    double real = 0;
    switch (type) {
        case eInputType::Integer:
            (void)ParseInteger(typed, integer, consumed);
            return consumed == typed.size();
        case eInputType::Real:
            (void)ParseReal(typed, real, consumed);
            return consumed == typed.size();
        case eInputType::Text:
        case eInputType::Date:
        case eInputType::List:
        case eInputType::Unclassified:
            return true;
    }
    return true;
}
