// Native build: keys and values in memory, and the changes that a process makes to them.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "platform/wtext.h"

struct RegistryValue {
    WText name;
    DWORD type = 0;
    std::vector<BYTE> data;
};

// Names are found without case; both maps are in the order of the upper-cased names.
struct RegistryKey {
    WText name;
    std::map<WText, std::unique_ptr<RegistryKey>> keys;
    std::map<WText, RegistryValue> values;
};

// The names of the keys from below HKEY_CURRENT_USER down; none for that key itself.
using RegistryPath = std::vector<WText>;

enum class eRegistryChange { createKey, deleteKey, clearKey, setValue, deleteValue };

struct RegistryChange {
    eRegistryChange kind;
    RegistryPath path;
    RegistryValue value = {};  // for setValue; its name alone for deleteValue
};

inline constexpr std::size_t kMostKeyUnits = 255;
inline constexpr std::size_t kMostValueNameUnits = 16383;
inline constexpr std::size_t kMostKeyLevels = 512;

// Each UTF-16 unit in upper case by its simple mapping, as names are compared.
WText FoldName(WTextView name);

// True when the text form can hold the name: no control character, no unpaired surrogate.
bool IsStorableName(WTextView name);

// Null when there is no such key.
RegistryKey* FindKey(RegistryKey& root, const RegistryPath& path);
RegistryKey& MakeKey(RegistryKey& root, const RegistryPath& path);

// A change to a key that is gone does nothing, save that setValue makes it again: what one process
// writes isn't lost because another deleted the key meanwhile.
void ApplyChange(RegistryKey& root, const RegistryChange& change);
