#include "dialog/criteria_rows.h"

#include <algorithm>

#include "criteria/row_text.h"
#include "dialog/dialog_messages.h"
#include "module/controls.h"
#include "platform/new_or_null.h"

namespace {

WText RowText(const SRxFindDialog& dialog, const SRxCriteriaNode& node) {
    return CriterionRowText(dialog.resourceInstance, node,
                            {dialog.appUserName, dialog.loginUserName});
}

}  // namespace

bool SRxFindDialog::BuildCriteriaString(const SRxCriteriaNode* node, WCHAR* buffer,
                                        std::size_t bufferSize) const {
    if (buffer == nullptr || bufferSize == 0) return false;
    const WText row = RowText(*this, *node);
    // Only the name of a custom property can be longer than a row: its end isn't shown.
    const std::size_t length = std::min(row.size(), bufferSize - 1);
    return wtext::CopyWhole(buffer, bufferSize, WTextView(row).substr(0, length));
}

bool SRxFindDialog::InitDefaultCriteria() {
    fileSearchType = propSearchType = FILE_SEARCH_ANY;
    SendTo(dialogWindow, IDC_MATCH_CASE, BM_SETCHECK, BST_UNCHECKED);
    const LONG condition = IsPartEnv()       ? FILETYPE_PARTS
                           : IsAssemblyEnv() ? FILETYPE_MODELS
                                             : FILETYPE_DESIGN_DOCS;
    auto node = NewOrNull<SRxCriteriaNode>(PROP_FILE_TYPE, condition, JOIN_AND, nullptr);
    if (node == nullptr) {
        Say(*this, MSG_OUT_OF_MEMORY);
        return false;
    }
    if (!AddNode(node.get(), true, nullptr, nullptr)) return false;
    SRxCriteriaNode* const added = node.release();
    return IsPartEnv() || AddRow(*this, *added);
}

bool AddRow(SRxFindDialog& dialog, SRxCriteriaNode& node, int index) {
    const LRESULT row = SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_INSERTSTRING,
                               static_cast<WPARAM>(index), RowText(dialog, node).c_str());
    if (row < 0) return false;
    SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_SETITEMDATA, static_cast<WPARAM>(row), &node);
    return true;
}

int RowOf(const SRxFindDialog& dialog, const SRxCriteriaNode* node) {
    const LRESULT count = SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_GETCOUNT);
    for (int row = 0; row < count; ++row) {
        const LRESULT data = SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_GETITEMDATA,
                                    static_cast<WPARAM>(row));
        if (data == reinterpret_cast<LRESULT>(node)) return row;
    }
    return -1;
}

SRxCriteriaNode* SelectedCriterion(const SRxFindDialog& dialog) {
    const LRESULT row = SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_GETCURSEL);
    if (row < 0) return nullptr;
    const LRESULT data =
        SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_GETITEMDATA, static_cast<WPARAM>(row));
    return data != LB_ERR ? reinterpret_cast<SRxCriteriaNode*>(data) : nullptr;
}

void RewriteRow(SRxFindDialog& dialog, SRxCriteriaNode& node) {
    const int row = RowOf(dialog, &node);
    if (row < 0) return;
    SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_DELETESTRING, static_cast<WPARAM>(row));
    AddRow(dialog, node, row);
}

void ShowAdded(SRxFindDialog& dialog, SRxCriteriaNode& added, bool replaced) {
    int index = 0;
    int rows = 0;
    bool before = true;
    for (const SRxCriteriaNode* each = dialog.criteriaHead; each != nullptr;
         each = each->nextCriterion) {
        before = before && each != &added;
        if (RowOf(dialog, each) < 0) continue;
        ++rows;
        if (before) ++index;
    }
    // The row of the criterion that was replaced is still there, unless that one had none.
    const bool left = SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_GETCOUNT) > rows;
    if (left)
        SendTo(dialog.dialogWindow, IDC_CRITERIA_LIST, LB_DELETESTRING, static_cast<WPARAM>(index));
    if (left || !replaced) AddRow(dialog, added, index);
}

bool AppendCriterion(SRxFindDialog& dialog, std::unique_ptr<SRxCriteriaNode> node) {
    if (!dialog.AddNode(node.get(), true, nullptr, nullptr)) return false;
    SRxCriteriaNode& added = *node.release();
    // In a part environment the file type is the environment's own.
    if (added.IsFileTypeCriterion() && dialog.IsPartEnv()) return true;
    return AddRow(dialog, added);
}
