// A list of hits as a text file: UTF-16, little-endian, with a byte order mark.
#pragma once

#include <functional>

#include "platform/wtext.h"

enum class eHitListWrite { Written, NotOpened, NotWhole };

// Heading, date and time, and a line for each of `count` paths, which `pathOf` gives. Replaces a
// file of this name. NotWhole: what could be written is in the file.
[[nodiscard]] eHitListWrite WriteHitList(const WText& file, HINSTANCE resources, int count,
                                         const std::function<WText(int)>& pathOf);
