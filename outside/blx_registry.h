// BLx.dll: the registry.
#pragma once

#include <memory>

#include "outside/blx_string.h"

// The result of a registry call; converts to its code, 0 on success, else the system's error.
class BLxResult {
public:
    constexpr explicit BLxResult(DWORD code = 0) : code_(code) {}
    constexpr operator DWORD() const { return code_; }

private:
    DWORD code_;
};

// A null value name means the default value of the key.
class BLX_API BLxPref_Reg {
public:
    // `*key` is the open key, null on failure; the caller closes it.
    [[nodiscard]] static BLxResult OpenKey(HKEY root, const WCHAR* path, HKEY* key,
                                           REGSAM access = KEY_ALL_ACCESS);
    [[nodiscard]] static BLxResult CreateKey(HKEY root, const WCHAR* path, HKEY* key);
    // Natively a changed key is stored here: a failure means that the change was not kept.
    static BLxResult CloseKey(HKEY key);

    // The out value is untouched on failure. A value of another type is a failure.
    [[nodiscard]] static BLxResult Read(HKEY key, const WCHAR* name, LONG* value);
    [[nodiscard]] static BLxResult Read(HKEY key, const WCHAR* name, BLxWString* value);
    // `*cb` is the size of `data` in bytes and becomes the size of the value. When the data doesn't
    // fit, the type and the size are told all the same and the result is ERROR_MORE_DATA.
    [[nodiscard]] static BLxResult Read(HKEY key, const WCHAR* name, DWORD* type, void* data,
                                        DWORD* cb);

    [[nodiscard]] static BLxResult Write(HKEY key, const WCHAR* name, LONG value);
    [[nodiscard]] static BLxResult Write(HKEY key, const WCHAR* name, DWORD value);
    [[nodiscard]] static BLxResult Write(HKEY key, const WCHAR* name, const WCHAR* text);
    [[nodiscard]] static BLxResult Write(HKEY key, const WCHAR* name, DWORD type, const void* data,
                                         DWORD cb);

    static BLxResult DeleteValue(HKEY key, const WCHAR* name);
    // Removes one key, which has no subkeys.
    static BLxResult DeleteKey(HKEY root, const WCHAR* path);
    static BLxResult DeleteKeyAndDescendants(HKEY root, const WCHAR* path);
};

// The subkeys of an open key, in natural order: runs of digits compare by value, so that Node2
// comes before Node10. The names are those at the time of the first NextKey after Attach.
class BLX_API BLxPrefKeyIterator_Reg {
public:
    // `key` stays the caller's and open while the iterator is used.
    explicit BLxPrefKeyIterator_Reg(HKEY key);
    ~BLxPrefKeyIterator_Reg();
    BLxPrefKeyIterator_Reg(const BLxPrefKeyIterator_Reg&) = delete;
    BLxPrefKeyIterator_Reg& operator=(const BLxPrefKeyIterator_Reg&) = delete;

    // `cch` is the size of `name` in units, the terminator included. A name that doesn't fit is
    // passed over, never cut. False at the end.
    [[nodiscard]] bool NextKey(WCHAR* name, DWORD cch);
    // Starts afresh on `key`.
    void Attach(HKEY key);

private:
    struct State;
    std::unique_ptr<State> state_;
};
