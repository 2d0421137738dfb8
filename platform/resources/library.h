// Native build: the bytes of a resource of an open library, for the parts of the layer that read
// them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/base/types.h"

namespace platform {

// Empty, with the last error, when the library isn't open or has no such resource.
std::span<const std::byte> FindLibraryResource(HINSTANCE module, std::uint32_t type,
                                               std::uint32_t id);

}  // namespace platform
