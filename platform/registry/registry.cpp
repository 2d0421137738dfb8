// Native build: the registry calls. A handle is a path and an access mask; changes gather in memory
// and go to the file when a changed key is closed or a key is deleted.
#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>

#include "platform/registry/registry_api.h"
#include "platform/registry/registry_file.h"

namespace {

constexpr DWORD kNoAccessNeeded = 0;

struct OpenKey {
    RegistryPath path;
    REGSAM access = 0;
    bool changed = false;
    bool deleted = false;
};

class Registry {
public:
    Registry() : file_(RegistryFile::UserPath()) {}

    // The open key of a handle that has `access`, with the tree brought up to date. An error for a
    // handle that is none, a key that is gone and a right that is missing.
    DWORD Use(HKEY handle, REGSAM access, OpenKey*& open) {
        open = Find(handle);
        if (open == nullptr) return ERROR_INVALID_HANDLE;
        if (const DWORD error = Refresh(); error != ERROR_SUCCESS) return error;
        if (open->deleted) return ERROR_KEY_DELETED;
        return (open->access & access) == access ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
    }

    RegistryKey* Key(const RegistryPath& path) { return FindKey(file_.root(), path); }

    HKEY Open(RegistryPath path, REGSAM access, bool changed) {
        next_ += 4;
        const HKEY handle = reinterpret_cast<HKEY>(next_);
        open_[handle] = {std::move(path), access, changed, false};
        return handle;
    }

    std::size_t OpenCount() const { return open_.size(); }

    DWORD Close(HKEY handle) {
        if (handle == HKEY_CURRENT_USER || handle == HKEY_LOCAL_MACHINE) return ERROR_SUCCESS;
        const auto found = open_.find(handle);
        if (found == open_.end()) return ERROR_INVALID_HANDLE;
        const bool changed = found->second.changed;
        open_.erase(found);
        // Changes that can't be written now stay pending for the next close.
        return changed && !pending_.empty() ? Commit() : ERROR_SUCCESS;
    }

    // Waits until a changed key is closed.
    void Change(RegistryChange change) {
        ApplyChange(file_.root(), change);
        pending_.push_back(std::move(change));
    }

