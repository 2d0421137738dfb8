// The commands through which a person composes the list: the controls, the criteria and their rows
// are kept in step here.
#include "criteria/catalogue.h"
#include "criteria/stored_date.h"
#include "dialog/find_dialog.h"
#include "module/control_text.h"
#include "outside/md_messages.h"
#include "outside/md_property_rows.h"
#include "platform/new_or_null.h"
#include "platform/resource_text.h"

namespace {

constexpr WPARAM kFromStart = static_cast<WPARAM>(-1);

}  // namespace

bool SRxFindDialog::ReadValue(LONG property, LONG condition, WText& value, LONG& valueId) const {
    const PropertyKind* kind = property >= 0 ? FindPropertyKind(property) : nullptr;
    const eValueSource source = kind != nullptr ? kind->source : eValueSource::Edit;
    valueId = kNoId;
    if (ValueControlOf(condition) == eValueControl::Date) {
        SYSTEMTIME date{};
        const LRESULT state = SendToControl(IDC_VALUE_DATE, DTM_GETSYSTEMTIME, 0, &date);
        value = state == GDT_VALID ? StoredDateText(date) : WText();
        return true;
    }
    if (source != eValueSource::Edit) {
        value = ReadControlText(dialogWindow, IDC_VALUE_LIST, kLabelLength);
        if (source == eValueSource::ListId) valueId = SelectedData(IDC_VALUE_LIST);
        return true;
    }
    // One more than a criterion holds, so that a text that is too long is seen and not cut.
    value = ReadControlText(dialogWindow, IDC_VALUE_EDIT, kLabelLength + 1);
    if (value.size() < kValueLength && IsInputOk(property, value.c_str(), condition)) return true;
    const WText text = wtext::Format(ResourceText(resourceInstance, MSG_BAD_VALUE), {value});
    DisplayMessageStringEx(resourceInstance, text.c_str(), MB_OK, eKindWarning, kHelpFind,
                           dialogWindow);
    return false;
}

std::unique_ptr<SRxCriteriaNode> SRxFindDialog::ComposeCriterion(LONG property, LONG condition,
                                                                 const WText& value,
                                                                 LONG valueId) const {
    const bool isAnd =
        criteriaHead == nullptr || SendToControl(IDC_JOIN_AND, BM_GETCHECK) != BST_UNCHECKED;
    const LONG join = isAnd ? JOIN_AND : JOIN_OR;
    std::unique_ptr<SRxCriteriaNode> node;
    if (property >= 0) {
        node = NewOrNull<SRxCriteriaNode>(property, condition, join, value.c_str(), valueId);
        if (node != nullptr) TakeOfferedCategory(*node);
    } else {
        const WText name = ReadControlText(dialogWindow, IDC_PROPERTY_LIST, kComposedLength);
        if (name.empty()) {
            Say(MSG_NO_PROPERTY);
            return nullptr;
        }
        node = NewOrNull<SRxCriteriaNode>(name.c_str(), condition, join, value.c_str());
    }
    if (node == nullptr) Say(MSG_OUT_OF_MEMORY);
    return node;
}

void SRxFindDialog::TakeOfferedCategory(SRxCriteriaNode& node) const {
    const LONG category = CategoryMeantBy(lookFor);
    for (const PropertyRow& row : kPropertyRows) {
        if (row.stringId != node.propertyStringId || row.category != category) continue;
        node.propertyNumber = row.number;
        node.propertyCategory = row.category;
    }
}

