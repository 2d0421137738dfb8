// The collator of the table is the collator of the rules.
#include "platform/text/collator.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::uint8_t> KeyOf(const UCollator* collator, const std::u16string& text) {
    std::vector<std::uint8_t> key(200);
    key.resize(static_cast<std::size_t>(
        ucol_getSortKey(collator, text.data(), static_cast<std::int32_t>(text.size()), key.data(),
                        static_cast<std::int32_t>(key.size()))));
    return key;
}

TEST(Collator, TableAgreesWithRules) {
    const platform::Collator table = platform::OpenTableCollator();
    const platform::Collator rules = platform::OpenRulesCollator();
    ASSERT_TRUE(table != nullptr && rules != nullptr);
    for (const UColAttributeValue caseLevel : {UCOL_OFF, UCOL_ON}) {
        UErrorCode status = U_ZERO_ERROR;
        ucol_setAttribute(table.get(), UCOL_CASE_LEVEL, caseLevel, &status);
        ucol_setAttribute(rules.get(), UCOL_CASE_LEVEL, caseLevel, &status);
        ASSERT_TRUE(U_SUCCESS(status));
        std::u16string last = u"-";
        for (char16_t c = 1; c != 0xFFFF; ++c) {
            const std::u16string text = {c, u'\u0301', u'\u0323', u'a'};
            ASSERT_EQ(KeyOf(rules.get(), text), KeyOf(table.get(), text)) << unsigned{c};
            // Comparing has a shorter way than by keys.
            ASSERT_EQ(ucol_strcoll(rules.get(), last.data(), -1, text.data(), 1),
                      ucol_strcoll(table.get(), last.data(), -1, text.data(), 1))
                << unsigned{c};
            last = {c};
        }
    }
}

}  // namespace
