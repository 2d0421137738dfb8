#include "outside/blx_registry.h"

#include <algorithm>
#include <vector>

#include "companions/blx/natural_order.h"
#include "companions/blx/registry_calls.h"

BLxResult BLxPref_Reg::OpenKey(HKEY root, const WCHAR* path, HKEY* key, REGSAM access) {
    return BLxResult(registry_calls::OpenKey(root, path, access, key));
}

BLxResult BLxPref_Reg::CreateKey(HKEY root, const WCHAR* path, HKEY* key) {
    return BLxResult(registry_calls::CreateKey(root, path, key));
}

BLxResult BLxPref_Reg::CloseKey(HKEY key) {
    return BLxResult(registry_calls::CloseKey(key));
}

BLxResult BLxPref_Reg::Read(HKEY key, const WCHAR* name, LONG* value) {
    DWORD type = REG_NONE;
    LONG read = 0;
    DWORD cb = sizeof(read);
    const DWORD error = registry_calls::ReadValue(key, name, &type, &read, &cb);
    if (error != ERROR_SUCCESS) return BLxResult(error);
    if (type != REG_DWORD || cb != sizeof(read)) return BLxResult(ERROR_INVALID_DATA);
    *value = read;
    return BLxResult();
}

BLxResult BLxPref_Reg::Read(HKEY key, const WCHAR* name, BLxWString* value) {
    DWORD type = REG_NONE;
    DWORD cb = 0;
    DWORD error = registry_calls::ReadValue(key, name, &type, nullptr, &cb);
    // Another process may lengthen the text between the two calls.
    BLxWString text;
    for (int attempt = 0; error == ERROR_SUCCESS && attempt < 4; ++attempt) {
        if (type != REG_SZ) return BLxResult(ERROR_INVALID_DATA);
        text.assign((cb + 1) / sizeof(WCHAR) + 1, 0);
        cb = static_cast<DWORD>((text.size() - 1) * sizeof(WCHAR));
        error = registry_calls::ReadValue(key, name, &type, text.data(), &cb);
        if (error == ERROR_SUCCESS) {
            // A stored text may lack its terminator, hold several, or have an odd size.
            text.resize(cb / sizeof(WCHAR));
            text.resize(std::min(text.size(), text.find(WCHAR{0})));
            *value = std::move(text);
            return BLxResult();
        }
        if (error == ERROR_MORE_DATA) error = ERROR_SUCCESS;
    }
    return BLxResult(error != ERROR_SUCCESS ? error : ERROR_MORE_DATA);
}

BLxResult BLxPref_Reg::Read(HKEY key, const WCHAR* name, DWORD* type, void* data, DWORD* cb) {
    return BLxResult(registry_calls::ReadValue(key, name, type, data, cb));
}

BLxResult BLxPref_Reg::Write(HKEY key, const WCHAR* name, LONG value) {
    return Write(key, name, REG_DWORD, &value, sizeof(value));
}

BLxResult BLxPref_Reg::Write(HKEY key, const WCHAR* name, DWORD value) {
    return Write(key, name, REG_DWORD, &value, sizeof(value));
}

BLxResult BLxPref_Reg::Write(HKEY key, const WCHAR* name, const WCHAR* text) {
    return Write(key, name, REG_SZ, text,
                 static_cast<DWORD>((wtext::Length(text) + 1) * sizeof(WCHAR)));
}

BLxResult BLxPref_Reg::Write(HKEY key, const WCHAR* name, DWORD type, const void* data, DWORD cb) {
    return BLxResult(registry_calls::WriteValue(key, name, type, data, cb));
}

BLxResult BLxPref_Reg::DeleteValue(HKEY key, const WCHAR* name) {
    return BLxResult(registry_calls::DeleteValue(key, name));
}

BLxResult BLxPref_Reg::DeleteKey(HKEY root, const WCHAR* path) {
    return BLxResult(registry_calls::DeleteKey(root, path));
}

BLxResult BLxPref_Reg::DeleteKeyAndDescendants(HKEY root, const WCHAR* path) {
    return BLxResult(registry_calls::DeleteTree(root, path));
}

struct BLxPrefKeyIterator_Reg::State {
    HKEY key;
    bool listed = false;
    std::vector<WText> names;
    std::size_t next = 0;

    void List();
};

void BLxPrefKeyIterator_Reg::State::List() {
    listed = true;
    names = registry_calls::SubkeyNames(key);
    std::sort(names.begin(), names.end(), NaturalLess);
}

BLxPrefKeyIterator_Reg::BLxPrefKeyIterator_Reg(HKEY key) : state_(std::make_unique<State>()) {
    state_->key = key;
}

BLxPrefKeyIterator_Reg::~BLxPrefKeyIterator_Reg() = default;

bool BLxPrefKeyIterator_Reg::NextKey(WCHAR* name, DWORD cch) {
    if (!state_->listed) state_->List();
    while (state_->next < state_->names.size()) {
        if (wtext::CopyWhole(name, cch, state_->names[state_->next++])) return true;
    }
    if (cch > 0) *name = 0;
    return false;
}

void BLxPrefKeyIterator_Reg::Attach(HKEY key) {
    *state_ = State{};
    state_->key = key;
}
