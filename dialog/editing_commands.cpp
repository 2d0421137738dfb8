// The commands through which a person composes the list: the controls, the criteria and their rows
// are kept in step here.
#include "criteria/catalogue.h"
#include "criteria/stored_date.h"
#include "dialog/criteria_rows.h"
#include "dialog/dialog_messages.h"
#include "module/controls.h"
#include "outside/md_messages.h"
#include "outside/md_property_rows.h"
#include "platform/new_or_null.h"
#include "platform/resource_text.h"

namespace {

constexpr WPARAM kFromStart = static_cast<WPARAM>(-1);

bool ReadValue(const SRxFindDialog& dialog, LONG property, LONG condition, WText& value,
               LONG& valueId) {
    const PropertyKind* kind = property >= 0 ? FindPropertyKind(property) : nullptr;
    const eValueSource source = kind != nullptr ? kind->source : eValueSource::Edit;
    valueId = kNoId;
    if (ValueControlOf(condition) == eValueControl::Date) {
        SYSTEMTIME date{};
        const LRESULT state =
            SendTo(dialog.dialogWindow, IDC_VALUE_DATE, DTM_GETSYSTEMTIME, 0, &date);
        value = state == GDT_VALID ? StoredDateText(date) : WText();
        return true;
    }
    if (source != eValueSource::Edit) {
        value = ReadControlText(dialog.dialogWindow, IDC_VALUE_LIST, kLabelLength);
        if (source == eValueSource::ListId)
            valueId = SelectedData(dialog.dialogWindow, IDC_VALUE_LIST);
        return true;
    }
    // One more than a criterion holds, so that a text that is too long is seen and not cut.
    value = ReadControlText(dialog.dialogWindow, IDC_VALUE_EDIT, kLabelLength + 1);
    if (value.size() < kValueLength && dialog.IsInputOk(property, value.c_str(), condition))
        return true;
    const WText text = wtext::Format(ResourceText(dialog.resourceInstance, MSG_BAD_VALUE), {value});
    DisplayMessageStringEx(dialog.resourceInstance, text.c_str(), MB_OK, eKindWarning, kHelpFind,
                           dialog.dialogWindow);
    return false;
}

void TakeOfferedCategory(const SRxFindDialog& dialog, SRxCriteriaNode& node) {
    const LONG category = CategoryMeantBy(dialog.lookFor);
    for (const PropertyRow& row : kPropertyRows) {
        if (row.stringId != node.propertyStringId || row.category != category) continue;
        node.propertyNumber = row.number;
        node.propertyCategory = row.category;
    }
}

std::unique_ptr<SRxCriteriaNode> ComposeCriterion(const SRxFindDialog& dialog, LONG property,
                                                  LONG condition, const WText& value,
                                                  LONG valueId) {
    const bool isAnd = dialog.criteriaHead == nullptr ||
                       SendTo(dialog.dialogWindow, IDC_JOIN_AND, BM_GETCHECK) != BST_UNCHECKED;
    const LONG join = isAnd ? JOIN_AND : JOIN_OR;
    std::unique_ptr<SRxCriteriaNode> node;
    if (property >= 0) {
        node = NewOrNull<SRxCriteriaNode>(property, condition, join, value.c_str(), valueId);
        if (node != nullptr) TakeOfferedCategory(dialog, *node);
    } else {
        const WText name = ReadControlText(dialog.dialogWindow, IDC_PROPERTY_LIST, kComposedLength);
        if (name.empty()) {
            Say(dialog, MSG_NO_PROPERTY);
            return nullptr;
        }
        node = NewOrNull<SRxCriteriaNode>(name.c_str(), condition, join, value.c_str());
    }
    if (node == nullptr) Say(dialog, MSG_OUT_OF_MEMORY);
    return node;
}

void ShowCriterion(SRxFindDialog& dialog, const SRxCriteriaNode& node) {
    const auto find = [&dialog](int control, UINT message, const WCHAR* text) {
        return SendTo(dialog.dialogWindow, control, message, kFromStart, text);
    };
    const auto select = [&dialog](int control, LRESULT item) {
        SendTo(dialog.dialogWindow, control, CB_SETCURSEL, static_cast<WPARAM>(item));
    };
    if (node.propertyStringId < 0) {
        const WCHAR* name = node.customName.c_str();
        LRESULT item = find(IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT, name);
        if (item < 0) item = find(IDC_PROPERTY_LIST, CB_FINDSTRING, name);
        select(IDC_PROPERTY_LIST, item);
        if (item < 0) SetDlgItemTextW(dialog.dialogWindow, IDC_PROPERTY_LIST, name);
        dialog.InitCustomConditions(kNoId);
    } else {
        const WText name =
            ResourceText(dialog.resourceInstance, static_cast<UINT>(node.propertyStringId));
        const LRESULT item = find(IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT, name.c_str());
        if (item >= 0) select(IDC_PROPERTY_LIST, item);
        dialog.InitConditions();
    }
    // An item with a user's name stands there for that user, not for the condition's own text.
    const WText condition =
        ResourceText(dialog.resourceInstance, static_cast<UINT>(node.conditionId));
    const LRESULT item = find(IDC_CONDITION_LIST, CB_FINDSTRING, condition.c_str());
    if (item >= 0 && !condition.empty()) select(IDC_CONDITION_LIST, item);
    dialog.EnableValueEdit();
    if (ValueControlOf(node.conditionId) == eValueControl::Date) {
        SYSTEMTIME date;
        if (ReadStoredDate(node.value, date)) {
            SendTo(dialog.dialogWindow, IDC_VALUE_DATE, DTM_SETSYSTEMTIME, GDT_VALID, &date);
        }
    } else {
        SetDlgItemTextW(dialog.dialogWindow, IDC_VALUE_EDIT, node.value);
        const LRESULT entry = find(IDC_VALUE_LIST, CB_FINDSTRINGEXACT, node.value);
        if (entry >= 0) select(IDC_VALUE_LIST, entry);
    }
    const bool isAnd = node.joinType == JOIN_AND;
    SendTo(dialog.dialogWindow, IDC_JOIN_AND, BM_SETCHECK, isAnd ? BST_CHECKED : BST_UNCHECKED);
    SendTo(dialog.dialogWindow, IDC_JOIN_OR, BM_SETCHECK, isAnd ? BST_UNCHECKED : BST_CHECKED);
}

void NeedAllConditions(SRxFindDialog& dialog) {
    // Two that only the list of all conditions has together.
    for (const UINT id : {COND_IS_YES, COND_LAST_MONTH}) {
        const WText text = ResourceText(dialog.resourceInstance, id);
        if (SendTo(dialog.dialogWindow, IDC_CONDITION_LIST, CB_FINDSTRINGEXACT, kFromStart,
                   text.c_str()) < 0) {
            dialog.InitCustomConditions(kNoId);
            return;
        }
    }
}

}  // namespace

