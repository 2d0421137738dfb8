// Values of properties as the columns of a property listing: the name of the type and the value,
// in which no tab, line end or control character stands bare.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "companions/md/document/property_value.h"

// "VT_I4", "VT_VECTOR|VT_LPSTR"; "VT_0x1234" for a type without a name.
std::string TypeText(VARTYPE type);

// UTF-8 with \\ \t \n \r and \uXXXX for the other control characters.
std::string EscapedText(WTextView text);

// The value of anything but a blob. The elements of a vector stand with \| between them.
std::string ValueText(const mddoc::PropertyValue& value);

// "bytes:N:sha256:" and the first 16 hex digits of the digest.
std::string BlobText(const std::vector<BYTE>& bytes);

// A FILETIME in 100 ns, as UTC with seven decimals; "ticks:N" past the year 9999.
std::string TimeText(std::uint64_t ticks);
