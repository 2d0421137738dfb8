// Native build: the file that keeps the registry: SR_REGISTRY, else sr/registry.reg in the user's
// configuration folder (XDG_CONFIG_HOME, else ~/.config). A link stands for the file that it leads
// to. What is no plain file, as a device or a pipe, is neither opened nor replaced.
//
// A change is merged into what the file holds at that moment, under a lock, and the whole is put in
// place by one rename: a reader sees the old text or the new, a killed writer leaves the old, and
// two writers keep each other's changes. A text that can't be read to its last line is never
// overwritten: it is kept beside as <file>.damaged-<n>.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "platform/registry/registry_tree.h"

struct stat;

class RegistryFile {
public:
    explicit RegistryFile(std::string path);
    ~RegistryFile();
    RegistryFile(const RegistryFile&) = delete;
    RegistryFile& operator=(const RegistryFile&) = delete;

    // The path that the environment asks for, past all links.
    static std::string UserPath();
    // False when something stands there that is no plain file.
    static bool IsPlain(const std::string& path);

    // Reads the file when it is another than at the last time and sets `changed`. A file that isn't
    // there is an empty registry. ERROR_SUCCESS, or why it can't be read; the tree then stays.
    DWORD Refresh(bool& changed);

    // Puts the changes into the file. On failure the file holds what it held.
    DWORD Commit(const std::vector<RegistryChange>& changes);

    // What the file held at the last Refresh or Commit.
    RegistryKey& root() { return root_; }

private:
    // Tells one file from the next: each commit makes a new one.
    struct Identity {
        unsigned long long device = 0;
        unsigned long long inode = 0;
        long long size = -1;  // -1: no file
        long long seconds = 0;
        long long nanoseconds = 0;
        bool operator==(const Identity& other) const = default;
    };

    static Identity IdentityOf(const struct stat& status);
    // What to answer for something that is no plain file, which is told once.
    DWORD RefuseFile();
    // Opens the file anew and keeps it open; ERROR_SUCCESS too when there is none.
    DWORD Reopen();
    DWORD Read();
    DWORD Replace(const std::string& text) const;
    DWORD KeepDamaged() const;

    std::string path_;
    RegistryKey root_;
    // The file that was read. While it is open, no other gets its inode number.
    int held_ = -1;
    bool known_ = false;
    bool damaged_ = false;
    bool refused_ = false;
    Identity identity_;
};

// The keys of this process that are open; whoever opens and closes them counts.
extern std::atomic<int> openKeyCount;