bool SRxFindDialog::OnCommandAdd() {
    const LONG property = SelectedData(dialogWindow, IDC_PROPERTY_LIST);
    const LONG condition = SelectedData(dialogWindow, IDC_CONDITION_LIST);
    WText value;
    LONG valueId = kNoId;
    if (!ReadValue(*this, property, condition, value, valueId)) return false;
    auto node = ComposeCriterion(*this, property, condition, value, valueId);
    if (node == nullptr) return false;
    bool replaced = false;
    if (!AddNode(node.get(), false, nullptr, &replaced)) return false;
    ShowAdded(*this, *node.release(), replaced);
    SetDlgItemTextW(dialogWindow, IDC_VALUE_EDIT, TEXT(""));
    pendingCriterion = false;
    EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), FALSE);
    EnableButtons(criteriaHead != nullptr);
    if (SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_GETCOUNT) == 1) {
        SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_SETCURSEL, 0);
    }
    return true;
}

bool SRxFindDialog::OnCommandDelete() {
    SRxCriteriaNode* selected = SelectedCriterion(*this);
    if (selected == nullptr) return true;
    const int row = RowOf(*this, selected);
    SRxCriteriaNode* const successor = selected->nextCriterion;
    // An Or group that loses its opening And stays one group, opened by its first member.
    SRxCriteriaNode* const opener =
        selected->joinType == JOIN_AND && successor != nullptr && successor->joinType == JOIN_OR
            ? successor
            : nullptr;
    fileSearchType = propSearchType = FILE_SEARCH_ANY;
    for (const SRxCriteriaNode* each = criteriaHead; each != nullptr; each = each->nextCriterion) {
        if (each == selected) continue;
        fileSearchType = GetFileSearchType(*each);
        SetPropSearchType(*each);
    }
    DeleteNode(&selected);
    SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_DELETESTRING, static_cast<WPARAM>(row));
    for (SRxCriteriaNode* const node : {criteriaHead, opener}) {
        if (node == nullptr || node->joinType != JOIN_OR) continue;
        node->joinType = JOIN_AND;
        RewriteRow(*this, *node);
    }
    const LRESULT rows = SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_GETCOUNT);
    if (rows >= 1) {
        const int next = successor != nullptr || row == 0 ? row : row - 1;
        SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_SETCURSEL, static_cast<WPARAM>(next));
        EnableValueEdit();
        EnableButtons(TRUE);
    } else if (criteriaHead == nullptr) {
        EnableButtons(FALSE);
    }
    return true;
}

