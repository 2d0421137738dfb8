// Native build: the path functions that work on text alone.
#include "platform/files/path_mapping.h"
#include "platform/native_path.h"

LPWSTR PathFindFileNameW(LPCWSTR path) {
    return path != nullptr ? const_cast<LPWSTR>(FileNameIn(path).data()) : nullptr;
}

LPWSTR PathFindExtensionW(LPCWSTR path) {
    return path != nullptr ? const_cast<LPWSTR>(ExtensionIn(path).data()) : nullptr;
}

BOOL PathRemoveFileSpecW(LPWSTR path) {
    if (path == nullptr) return FALSE;
    // The root stays: one or two leading separators, or a drive with its separator.
    LPWSTR cut = path;
    LPWSTR at = path;
    for (int i = 0; i < 2 && *at == '\\'; ++i)
        cut = ++at;
    for (; *at != 0; ++at) {
        if (*at == '\\') {
            cut = at;
        } else if (*at == ':') {
            cut = at + 1;
            if (*cut == '\\') {
                ++cut;
                ++at;
            }
        }
    }
    if (*cut == 0) return FALSE;
    *cut = 0;
    return TRUE;
}
