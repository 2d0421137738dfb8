// The rows of the dialog's list of criteria, and the criterion that a new list begins with.
#include <algorithm>

#include "criteria/row_text.h"
#include "dialog/find_dialog.h"
#include "platform/new_or_null.h"

WText SRxFindDialog::RowText(const SRxCriteriaNode& node) const {
    return CriterionRowText(resourceInstance, node, {appUserName, loginUserName});
}

bool SRxFindDialog::BuildCriteriaString(const SRxCriteriaNode* node, WCHAR* buffer,
                                        std::size_t bufferSize) const {
    if (buffer == nullptr || bufferSize == 0) return false;
    const WText row = RowText(*node);
    // Only the name of a custom property can be longer than a row: its end isn't shown.
    const std::size_t length = std::min(row.size(), bufferSize - 1);
    return wtext::CopyWhole(buffer, bufferSize, WTextView(row).substr(0, length));
}

bool SRxFindDialog::InitDefaultCriteria() {
    fileSearchType = propSearchType = FILE_SEARCH_ANY;
    SendToControl(IDC_MATCH_CASE, BM_SETCHECK, BST_UNCHECKED);
    const LONG condition = IsPartEnv()       ? FILETYPE_PARTS
                           : IsAssemblyEnv() ? FILETYPE_MODELS
                                             : FILETYPE_DESIGN_DOCS;
    auto node = NewOrNull<SRxCriteriaNode>(PROP_FILE_TYPE, condition, JOIN_AND, nullptr);
    if (node == nullptr) {
        Say(MSG_OUT_OF_MEMORY);
        return false;
    }
    if (!AddNode(node.get(), true, nullptr, nullptr)) return false;
    SRxCriteriaNode* const added = node.release();
    return IsPartEnv() || AddRow(*added);
}

bool SRxFindDialog::AddRow(SRxCriteriaNode& node, int index) {
    const LRESULT row = SendToControl(IDC_CRITERIA_LIST, LB_INSERTSTRING,
                                      static_cast<WPARAM>(index), RowText(node).c_str());
    if (row < 0) return false;
    SendToControl(IDC_CRITERIA_LIST, LB_SETITEMDATA, static_cast<WPARAM>(row), &node);
    return true;
}

int SRxFindDialog::RowOf(const SRxCriteriaNode* node) const {
    const LRESULT count = SendToControl(IDC_CRITERIA_LIST, LB_GETCOUNT);
    for (int row = 0; row < count; ++row) {
        const LRESULT data =
            SendToControl(IDC_CRITERIA_LIST, LB_GETITEMDATA, static_cast<WPARAM>(row));
        if (data == reinterpret_cast<LRESULT>(node)) return row;
    }
    return -1;
}

SRxCriteriaNode* SRxFindDialog::SelectedCriterion() const {
    const LRESULT row = SendToControl(IDC_CRITERIA_LIST, LB_GETCURSEL);
    if (row < 0) return nullptr;
    const LRESULT data = SendToControl(IDC_CRITERIA_LIST, LB_GETITEMDATA, static_cast<WPARAM>(row));
    return data != LB_ERR ? reinterpret_cast<SRxCriteriaNode*>(data) : nullptr;
}

void SRxFindDialog::RewriteRow(SRxCriteriaNode& node) {
    const int row = RowOf(&node);
    if (row < 0) return;
    SendToControl(IDC_CRITERIA_LIST, LB_DELETESTRING, static_cast<WPARAM>(row));
    AddRow(node, row);
}
