#include <string>

#include "platform/text/collator.h"
#include "platform/text/compare_order.h"

namespace {

// The root order with the ASCII symbols in the order of the table, and the letters that Windows
// takes for two.
std::u16string CollationRules() {
    std::u16string rules = u"&[before 1][first variable]";
    for (std::size_t i = 0; i + 1 < sizeof kOrderBeforeDigits; ++i) {
        // The backslash takes the meaning from syntax characters and blanks.
        rules += u"<\\";
        rules += static_cast<char16_t>(kOrderBeforeDigits[i]);
    }
    rules += u"&ss=\u00DF&SS=\u1E9E&ae=\u00E6&AE=\u00C6&oe=\u0153&OE=\u0152";
    return rules;
}

}  // namespace

platform::Collator platform::OpenRulesCollator() {
    const std::u16string rules = CollationRules();
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(ucol_openRules(rules.data(), static_cast<std::int32_t>(rules.size()), UCOL_ON,
                                     UCOL_SECONDARY, nullptr, &status));
    if (U_FAILURE(status)) collator.reset();
    return collator;
}
