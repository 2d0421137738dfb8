// A handle is a path. Changes gather in memory and go to the file when a changed key is closed or a
// key is deleted.
#include "companions/blx/registry_calls.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <new>
#include <utility>

#include "platform/registry/registry_file.h"

namespace {

struct OpenKey {
    RegistryPath path;
    bool writable = true;
    bool changed = false;
    bool deleted = false;
};

class Registry {
public:
    // The open key of a handle, with the tree brought up to date. An error for a handle that is
    // none and for a key that is gone.
    DWORD Use(HKEY handle, OpenKey*& open) {
        open = Find(handle);
        if (open == nullptr) return ERROR_INVALID_HANDLE;
        if (const DWORD error = Refresh(); error != ERROR_SUCCESS) return error;
        return open->deleted ? ERROR_KEY_DELETED : ERROR_SUCCESS;
    }
    // As above, with the path of a key below it; the key itself may be absent.
    DWORD Use(HKEY handle, const WCHAR* path, OpenKey*& open, RegistryPath& full);

    RegistryKey* Key(const RegistryPath& path) { return FindKey(file_.root(), path); }

    HKEY Open(RegistryPath path, bool writable, bool changed) {
        next_ += 4;
        const HKEY handle = reinterpret_cast<HKEY>(next_);
        open_[handle] = {std::move(path), writable, changed, false};
        ++openKeyCount;
        return handle;
    }

    DWORD Close(HKEY handle) {
        if (handle == HKEY_CURRENT_USER) return ERROR_SUCCESS;
        const auto found = open_.find(handle);
        if (found == open_.end()) return ERROR_INVALID_HANDLE;
        const bool changed = found->second.changed;
        open_.erase(found);
        --openKeyCount;
        // Changes that can't be written now stay pending for the next close.
        return changed && !pending_.empty() ? Commit() : ERROR_SUCCESS;
    }

    // Waits until a changed key is closed.
    void Change(RegistryChange change) {
        ApplyChange(file_.root(), change);
        pending_.push_back(std::move(change));
    }

    // A change to the values of an open key. The root takes none: nobody closes it.
    DWORD ChangeValue(OpenKey& open, RegistryChange change) {
        if (&open == &root_) return ERROR_NOT_SUPPORTED;
        Change(std::move(change));
        open.changed = true;
        return ERROR_SUCCESS;
    }

    // Goes to the file at once; on failure nothing is changed.
    DWORD ChangeNow(RegistryChange change) {
        pending_.push_back(std::move(change));
        const DWORD error = Commit();
        if (error != ERROR_SUCCESS) pending_.pop_back();
        return error;
    }

    std::mutex mutex;

private:
    OpenKey* Find(HKEY handle) {
        if (handle == HKEY_CURRENT_USER) return &root_;
        const auto found = open_.find(handle);
        return found == open_.end() ? nullptr : &found->second;
    }

    // Another process may have replaced the file.
    DWORD Refresh() {
        bool changed = false;
        if (const DWORD error = file_.Refresh(changed); error != ERROR_SUCCESS) return error;
        if (!changed) return ERROR_SUCCESS;
        for (const RegistryChange& change : pending_)
            ApplyChange(file_.root(), change);
        MarkDeleted();
        return ERROR_SUCCESS;
    }

    DWORD Commit() {
        if (const DWORD error = file_.Commit(pending_); error != ERROR_SUCCESS) return error;
        pending_.clear();
        MarkDeleted();
        return ERROR_SUCCESS;
    }

    void MarkDeleted() {
        for (auto& [handle, open] : open_) {
            if (Key(open.path) == nullptr) open.deleted = true;
        }
    }

    RegistryFile file_{RegistryFile::UserPath()};
    OpenKey root_;
    std::map<HKEY, OpenKey> open_;
    ULONG_PTR next_ = 0x1000;
    std::vector<RegistryChange> pending_;
};

Registry& TheRegistry() {
    static Registry registry;
    return registry;
}

// Appends the names of a path; separators at the end or doubled don't count.
DWORD AppendPath(const WCHAR* text, RegistryPath& path) {
    WTextView rest = text == nullptr ? WTextView() : WTextView(text);
    if (!rest.empty() && rest.front() == '\\') return ERROR_BAD_PATHNAME;
    while (!rest.empty()) {
        const std::size_t end = rest.find('\\');
        const WTextView name = rest.substr(0, end);
        rest.remove_prefix(end == WTextView::npos ? rest.size() : end + 1);
        if (name.empty()) continue;
        if (name.size() > kMostKeyUnits || !IsStorableName(name) || path.size() == kMostKeyLevels) {
            return ERROR_INVALID_PARAMETER;
        }
        path.emplace_back(name);
    }
    return ERROR_SUCCESS;
}

DWORD Registry::Use(HKEY handle, const WCHAR* path, OpenKey*& open, RegistryPath& full) {
    if (const DWORD error = Use(handle, open)) return error;
    full = open->path;
    return AppendPath(path, full);
}

WTextView NameOf(const WCHAR* name) {
    return name == nullptr ? WTextView() : WTextView(name);
}

// A stored text without terminator gets one on the way out.
bool LacksTerminator(const RegistryValue& value) {
    const std::size_t size = value.data.size();
    if (value.type != REG_SZ || size == 0 || size % sizeof(WCHAR) != 0) return false;
    return value.data[size - 1] != 0 || value.data[size - 2] != 0;
}

}  // namespace

