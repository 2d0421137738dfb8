#include "criteria/row_text.h"

#include "criteria/catalogue.h"
#include "criteria/stored_date.h"
#include "module/text_lengths.h"
#include "platform/message_format.h"
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

WText CriterionRowText(HINSTANCE resources, const SRxCriteriaNode& node,
                       const SRxUserNames& users) {
    const auto text = [resources](LONG id) {
        return ResourceText(resources, static_cast<UINT>(id));
    };
    const WText join = node.joinType == JOIN_OR ? text(STR_JOIN_OR_WORD) : WText();
    const WText property =
        node.propertyStringId < 0 ? WText(node.customName.c_str()) : text(node.propertyStringId);
    const WText condition = node.conditionId == COND_IS_LOGIN_USER ? WText(users.login)
                            : node.conditionId == COND_IS_APP_USER ? WText(users.application)
                                                                   : text(node.conditionId);
    const bool isDate = ValueControlOf(node.conditionId) == eValueControl::Date;
    const WText value = isDate ? ShownDate(node.value) : WText(node.value);
    return FormatInserts(text(STR_CRITERION_FORMAT).c_str(),
                         {join.c_str(), property.c_str(), condition.c_str(), value.c_str()});
}
