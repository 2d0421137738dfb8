// A hit as a JSON object.
#pragma once

#include <string>

#include "platform/wtext.h"

// One line without its end: path, folder and name as the system shows them. The text is valid UTF-8
// whatever the bytes of the path are; where they are none, "exact" is false and "bytes" has them in
// hexadecimal.
std::string HitAsJson(const WCHAR* path);