bool SRxFindDialog::OnCommandCriterList() {
    const SRxCriteriaNode* selected = SelectedCriterion(*this);
    if (selected == nullptr) return true;
    const SRxQuietControls quiet(*this);
    ShowCriterion(*this, *selected);
    EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), FALSE);
    return true;
}

bool SRxFindDialog::OnCommandPropertyList(WPARAM wParam) {
    pendingCriterion = true;
    if (HIWORD(wParam) == CBN_SELCHANGE) {
        InitConditions();
    } else {
        NeedAllConditions(*this);
    }
    return true;
}

bool SRxFindDialog::OnCommandPropertyListKillFocus() {
    if (SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_GETCURSEL) >= 0) return true;
    const WText name = ReadControlText(dialogWindow, IDC_PROPERTY_LIST, kPathLength);
    if (name.empty()) return true;
    const LRESULT item =
        SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT, kFromStart, name.c_str());
    if (item < 0) {
        NeedAllConditions(*this);
        return true;
    }
    // The typed name of a property of the list counts as choosing it.
    SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_SETCURSEL, static_cast<WPARAM>(item));
    InitConditions();
    return true;
}

bool SRxFindDialog::OnCommandConditionList() {
    pendingCriterion = true;
    return EnableValueEdit();
}

bool SRxFindDialog::OnCommandValueEdit() {
    if (!IsWindowEnabled(GetDlgItem(dialogWindow, IDC_VALUE_EDIT))) return true;
    const LONG condition = SelectedData(dialogWindow, IDC_CONDITION_LIST);
    const bool mayBeEmpty = condition == COND_EQUALS || condition == COND_DIFFERS;
    const bool complete =
        mayBeEmpty || !ReadControlText(dialogWindow, IDC_VALUE_EDIT, kLabelLength).empty();
    if (complete) pendingCriterion = true;
    EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), complete);
    return true;
}

bool SRxFindDialog::OnCommandValueList() {
    EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), TRUE);
    return true;
}

bool SRxFindDialog::OnNotifyValueDate(const NMDATETIMECHANGE* change) {
    if (!IsWindowEnabled(GetDlgItem(dialogWindow, IDC_VALUE_DATE))) return true;
    const bool valid = change->dwFlags != static_cast<DWORD>(GDT_ERROR);
    if (valid) pendingCriterion = true;
    EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), valid);
    return true;
}

bool SRxFindDialog::OnCommandNewSearch() {
    SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_RESETCONTENT);
    delete criteriaHead;
    criteriaHead = nullptr;
    const bool started = InitDefaultCriteria();
    SendTo(dialogWindow, IDC_CRITERIA_LIST, LB_SETCURSEL, 0);
    SendTo(dialogWindow, IDC_PROPERTY_LIST, CB_SETCURSEL, kFromStart);
    InitCustomConditions(kNoId);
    EnableButtons(criteriaHead != nullptr);
    return started;
}
