// SHA-256 of bytes that are all at hand, as FIPS 180-4 describes it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

using Sha256Digest = std::array<std::uint8_t, 32>;

Sha256Digest Sha256(const std::uint8_t* bytes, std::size_t cb);
