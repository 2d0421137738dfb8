// Native build: the ICU collator behind text comparison, to which case counts no more than accents.
#pragma once

#include <unicode/ucol.h>

#include <memory>

namespace platform {

struct CloseCollator {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, CloseCollator>;

// From the rules, which takes some 8 ms. Null when ICU has no data.
Collator OpenRulesCollator();
// From the table that the build made of the rules, which takes a third of a millisecond. Null when
// the ICU at hand isn't of the build's version.
Collator OpenTableCollator();

}  // namespace platform
