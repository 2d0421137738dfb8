#include "companions/blx/registry_calls.h"

namespace {

// A key's name has at most 255 units.
constexpr DWORD kMaxKeyName = 256;

DWORD Code(LSTATUS status) {
    return static_cast<DWORD>(status);
}

}  // namespace

DWORD registry_calls::OpenKey(HKEY root, const WCHAR* path, REGSAM access, HKEY* key) {
    *key = nullptr;
    return Code(RegOpenKeyExW(root, path, 0, access, key));
}

DWORD registry_calls::CreateKey(HKEY root, const WCHAR* path, HKEY* key) {
    *key = nullptr;
    return Code(RegCreateKeyExW(root, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                                nullptr, key, nullptr));
}

DWORD registry_calls::CloseKey(HKEY key) {
    return Code(RegCloseKey(key));
}

DWORD registry_calls::ReadValue(HKEY key, const WCHAR* name, DWORD* type, void* data, DWORD* cb) {
    return Code(RegQueryValueExW(key, name, nullptr, type, static_cast<BYTE*>(data), cb));
}

DWORD registry_calls::WriteValue(HKEY key, const WCHAR* name, DWORD type, const void* data,
                                 DWORD cb) {
    return Code(RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data), cb));
}

DWORD registry_calls::DeleteValue(HKEY key, const WCHAR* name) {
    return Code(RegDeleteValueW(key, name));
}

DWORD registry_calls::DeleteKey(HKEY root, const WCHAR* path) {
    return Code(RegDeleteKeyW(root, path));
}

DWORD registry_calls::DeleteTree(HKEY root, const WCHAR* path) {
    return Code(RegDeleteTreeW(root, path));
}

std::vector<WText> registry_calls::SubkeyNames(HKEY key) {
    std::vector<WText> names;
    WCHAR name[kMaxKeyName];
    for (DWORD index = 0;; ++index) {
        DWORD cch = kMaxKeyName;
        if (RegEnumKeyExW(key, index, name, &cch, nullptr, nullptr, nullptr, nullptr) != 0) break;
        names.emplace_back(name, cch);
    }
    return names;
}