bool SRxFindDialog::OnCommandAdd() {
    const LONG property = SelectedData(IDC_PROPERTY_LIST);
    const LONG condition = SelectedData(IDC_CONDITION_LIST);
    WText value;
    LONG valueId = kNoId;
    if (!ReadValue(property, condition, value, valueId)) return false;
    auto node = ComposeCriterion(property, condition, value, valueId);
    if (node == nullptr) return false;
    bool replaced = false;
    if (!AddNode(node.get(), false, nullptr, &replaced)) return false;
    ShowAdded(*node.release(), replaced);
    SetDlgItemTextW(dialogWindow, IDC_VALUE_EDIT, TEXT(""));
    pendingCriterion = false;
    EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), FALSE);
    EnableButtons(criteriaHead != nullptr);
    if (SendToControl(IDC_CRITERIA_LIST, LB_GETCOUNT) == 1) {
        SendToControl(IDC_CRITERIA_LIST, LB_SETCURSEL, 0);
    }
    return true;
}

// Rows and criteria are matched by the criterion, since some have no row.
void SRxFindDialog::ShowAdded(SRxCriteriaNode& added, bool replaced) {
    int index = 0;
    int rows = 0;
    bool before = true;
    for (const SRxCriteriaNode* each = criteriaHead; each != nullptr; each = each->nextCriterion) {
        before = before && each != &added;
        if (RowOf(each) < 0) continue;
        ++rows;
        if (before) ++index;
    }
    // The row of the criterion that was replaced is still there, unless that one had none.
    const bool left = SendToControl(IDC_CRITERIA_LIST, LB_GETCOUNT) > rows;
    if (left) SendToControl(IDC_CRITERIA_LIST, LB_DELETESTRING, static_cast<WPARAM>(index));
    if (left || !replaced) AddRow(added, index);
}

bool SRxFindDialog::AppendCriterion(std::unique_ptr<SRxCriteriaNode> node) {
    if (!AddNode(node.get(), true, nullptr, nullptr)) return false;
    SRxCriteriaNode& added = *node.release();
    // In a part environment the file type is the environment's own.
    if (added.IsFileTypeCriterion() && IsPartEnv()) return true;
    return AddRow(added);
}

bool SRxFindDialog::OnCommandDelete() {
    SRxCriteriaNode* selected = SelectedCriterion();
    if (selected == nullptr) return true;
    const int row = RowOf(selected);
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
    SendToControl(IDC_CRITERIA_LIST, LB_DELETESTRING, static_cast<WPARAM>(row));
    for (SRxCriteriaNode* const node : {criteriaHead, opener}) {
        if (node == nullptr || node->joinType != JOIN_OR) continue;
        node->joinType = JOIN_AND;
        RewriteRow(*node);
    }
    const LRESULT rows = SendToControl(IDC_CRITERIA_LIST, LB_GETCOUNT);
    if (rows >= 1) {
        const int next = successor != nullptr || row == 0 ? row : row - 1;
        SendToControl(IDC_CRITERIA_LIST, LB_SETCURSEL, static_cast<WPARAM>(next));
        EnableValueEdit();
        EnableButtons(TRUE);
    } else if (criteriaHead == nullptr) {
        EnableButtons(FALSE);
    }
    return true;
}

bool SRxFindDialog::OnCommandCriterList() {
    const SRxCriteriaNode* selected = SelectedCriterion();
    if (selected == nullptr) return true;
    const SRxQuietControls quiet(*this);
    ShowCriterion(*selected);
    EnableWindow(GetDlgItem(dialogWindow, IDC_ADD), FALSE);
    return true;
}

