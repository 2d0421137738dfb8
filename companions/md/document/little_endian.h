// Numbers as documents store them, least significant byte first.
#pragma once

#include <cstdint>
#include <cstring>

#include "platform/win.h"

namespace mddoc {

inline std::uint16_t Load16(const BYTE* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | (bytes[1] << 8));
}

inline std::uint32_t Load32(const BYTE* bytes) {
    return static_cast<std::uint32_t>(Load16(bytes)) |
           (static_cast<std::uint32_t>(Load16(bytes + 2)) << 16);
}

inline std::uint64_t Load64(const BYTE* bytes) {
    return static_cast<std::uint64_t>(Load32(bytes)) |
           (static_cast<std::uint64_t>(Load32(bytes + 4)) << 32);
}

inline GUID LoadGuid(const BYTE* bytes) {
    GUID guid = {};
    guid.Data1 = Load32(bytes);
    guid.Data2 = Load16(bytes + 4);
    guid.Data3 = Load16(bytes + 6);
    std::memcpy(guid.Data4, bytes + 8, sizeof guid.Data4);
    return guid;
}

}  // namespace mddoc
