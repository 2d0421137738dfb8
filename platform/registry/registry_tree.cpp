#include "platform/registry/registry_tree.h"

#include <unicode/uchar.h>

WText FoldName(WTextView name) {
    WText folded(name);
    for (WCHAR& c : folded) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<WCHAR>(c - ('a' - 'A'));
        } else if (c >= 0x80) {
            c = static_cast<WCHAR>(u_toupper(c));
        }
    }
    return folded;
}

bool IsStorableName(WTextView name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        const WCHAR c = name[i];
        if (c < ' ' || (c >= 0xDC00 && c <= 0xDFFF)) return false;
        if (c < 0xD800 || c > 0xDBFF) continue;
        const WCHAR low = i + 1 < name.size() ? name[i + 1] : WCHAR{0};
        if (low < 0xDC00 || low > 0xDFFF) return false;
        ++i;
    }
    return true;
}

RegistryKey* FindKey(RegistryKey& root, const RegistryPath& path) {
    RegistryKey* key = &root;
    for (const WText& name : path) {
        const auto found = key->keys.find(FoldName(name));
        if (found == key->keys.end()) return nullptr;
        key = found->second.get();
    }
    return key;
}

RegistryKey& MakeKey(RegistryKey& root, const RegistryPath& path) {
    RegistryKey* key = &root;
    for (const WText& name : path) {
        std::unique_ptr<RegistryKey>& child = key->keys[FoldName(name)];
        if (!child) {
            child = std::make_unique<RegistryKey>();
            child->name = name;
        }
        key = child.get();
    }
    return *key;
}

namespace {

void DeleteKey(RegistryKey& root, const RegistryPath& path) {
    if (path.empty()) return;
    RegistryKey* parent = FindKey(root, RegistryPath(path.begin(), path.end() - 1));
    if (parent != nullptr) parent->keys.erase(FoldName(path.back()));
}

}  // namespace

void ApplyChange(RegistryKey& root, const RegistryChange& change) {
    switch (change.kind) {
        case eRegistryChange::createKey:
            MakeKey(root, change.path);
            break;
        case eRegistryChange::deleteKey:
            DeleteKey(root, change.path);
            break;
        case eRegistryChange::clearKey:
            if (RegistryKey* key = FindKey(root, change.path)) {
                key->keys.clear();
                key->values.clear();
            }
            break;
        case eRegistryChange::setValue:
            MakeKey(root, change.path).values[FoldName(change.value.name)] = change.value;
            break;
        case eRegistryChange::deleteValue:
            if (RegistryKey* key = FindKey(root, change.path)) {
                key->values.erase(FoldName(change.value.name));
            }
            break;
    }
}
