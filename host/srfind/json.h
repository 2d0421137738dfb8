// A hit as a JSON object.
#pragma once

#include <string>

#include "platform/wtext.h"

// One line without its end: path, folder and name as the system shows them. The text is valid UTF-8
// whatever the bytes of the path are; where they are none, "exact" is false and "bytes" has them in
// hexadecimal.
// `records` is put in as a last member where it isn't empty.
std::string HitAsJson(const WCHAR* path, const std::string& records);

// A JSON string with its quotes.
std::string JsonString(const std::string& bytes);