void SRxFindDialog::ShowCriterion(const SRxCriteriaNode& node) {
    const auto find = [this](int control, UINT message, const WCHAR* text) {
        return SendToControl(control, message, kFromStart, text);
    };
    const auto select = [this](int control, LRESULT item) {
        SendToControl(control, CB_SETCURSEL, static_cast<WPARAM>(item));
    };
    if (node.propertyStringId < 0) {
        const WCHAR* name = node.customName.c_str();
        LRESULT item = find(IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT, name);
        if (item < 0) item = find(IDC_PROPERTY_LIST, CB_FINDSTRING, name);
        select(IDC_PROPERTY_LIST, item);
        if (item < 0) SetDlgItemTextW(dialogWindow, IDC_PROPERTY_LIST, name);
        InitCustomConditions(kNoId);
    } else {
        const WText name = ResourceText(resourceInstance, static_cast<UINT>(node.propertyStringId));
        const LRESULT item = find(IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT, name.c_str());
        if (item >= 0) select(IDC_PROPERTY_LIST, item);
        InitConditions();
    }
    // An item with a user's name stands there for that user, not for the condition's own text.
    const WText condition = ResourceText(resourceInstance, static_cast<UINT>(node.conditionId));
    const LRESULT item = find(IDC_CONDITION_LIST, CB_FINDSTRING, condition.c_str());
    if (item >= 0 && !condition.empty()) select(IDC_CONDITION_LIST, item);
    EnableValueEdit();
    if (ValueControlOf(node.conditionId) == eValueControl::Date) {
        SYSTEMTIME date;
        if (ReadStoredDate(node.value, date)) {
            SendToControl(IDC_VALUE_DATE, DTM_SETSYSTEMTIME, GDT_VALID, &date);
        }
    } else {
        SetDlgItemTextW(dialogWindow, IDC_VALUE_EDIT, node.value);
        const LRESULT entry = find(IDC_VALUE_LIST, CB_FINDSTRINGEXACT, node.value);
        if (entry >= 0) select(IDC_VALUE_LIST, entry);
    }
    const bool isAnd = node.joinType == JOIN_AND;
    SendToControl(IDC_JOIN_AND, BM_SETCHECK, isAnd ? BST_CHECKED : BST_UNCHECKED);
    SendToControl(IDC_JOIN_OR, BM_SETCHECK, isAnd ? BST_UNCHECKED : BST_CHECKED);
}

void SRxFindDialog::NeedAllConditions() {
    // Two that only the list of all conditions has together.
    for (const UINT id : {COND_IS_YES, COND_LAST_MONTH}) {
        const WText text = ResourceText(resourceInstance, id);
        if (SendToControl(IDC_CONDITION_LIST, CB_FINDSTRINGEXACT, kFromStart, text.c_str()) < 0) {
            InitCustomConditions(kNoId);
            return;
        }
    }
}

bool SRxFindDialog::OnCommandPropertyList(WPARAM wParam) {
    pendingCriterion = true;
    if (HIWORD(wParam) == CBN_SELCHANGE) {
        InitConditions();
    } else {
        NeedAllConditions();
    }
    return true;
}

bool SRxFindDialog::OnCommandPropertyListKillFocus() {
    if (SendToControl(IDC_PROPERTY_LIST, CB_GETCURSEL) >= 0) return true;
    const WText name = ReadControlText(dialogWindow, IDC_PROPERTY_LIST, kPathLength);
    if (name.empty()) return true;
    const LRESULT item =
        SendToControl(IDC_PROPERTY_LIST, CB_FINDSTRINGEXACT, kFromStart, name.c_str());
    if (item < 0) {
        NeedAllConditions();
        return true;
    }
    // The typed name of a property of the list counts as choosing it.
    SendToControl(IDC_PROPERTY_LIST, CB_SETCURSEL, static_cast<WPARAM>(item));
    InitConditions();
    return true;
}

bool SRxFindDialog::OnCommandConditionList() {
    pendingCriterion = true;
    return EnableValueEdit();
}

bool SRxFindDialog::OnCommandValueEdit() {
    if (!IsWindowEnabled(GetDlgItem(dialogWindow, IDC_VALUE_EDIT))) return true;
    const LONG condition = SelectedData(IDC_CONDITION_LIST);
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
    SendToControl(IDC_CRITERIA_LIST, LB_RESETCONTENT);
    delete criteriaHead;
    criteriaHead = nullptr;
    const bool started = InitDefaultCriteria();
    SendToControl(IDC_CRITERIA_LIST, LB_SETCURSEL, 0);
    SendToControl(IDC_PROPERTY_LIST, CB_SETCURSEL, kFromStart);
    InitCustomConditions(kNoId);
    EnableButtons(criteriaHead != nullptr);
    return started;
}
