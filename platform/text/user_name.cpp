// Native build: the name of the user who runs the process.
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/text/text_api.h"
#include "platform/wtext.h"

namespace {

// From the user database, else from the environment; empty when neither knows.
std::string UserName() {
    const long suggested = sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(suggested > 0 ? static_cast<std::size_t>(suggested) : 16384);
    struct passwd entry = {};
    struct passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr) {
        return found->pw_name;
    }
    const char* name = std::getenv("USER");
    return name == nullptr ? "" : name;
}

}  // namespace

BOOL GetUserNameW(LPWSTR buffer, DWORD* cch) {
    if (cch == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const WText name = wtext::FromUtf8(UserName());
    if (name.empty()) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return FALSE;
    }
    const DWORD needed = static_cast<DWORD>(name.size()) + 1;
    const bool fits = buffer != nullptr && *cch >= needed;
    *cch = needed;
    if (!fits) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    name.copy(buffer, name.size());
    buffer[name.size()] = 0;
    return TRUE;
}
