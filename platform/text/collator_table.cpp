#include <cstdint>

#include "platform/text/collator.h"

namespace {

// Made at build time by make_collator_table. ICU reads it in place.
alignas(16) constexpr std::uint8_t kTable[] = {
#include "collator_table.inc"
};

}  // namespace

platform::Collator platform::OpenTableCollator() {
    UErrorCode status = U_ZERO_ERROR;
    // The table only tells what is otherwise than in the root order, which has to stay open.
    static Collator root;
    if (root == nullptr) root.reset(ucol_open("", &status));
    if (root == nullptr) return nullptr;
    Collator collator(ucol_openBinary(kTable, sizeof kTable, root.get(), &status));
    if (U_FAILURE(status)) collator.reset();
    return collator;
}
