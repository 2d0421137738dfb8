// Md.dll: small aids.
#pragma once

#include "outside/library_api.h"
#include "platform/system.h"

// `*target` becomes a new copy of `text`, to be released with free; null when there is no memory.
// What it pointed to before is not released.
MD_API void SetStringPtr(WCHAR** target, const WCHAR* text);
// The unit at `index`, null when the text is shorter.
MD_API const WCHAR* IndexAString(const WCHAR* text, std::size_t index);
// All zero when the number is no date.
MD_API void SysTimeFromOleDate(DATE date, SYSTEMTIME* time);
MD_API void ClearRevId(GUID* id);
