#include "search/value_comparison.h"

#include <cmath>

#include "criteria/text_equality.h"
#include "module/module_state.h"
#include "module/text_lengths.h"
#include "platform/number_text.h"
#include "resource/string_ids.h"

namespace {

DWORD TextFlags(bool matchCase) {
    return matchCase ? kExactText : kFoldText;
}

bool EqualsString(UINT id, const WCHAR* text) {
    WCHAR word[kLabelLength];
    if (LoadStringW(SrResReturnHandle(), id, word, kLabelLength) < 1) return false;
    return text != nullptr && TextsEqual(word, text, kFoldWord);
}

}  // namespace

bool CompareStringValue(const WCHAR* value, const WCHAR* text, unsigned conditionId,
                        bool matchCase) {
    const WTextView wanted = text != nullptr ? WTextView(text) : WTextView();
    if (value == nullptr || *value == 0) {
        return conditionId == COND_DIFFERS || (conditionId == COND_EQUALS && wanted.empty());
    }
    const WTextView have(value);
    const DWORD flags = TextFlags(matchCase);
    const bool fits = have.size() >= wanted.size();
    switch (conditionId) {
        case COND_ANY_VALUE:
            return true;
        case COND_BEGINS_WITH:
            return fits && TextsEqual(have.substr(0, wanted.size()), wanted, flags);
        case COND_ENDS_WITH:
            return fits && TextsEqual(have.substr(have.size() - wanted.size()), wanted, flags);
        case COND_CONTAINS:
            return ContainsText(have, wanted, flags);
        case COND_EQUALS:
            return TextsEqual(have, wanted, flags);
        case COND_DIFFERS:
            return !TextsEqual(have, wanted, flags);
        default:
            return false;
    }
}

bool CompareTextValue(const WCHAR* value, const WCHAR* text, unsigned conditionId, bool matchCase,
                      const SRxUserNames& users) {
    if (value == nullptr || *value == 0) {
        return conditionId == COND_IS_EMPTY || conditionId == COND_DIFFERS;
    }
    switch (conditionId) {
        case COND_IS_EMPTY:
            return false;
        case COND_IS_LOGIN_USER:
            return TextsEqual(value, users.login, TextFlags(matchCase));
        case COND_IS_APP_USER:
            return TextsEqual(value, users.application, TextFlags(matchCase));
        case COND_BEGINS_WITH:
        case COND_ENDS_WITH:
        case COND_CONTAINS:
        case COND_EQUALS:
        case COND_DIFFERS:
            return CompareStringValue(value, text, conditionId, matchCase);
        default:
            // Has a value, has any value, and every condition that says nothing about a text.
            return true;
    }
}

bool CompareRealValues(double value, double target, unsigned conditionId, double tolerance) {
    switch (conditionId) {
        case COND_ANY_VALUE:
            return true;
        case COND_NUM_EQUALS:
        case COND_EQUALS:
            return tolerance < 0 ? value == target : tolerance > std::fabs(value - target);
        case COND_GREATER_THAN:
            return value > target;
        case COND_LESS_THAN:
            return value < target;
        case COND_DIFFERS:
        case COND_NUM_DIFFERS:
            return value != target;
        default:
            return false;
    }
}

bool CompareRealText(double value, const WCHAR* text, unsigned conditionId, double tolerance) {
    double target = 0;
    std::size_t consumed = 0;
    (void)ParseReal(text, target, consumed);
    if (text[consumed] != 0) return false;
    return CompareRealValues(value, target, conditionId, tolerance);
}

bool CompareBoolValue(bool value, const WCHAR* text, unsigned conditionId) {
    switch (conditionId) {
        case COND_ANY_VALUE:
            return true;
        case COND_IS_NO_ALT:
        case COND_IS_NO:
            return !value;
        case COND_IS_YES:
        case COND_IS_YES_ALT:
            return value;
        case COND_DIFFERS:
            return value !=
                   (EqualsString(STR_YES_WORD, text) || EqualsString(COND_IS_YES_ALT, text));
        default:
            return false;
    }
}
