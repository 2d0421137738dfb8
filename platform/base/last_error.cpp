// Native build: the last-error value, one a thread as on Windows.
#include "platform/base/types.h"

namespace {
thread_local DWORD lastError = ERROR_SUCCESS;
}  // namespace

DWORD GetLastError() {
    return lastError;
}

void SetLastError(DWORD error) {
    lastError = error;
}
