// How a criterion reads as a row of the list box, and the criterion that a new list begins with.
#include <algorithm>

#include "criteria/catalogue.h"
#include "criteria/stored_date.h"
#include "dialog/find_dialog.h"
#include "outside/md_messages.h"
#include "platform/message_format.h"
#include "platform/new_or_null.h"
#include "platform/resource_text.h"

namespace {

WText ShownDate(const WCHAR* stored) {
    SYSTEMTIME date;
    WCHAR text[kLabelLength];
    if (!ReadStoredDate(stored, date)) return {};
    const int cch =
        GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &date, nullptr, text, kLabelLength);
    return cch > 0 ? WText(text) : WText();
}

}  // namespace

WText SRxFindDialog::RowText(const SRxCriteriaNode& node) const {
    const auto text = [this](LONG id) {
        return ResourceText(resourceInstance, static_cast<UINT>(id));
    };
    const WText join = node.joinType == JOIN_OR ? text(STR_JOIN_OR_WORD) : WText();
    const WText property =
        node.propertyStringId < 0 ? WText(node.customName.c_str()) : text(node.propertyStringId);
    const WText condition = node.conditionId == COND_IS_LOGIN_USER ? WText(loginUserName)
                            : node.conditionId == COND_IS_APP_USER ? WText(appUserName)
                                                                   : text(node.conditionId);
    const bool isDate = ValueControlOf(node.conditionId) == eValueControl::Date;
    const WText value = isDate ? ShownDate(node.value) : WText(node.value);
    return FormatInserts(text(STR_CRITERION_FORMAT).c_str(),
                         {join.c_str(), property.c_str(), condition.c_str(), value.c_str()});
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
