#include "outside/blx_registry.h"

#include <algorithm>
#include <vector>

#include "companions/blx/natural_order.h"
#include "platform/wtext.h"

namespace {

// A key's name has at most 255 units.
constexpr DWORD kMaxKeyName = 256;

BLxResult Result(LSTATUS status) {
    return BLxResult(static_cast<DWORD>(status));
}

const BYTE* Bytes(const void* data) {
    return static_cast<const BYTE*>(data);
}

}  // namespace

BLxResult BLxPref_Reg::OpenKey(HKEY root, const WCHAR* path, HKEY* key, REGSAM access) {
    *key = nullptr;
    return Result(RegOpenKeyExW(root, path, 0, access, key));
}

BLxResult BLxPref_Reg::CreateKey(HKEY root, const WCHAR* path, HKEY* key) {
    *key = nullptr;
    return Result(RegCreateKeyExW(root, path, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS,
                                  nullptr, key, nullptr));
}

BLxResult BLxPref_Reg::CloseKey(HKEY key) {
    return Result(RegCloseKey(key));
}

BLxResult BLxPref_Reg::Read(HKEY key, const WCHAR* name, LONG* value) {
    DWORD type = REG_NONE;
    LONG read = 0;
    DWORD cb = sizeof(read);
    const LSTATUS status =
        RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&read), &cb);
    if (status != ERROR_SUCCESS) return Result(status);
    if (type != REG_DWORD || cb != sizeof(read)) return BLxResult(ERROR_INVALID_DATA);
    *value = read;
    return BLxResult();
}

BLxResult BLxPref_Reg::Read(HKEY key, const WCHAR* name, BLxWString* value) {
    DWORD type = REG_NONE;
    DWORD cb = 0;
    LSTATUS status = RegQueryValueExW(key, name, nullptr, &type, nullptr, &cb);
    // Another process may lengthen the text between the two calls.
    BLxWString text;
    for (int attempt = 0; status == ERROR_SUCCESS && attempt < 4; ++attempt) {
        if (type != REG_SZ) return BLxResult(ERROR_INVALID_DATA);
        text.assign((cb + 1) / sizeof(WCHAR) + 1, 0);
        cb = static_cast<DWORD>((text.size() - 1) * sizeof(WCHAR));
        status =
            RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &cb);
        if (status == ERROR_SUCCESS) {
            // A stored text may lack its terminator, hold several, or have an odd size.
            text.resize(cb / sizeof(WCHAR));
            text.resize(std::min(text.size(), text.find(WCHAR{0})));
            *value = std::move(text);
            return BLxResult();
        }
        if (status == ERROR_MORE_DATA) status = ERROR_SUCCESS;
    }
    return Result(status != ERROR_SUCCESS ? status : ERROR_MORE_DATA);
}

BLxResult BLxPref_Reg::Read(HKEY key, const WCHAR* name, DWORD* type, void* data, DWORD* cb) {
    return Result(RegQueryValueExW(key, name, nullptr, type, static_cast<BYTE*>(data), cb));
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
    return Result(RegSetValueExW(key, name, 0, type, Bytes(data), cb));
}

BLxResult BLxPref_Reg::DeleteKey(HKEY root, const WCHAR* path) {
    return Result(RegDeleteKeyW(root, path));
}

BLxResult BLxPref_Reg::DeleteKeyAndDescendants(HKEY root, const WCHAR* path) {
    return Result(RegDeleteTreeW(root, path));
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
    WCHAR name[kMaxKeyName];
    for (DWORD index = 0;; ++index) {
        DWORD cch = kMaxKeyName;
        const LSTATUS status =
            RegEnumKeyExW(key, index, name, &cch, nullptr, nullptr, nullptr, nullptr);
        if (status != ERROR_SUCCESS) break;
        names.emplace_back(name, cch);
    }
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
