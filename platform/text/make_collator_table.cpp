// A step of the build: writes the collator of the rules as a table, as numbers between commas.
//   make_collator_table FILE
#include <cstdint>
#include <fstream>
#include <vector>

#include "platform/text/collator.h"

int main(int count, char** arguments) {
    const platform::Collator collator = platform::OpenRulesCollator();
    if (count != 2 || collator == nullptr) return 1;
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t size = ucol_cloneBinary(collator.get(), nullptr, 0, &status);
    std::vector<std::uint8_t> table(static_cast<std::size_t>(size));
    status = U_ZERO_ERROR;
    ucol_cloneBinary(collator.get(), table.data(), size, &status);
    std::ofstream file(arguments[1]);
    for (const unsigned byte : table)
        file << byte << ",\n";
    file.close();
    return U_SUCCESS(status) && file ? 0 : 1;
}
