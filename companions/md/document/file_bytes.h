// Read-only access to the bytes of a file at any offset. Never waits for another process, never
// keeps a lock, and opens plain files only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/native_path.h"
#include "platform/win.h"

namespace mddoc {

// How the reader is told where a document is.
using DocumentPath = NativePath;

// What changes when a file is saved anew. Natively `id` is the inode, else the time of creation.
struct FileStamp {
    std::uint64_t size = 0;
    std::uint64_t time = 0;
    std::uint64_t id = 0;

    bool operator==(const FileStamp&) const = default;
};
// Of the file at a place, whatever it is; all 0 when it can't be looked at.
FileStamp StampOf(const DocumentPath& path);

class FileBytes {
public:
    FileBytes() = default;
    ~FileBytes() { Close(); }
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;

    // S_OK, or STG_E_FILENOTFOUND, _PATHNOTFOUND, _ACCESSDENIED (also a folder, a pipe, a device),
    // _TOOMANYOPENFILES, _INSUFFICIENTMEMORY, _SHAREVIOLATION when another process keeps the file
    // to itself, _READFAULT for the rest. Closes what was open before. `isPlainFile`: a listing has
    // just told, which saves a look; another kind is never opened without.
    [[nodiscard]] HRESULT Open(const DocumentPath& path, bool isPlainFile = false);
    void Close();

    // As it was when the file was opened.
    std::uint64_t Size() const { return size_; }
    // Of the file that was opened last.
    const FileStamp& Stamp() const { return stamp_; }

    // All `cb` bytes or a failure: STG_E_LOCKVIOLATION when another process has locked some of
    // them, STG_E_READFAULT when the file has shrunk or can't be read.
    [[nodiscard]] HRESULT ReadAt(std::uint64_t offset, void* buffer, std::size_t cb);

private:
    static constexpr std::intptr_t kNoFile = -1;

    std::intptr_t file_ = kNoFile;  // descriptor or handle
    std::uint64_t size_ = 0;
    FileStamp stamp_;
    bool hasLocks_ = false;  // natively: look for a lock before each read
};

}  // namespace mddoc
