// Native build: the path functions that work on text alone.
#include "platform/files/path_mapping.h"

LPWSTR PathFindFileNameW(LPCWSTR path) {
    if (path == nullptr) return nullptr;
    LPCWSTR name = path;
    for (; *path != 0; ++path) {
        if ((platform::IsSeparator(*path) || *path == ':') && path[1] != 0 &&
            !platform::IsSeparator(path[1])) {
            name = path + 1;
        }
    }
    return const_cast<LPWSTR>(name);
}

LPWSTR PathFindExtensionW(LPCWSTR path) {
    if (path == nullptr) return nullptr;
    LPCWSTR point = nullptr;
    for (; *path != 0; ++path) {
        // A blank ends an extension, as on Windows: "a.b c" has none.
        if (*path == '\\' || *path == ' ') {
            point = nullptr;
        } else if (*path == '.') {
            point = path;
        }
    }
    return const_cast<LPWSTR>(point != nullptr ? point : path);
}

void PathRemoveExtensionW(LPWSTR path) {
    if (path != nullptr) *PathFindExtensionW(path) = 0;
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
