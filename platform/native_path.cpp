#include "platform/native_path.h"

WText FullWidePath(const WText& path) {
    const DWORD cch = path.empty() ? 0 : GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (cch == 0) return {};
    WText full(cch, 0);
    full.resize(GetFullPathNameW(path.c_str(), cch, full.data(), nullptr));
    return full;
}