DWORD registry_calls::OpenKey(HKEY root, const WCHAR* path, REGSAM access, HKEY* key) {
    *key = nullptr;
    if (access != KEY_ALL_ACCESS && access != KEY_READ) return ERROR_NOT_SUPPORTED;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    ::OpenKey* open = nullptr;
    RegistryPath full;
    if (const DWORD error = registry.Use(root, path, open, full)) return error;
    if (registry.Key(full) == nullptr) return ERROR_FILE_NOT_FOUND;
    *key = registry.Open(std::move(full), access == KEY_ALL_ACCESS, false);
    return ERROR_SUCCESS;
}

DWORD registry_calls::CreateKey(HKEY root, const WCHAR* path, HKEY* key) {
    *key = nullptr;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    ::OpenKey* open = nullptr;
    RegistryPath full;
    if (const DWORD error = registry.Use(root, path, open, full)) return error;
    const bool creates = registry.Key(full) == nullptr;
    if (creates && !open->writable) return ERROR_ACCESS_DENIED;
    if (creates) registry.Change({eRegistryChange::createKey, full});
    *key = registry.Open(std::move(full), true, creates);
    return ERROR_SUCCESS;
}

// An owner's end closes as well, so nothing is thrown: without memory the changes stay pending.
DWORD registry_calls::CloseKey(HKEY key) try {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    return registry.Close(key);
} catch (const std::bad_alloc&) {
    return ERROR_NOT_ENOUGH_MEMORY;
}

DWORD registry_calls::ReadValue(HKEY key, const WCHAR* name, DWORD* type, void* data, DWORD* cb) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    ::OpenKey* open = nullptr;
    if (const DWORD error = registry.Use(key, open)) return error;
    const RegistryKey& node = *registry.Key(open->path);
    const auto found = node.values.find(FoldName(NameOf(name)));
    if (found == node.values.end()) return ERROR_FILE_NOT_FOUND;
    const RegistryValue& value = found->second;
    *type = value.type;
    const bool terminate = LacksTerminator(value);
    const auto needed = static_cast<DWORD>(value.data.size() + (terminate ? sizeof(WCHAR) : 0));
    const DWORD room = std::exchange(*cb, needed);
    if (data == nullptr) return ERROR_SUCCESS;
    if (room < needed) return ERROR_MORE_DATA;
    BYTE* end = std::copy(value.data.begin(), value.data.end(), static_cast<BYTE*>(data));
    if (terminate) std::fill_n(end, sizeof(WCHAR), BYTE{0});
    return ERROR_SUCCESS;
}

DWORD registry_calls::WriteValue(HKEY key, const WCHAR* name, DWORD type, const void* data,
                                 DWORD cb) {
    if (data == nullptr && cb != 0) return ERROR_NOACCESS;
    const WTextView valueName = NameOf(name);
    if (valueName.size() > kMostValueNameUnits || !IsStorableName(valueName)) {
        return ERROR_INVALID_PARAMETER;
    }
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    ::OpenKey* open = nullptr;
    if (const DWORD error = registry.Use(key, open)) return error;
    if (!open->writable) return ERROR_ACCESS_DENIED;
    const auto* bytes = static_cast<const BYTE*>(data);
    RegistryValue value = {WText(valueName), type, {bytes, bytes + cb}};
    return registry.ChangeValue(*open, {eRegistryChange::setValue, open->path, std::move(value)});
}

DWORD registry_calls::DeleteValue(HKEY key, const WCHAR* name) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    ::OpenKey* open = nullptr;
    if (const DWORD error = registry.Use(key, open)) return error;
    if (!open->writable) return ERROR_ACCESS_DENIED;
    const WText valueName(NameOf(name));
    if (registry.Key(open->path)->values.count(FoldName(valueName)) == 0) {
        return ERROR_FILE_NOT_FOUND;
    }
    return registry.ChangeValue(*open,
                                {eRegistryChange::deleteValue, open->path, {valueName, 0, {}}});
}

DWORD registry_calls::DeleteKey(HKEY root, const WCHAR* path) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    ::OpenKey* open = nullptr;
    RegistryPath full;
    if (const DWORD error = registry.Use(root, path, open, full)) return error;
    const RegistryKey* node = registry.Key(full);
    if (node == nullptr) return ERROR_FILE_NOT_FOUND;
    if (full.empty() || !node->keys.empty()) return ERROR_ACCESS_DENIED;
    return registry.ChangeNow({eRegistryChange::deleteKey, full});
}

DWORD registry_calls::DeleteTree(HKEY root, const WCHAR* path) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    ::OpenKey* open = nullptr;
    RegistryPath full;
    if (const DWORD error = registry.Use(root, path, open, full)) return error;
    if (registry.Key(full) == nullptr) return ERROR_FILE_NOT_FOUND;
    // Without a path the key itself stays and loses what it holds.
    const bool isOwn = full.size() == open->path.size();
    if (isOwn && !open->writable) return ERROR_ACCESS_DENIED;
    return registry.ChangeNow(
        {isOwn ? eRegistryChange::clearKey : eRegistryChange::deleteKey, full});
}

std::vector<WText> registry_calls::SubkeyNames(HKEY key) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex);
    std::vector<WText> names;
    ::OpenKey* open = nullptr;
    if (registry.Use(key, open) != ERROR_SUCCESS) return names;
    for (const auto& [folded, child] : registry.Key(open->path)->keys)
        names.push_back(child->name);
    return names;
}