    // A change to the values of an open key. That of a root is made at once: nobody closes a root.
    DWORD ChangeValue(OpenKey& open, RegistryChange change) {
        if (&open == &root_) return ChangeNow(std::move(change));
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

    std::mutex& mutex() { return mutex_; }

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

    std::mutex mutex_;
    RegistryFile file_;
    OpenKey root_ = {{}, KEY_ALL_ACCESS, false, false};
    std::map<HKEY, OpenKey> open_;
    ULONG_PTR next_ = 0x1000;
    std::vector<RegistryChange> pending_;
};

Registry& TheRegistry() {
    static Registry registry;
    return registry;
}

LSTATUS Status(DWORD error) {
    return static_cast<LSTATUS>(error);
}

// Appends the names of a path; separators at the end or doubled don't count.
DWORD AppendPath(LPCWSTR text, RegistryPath& path) {
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

WTextView NameOf(LPCWSTR name) {
    return name == nullptr ? WTextView() : WTextView(name);
}

bool IsText(DWORD type) {
    return type == REG_SZ;
}

// A stored text without terminator gets one on the way out.
bool LacksTerminator(const RegistryValue& value) {
    const std::size_t size = value.data.size();
    if (!IsText(value.type) || size == 0 || size % sizeof(WCHAR) != 0) return false;
    return value.data[size - 1] != 0 || value.data[size - 2] != 0;
}

// What opening and creating ask of their arguments.
bool AreOpenArguments(DWORD options, REGSAM access, const HKEY* key) {
    return key != nullptr && options == REG_OPTION_NON_VOLATILE && (access & ~KEY_ALL_ACCESS) == 0;
}

}  // namespace

LSTATUS RegOpenKeyExW(HKEY root, LPCWSTR path, DWORD options, REGSAM access, HKEY* key) {
    if (!AreOpenArguments(options, access, key)) return ERROR_INVALID_PARAMETER;
    *key = nullptr;
    if (root == HKEY_LOCAL_MACHINE) return ERROR_FILE_NOT_FOUND;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    OpenKey* open = nullptr;
    if (const DWORD error = registry.Use(root, kNoAccessNeeded, open)) return Status(error);
    RegistryPath full = open->path;
    if (const DWORD error = AppendPath(path, full)) return Status(error);
    if (registry.Key(full) == nullptr) return ERROR_FILE_NOT_FOUND;
    *key = registry.Open(std::move(full), access, false);
    return ERROR_SUCCESS;
}

LSTATUS RegCreateKeyExW(HKEY root, LPCWSTR path, DWORD reserved, LPWSTR keyClass, DWORD options,
                        REGSAM access, const SECURITY_ATTRIBUTES* security, HKEY* key,
                        DWORD* disposition) {
    if (reserved != 0 || !AreOpenArguments(options, access, key)) return ERROR_INVALID_PARAMETER;
    *key = nullptr;
    if (keyClass != nullptr || security != nullptr) return ERROR_NOT_SUPPORTED;
    if (root == HKEY_LOCAL_MACHINE) return ERROR_ACCESS_DENIED;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    OpenKey* open = nullptr;
    if (const DWORD error = registry.Use(root, kNoAccessNeeded, open)) return Status(error);
    RegistryPath full = open->path;
    if (const DWORD error = AppendPath(path, full)) return Status(error);
    const bool creates = registry.Key(full) == nullptr;
    if (creates) {
        if ((open->access & KEY_CREATE_SUB_KEY) == 0) return ERROR_ACCESS_DENIED;
        registry.Change({eRegistryChange::createKey, full});
    }
    *key = registry.Open(std::move(full), access, creates);
    if (disposition != nullptr) {
        *disposition = creates ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    }
    return ERROR_SUCCESS;
}

LSTATUS RegCloseKey(HKEY key) {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    return Status(registry.Close(key));
}

LSTATUS RegQueryValueExW(HKEY key, LPCWSTR name, DWORD* reserved, DWORD* type, BYTE* data,
                         DWORD* cb) {
    if (reserved != nullptr || (data != nullptr && cb == nullptr)) return ERROR_INVALID_PARAMETER;
    if (key == HKEY_LOCAL_MACHINE) return ERROR_FILE_NOT_FOUND;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    OpenKey* open = nullptr;
    if (const DWORD error = registry.Use(key, KEY_QUERY_VALUE, open)) return Status(error);
    const RegistryKey& node = *registry.Key(open->path);
    const auto found = node.values.find(FoldName(NameOf(name)));
    if (found == node.values.end()) return ERROR_FILE_NOT_FOUND;
    const RegistryValue& value = found->second;
    if (type != nullptr) *type = value.type;
    if (cb == nullptr) return ERROR_SUCCESS;
    const bool terminate = LacksTerminator(value);
    const DWORD needed =
        static_cast<DWORD>(value.data.size() + (terminate ? sizeof(WCHAR) : std::size_t{0}));
    const DWORD room = *cb;
    *cb = needed;
    if (data == nullptr) return ERROR_SUCCESS;
    if (room < needed) return ERROR_MORE_DATA;
    std::copy(value.data.begin(), value.data.end(), data);
    if (terminate) std::fill_n(data + value.data.size(), sizeof(WCHAR), BYTE{0});
    return ERROR_SUCCESS;
}

LSTATUS RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD cb) {
    if (reserved != 0) return ERROR_INVALID_PARAMETER;
    if (data == nullptr && cb != 0) return ERROR_NOACCESS;
    if (key == HKEY_LOCAL_MACHINE) return ERROR_ACCESS_DENIED;
    const WTextView valueName = NameOf(name);
    if (valueName.size() > kMostValueNameUnits || !IsStorableName(valueName)) {
        return ERROR_INVALID_PARAMETER;
    }
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    OpenKey* open = nullptr;
    if (const DWORD error = registry.Use(key, KEY_SET_VALUE, open)) return Status(error);
    RegistryValue value = {WText(valueName), type, {}};
    if (cb != 0) value.data.assign(data, data + cb);
    return Status(
        registry.ChangeValue(*open, {eRegistryChange::setValue, open->path, std::move(value)}));
}

LSTATUS RegDeleteKeyW(HKEY key, LPCWSTR path) {
    if (path == nullptr) return ERROR_INVALID_PARAMETER;
    if (key == HKEY_LOCAL_MACHINE) return ERROR_FILE_NOT_FOUND;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    OpenKey* open = nullptr;
    // The rights of the handle don't count: the key itself is asked whether it may be deleted.
    if (const DWORD error = registry.Use(key, kNoAccessNeeded, open)) return Status(error);
    RegistryPath full = open->path;
    if (const DWORD error = AppendPath(path, full)) return Status(error);
    const RegistryKey* node = registry.Key(full);
    if (node == nullptr) return ERROR_FILE_NOT_FOUND;
    if (full.empty() || !node->keys.empty()) return ERROR_ACCESS_DENIED;
    return Status(registry.ChangeNow({eRegistryChange::deleteKey, full}));
}

LSTATUS RegDeleteTreeW(HKEY key, LPCWSTR path) {
    if (key == HKEY_LOCAL_MACHINE) return ERROR_FILE_NOT_FOUND;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    OpenKey* open = nullptr;
    constexpr REGSAM kNeeded = KEY_ENUMERATE_SUB_KEYS | KEY_QUERY_VALUE;
    if (const DWORD error = registry.Use(key, kNeeded, open)) return Status(error);
    RegistryPath full = open->path;
    if (const DWORD error = AppendPath(path, full)) return Status(error);
    if (registry.Key(full) == nullptr) return ERROR_FILE_NOT_FOUND;
    // Without a path the key itself stays and loses what it holds.
    const bool isOwn = full.size() == open->path.size();
    if (isOwn && (open->access & KEY_SET_VALUE) == 0) return ERROR_ACCESS_DENIED;
    return Status(
        registry.ChangeNow({isOwn ? eRegistryChange::clearKey : eRegistryChange::deleteKey, full}));
}

LSTATUS RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, DWORD* cch, DWORD* reserved,
                      LPWSTR keyClass, DWORD* cchClass, FILETIME* lastWrite) {
    if (name == nullptr || cch == nullptr || reserved != nullptr) return ERROR_INVALID_PARAMETER;
    if (keyClass != nullptr || cchClass != nullptr || lastWrite != nullptr) {
        return ERROR_NOT_SUPPORTED;
    }
    if (key == HKEY_LOCAL_MACHINE) return ERROR_NO_MORE_ITEMS;
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    OpenKey* open = nullptr;
    if (const DWORD error = registry.Use(key, KEY_ENUMERATE_SUB_KEYS, open)) return Status(error);
    const RegistryKey& node = *registry.Key(open->path);
    if (index >= node.keys.size()) return ERROR_NO_MORE_ITEMS;
    const WText& found = std::next(node.keys.begin(), index)->second->name;
    if (*cch <= found.size()) return ERROR_MORE_DATA;
    found.copy(name, found.size());
    name[found.size()] = 0;
    *cch = static_cast<DWORD>(found.size());
    return ERROR_SUCCESS;
}

std::size_t CountOpenKeys() {
    Registry& registry = TheRegistry();
    const std::lock_guard lock(registry.mutex());
    return registry.OpenCount();
}
