#include "tests/native/failing_registry.h"

#include <utility>

#include "companions/blx/registry_calls.h"

namespace {

constexpr int kNever = -1;
int left = kNever;  // changes until one fails
eRegistryFault kind = eRegistryFault::Once;
bool failed = false;

bool Fails() {
    if (left == kNever) return false;
    if (left > 0) {
        --left;
        return false;
    }
    if (kind == eRegistryFault::Once) left = kNever;
    failed = true;
    return true;
}

}  // namespace

void FailRegistryChange(int number, eRegistryFault fault) {
    left = number;
    kind = fault;
    failed = false;
}

bool EndRegistryFaults() {
    left = kNever;
    return std::exchange(failed, false);
}

BLxResult BLxPref_Reg::CreateKey(HKEY root, const WCHAR* path, HKEY* key) {
    *key = nullptr;
    if (Fails()) return BLxResult(ERROR_ACCESS_DENIED);
    return BLxResult(registry_calls::CreateKey(root, path, key));
}

BLxResult BLxPref_Reg::Write(HKEY key, const WCHAR* name, DWORD type, const void* data, DWORD cb) {
    if (Fails()) return BLxResult(ERROR_ACCESS_DENIED);
    return BLxResult(registry_calls::WriteValue(key, name, type, data, cb));
}

BLxResult BLxPref_Reg::Write(HKEY key, const WCHAR* name, LONG value) {
    return Write(key, name, REG_DWORD, &value, sizeof(value));
}

BLxResult BLxPref_Reg::Write(HKEY key, const WCHAR* name, DWORD value) {
    return Write(key, name, REG_DWORD, &value, sizeof(value));
}

BLxResult BLxPref_Reg::Write(HKEY key, const WCHAR* name, const WCHAR* text) {
    const std::size_t units = std::char_traits<WCHAR>::length(text) + 1;
    return Write(key, name, REG_SZ, text, static_cast<DWORD>(units * sizeof(WCHAR)));
}

BLxResult BLxPref_Reg::DeleteValue(HKEY key, const WCHAR* name) {
    if (Fails()) return BLxResult(ERROR_ACCESS_DENIED);
    return BLxResult(registry_calls::DeleteValue(key, name));
}

BLxResult BLxPref_Reg::DeleteKeyAndDescendants(HKEY root, const WCHAR* path) {
    if (!Fails()) return BLxResult(registry_calls::DeleteTree(root, path));
    HKEY key = nullptr;
    if (OpenKey(root, path, &key) != 0) return BLxResult(ERROR_FILE_NOT_FOUND);
    WCHAR first[256];
    if (BLxPrefKeyIterator_Reg(key).NextKey(first, 256)) registry_calls::DeleteTree(key, first);
    CloseKey(key);
    return BLxResult(ERROR_ACCESS_DENIED);
}
