// Native build: fixed memory, and the names of dropped files in it.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/com/shell_api.h"

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    if (flags != GPTR) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    const HGLOBAL memory = std::calloc(1, std::max<SIZE_T>(bytes, 1));
    if (memory == nullptr) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return memory;
}

UINT DragQueryFileW(HDROP drop, UINT index, LPWSTR buffer, UINT cch) {
    constexpr UINT kCount = 0xFFFFFFFFu;
    DROPFILES head;
    std::memcpy(&head, drop, sizeof head);
    if (!head.fWide) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return 0;
    }
    using Traits = std::char_traits<WCHAR>;
    const auto* name =
        reinterpret_cast<const WCHAR*>(static_cast<const unsigned char*>(drop) + head.pFiles);
    UINT at = 0;
    for (; *name != 0 && at != index; ++at)
        name += Traits::length(name) + 1;
    if (index == kCount) return at;
    const UINT length = static_cast<UINT>(Traits::length(name));
    if (length == 0 || buffer == nullptr || cch == 0) return length;
    const UINT copied = std::min(length, cch - 1);
    Traits::copy(buffer, name, copied);
    buffer[copied] = 0;
    return copied;
}

void ReleaseStgMedium(STGMEDIUM* medium) {
    if (medium->pUnkForRelease != nullptr) {
        medium->pUnkForRelease->Release();
    } else if (medium->tymed == TYMED_HGLOBAL) {
        std::free(medium->hGlobal);
    }
    medium->tymed = 0;
    medium->pUnkForRelease = nullptr;
}
