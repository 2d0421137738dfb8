#include "outside/ps_property_specifics.h"

#include "platform/wtext.h"

namespace {

// The states in the order of their numbers, which begin with 1. The texts are those of the value
// list.
constexpr const WCHAR* kStates[] = {TEXT("Work in progress"), TEXT("Pending"), TEXT("Released")};
constexpr LONG kStateCount = sizeof(kStates) / sizeof(kStates[0]);

WTextView Trim(WTextView text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

}  // namespace

LONG PSxPropertySpecifics::DesignStateStringToInt(const WCHAR* text) {
    if (text == nullptr) return 0;
    const WTextView trimmed = Trim(text);
    for (LONG state = 1; state <= kStateCount; ++state) {
        if (wtext::EqualsAsciiFold(trimmed, kStates[state - 1]) ||
            trimmed == wtext::FromNumber(state)) {
            return state;
        }
    }
    return 0;
}

const WCHAR* PSxPropertySpecifics::DesignStateIntToString(LONG state) {
    return state >= 1 && state <= kStateCount ? kStates[state - 1] : nullptr;
}
