// A criterion as a person types it: a node that names a property and a condition of the catalogue,
// or a message that says what is wrong.
#include "host/srfind/criterion_text.h"

#include "fuzz/fuzz_input.h"
#include "module/module_state.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const CriterionParser parser(SrResReturnHandle());
    std::string fault;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto node = parser.Parse(text, JOIN_AND, fault);
    Require((node == nullptr) == !fault.empty());
    if (node != nullptr) {
        Require(node->conditionId > 0 && node->nextCriterion == nullptr);
        Require(node->customName.empty() ? node->propertyStringId > 0
                                         : node->propertyCategory == eCategoryCustom);
        Require(wtext::Length(node->value) < kValueLength);
    }
    return 0;
}
