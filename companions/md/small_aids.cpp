#include "outside/md_small_aids.h"

#include <cstdlib>
#include <cstring>

#include "platform/wtext.h"

void SetStringPtr(WCHAR** target, const WCHAR* text) {
    const std::size_t cb = (wtext::Length(text) + 1) * sizeof(WCHAR);
    *target = static_cast<WCHAR*>(std::malloc(cb));
    if (*target != nullptr) std::memcpy(*target, text, cb);
}

const WCHAR* IndexAString(const WCHAR* text, std::size_t index) {
    return index < wtext::Length(text) ? text + index : nullptr;
}

void SysTimeFromOleDate(DATE date, SYSTEMTIME* time) {
    if (!VariantTimeToSystemTime(date, time)) *time = SYSTEMTIME{};
}

void ClearRevId(GUID* id) {
    *id = GUID{};
}
