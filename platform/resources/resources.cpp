// Native build: the open resource libraries and their strings.
#include "platform/resources/resources_api.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <memory>
#include <string>

#include "platform/files/path_mapping.h"
#include "platform/resources/library.h"
#include "platform/resources/resource_image.h"

namespace {

// Strings lie in blocks of 16, each a length in units and the text.
constexpr UINT kStringsInBlock = 16;

class MappedFile {
public:
    explicit MappedFile(const std::string& path) {
        const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        struct stat status {};
        if (descriptor < 0) {
            error_ = errno == ENOENT || errno == ENOTDIR ? ERROR_MOD_NOT_FOUND
                                                         : platform::ErrorFromErrno(errno);
            return;
        }
        if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
            size_ = static_cast<std::size_t>(status.st_size);
            void* mapped = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, descriptor, 0);
            if (mapped != MAP_FAILED) bytes_ = static_cast<std::byte*>(mapped);
        }
        close(descriptor);
        if (bytes_ == nullptr) error_ = ERROR_BAD_EXE_FORMAT;
    }
    ~MappedFile() {
        if (bytes_ != nullptr) munmap(bytes_, size_);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    DWORD Error() const { return error_; }
    std::span<const std::byte> Bytes() const { return {bytes_, size_}; }

private:
    std::byte* bytes_ = nullptr;
    std::size_t size_ = 0;
    DWORD error_ = ERROR_SUCCESS;
};

struct Library {
    std::string path;
    std::unique_ptr<MappedFile> file;
    platform::ResourceImage image;
    unsigned references;
};

// The key is the handle: the address of the mapped image.
using Libraries = std::map<HMODULE, Library>;

Libraries& OpenLibraries() {
    static Libraries libraries;
    return libraries;
}

// The text of a string, as units in the image; empty when there is none.
std::span<const std::byte> FindString(HINSTANCE module, UINT id) {
    id &= 0xFFFF;
    std::span<const std::byte> block =
        platform::FindLibraryResource(module, platform::kResourceString, id / kStringsInBlock + 1);
    if (block.empty()) return {};
    const auto length = [&block]() -> std::size_t {
        return 2 * (std::to_integer<std::size_t>(block[0]) |
                    (std::to_integer<std::size_t>(block[1]) << 8));
    };
    for (UINT i = 0; i < id % kStringsInBlock; ++i) {
        if (block.size() < 2 || block.size() - 2 < length()) return {};
        block = block.subspan(2 + length());
    }
    if (block.size() < 2 || block.size() - 2 < length()) return {};
    return block.subspan(2, length());
}

}  // namespace

std::span<const std::byte> platform::FindLibraryResource(HINSTANCE module, std::uint32_t type,
                                                         std::uint32_t id) {
    const auto library = OpenLibraries().find(module);
    if (library == OpenLibraries().end()) {
        SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
        return {};
    }
    const std::span<const std::byte> found = library->second.image.Find(type, id);
    if (found.empty()) SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return found;
}

HMODULE LoadLibraryExW(LPCWSTR path, HANDLE file, DWORD flags) {
    std::string bytes;
    if (path == nullptr || file != nullptr || flags != DONT_RESOLVE_DLL_REFERENCES) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    if (!platform::PathToBytes(path, bytes)) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    for (auto& [handle, library] : OpenLibraries()) {
        if (library.path == bytes) {
            ++library.references;
            return handle;
        }
    }
    auto mapped = std::make_unique<MappedFile>(bytes);
    if (mapped->Error() != ERROR_SUCCESS) {
        SetLastError(mapped->Error());
        return nullptr;
    }
    const auto image = platform::ResourceImage::Parse(mapped->Bytes());
    if (!image) {
        SetLastError(ERROR_BAD_EXE_FORMAT);
        return nullptr;
    }
    auto* handle = reinterpret_cast<HMODULE>(const_cast<std::byte*>(mapped->Bytes().data()));
    OpenLibraries().emplace(handle, Library{bytes, std::move(mapped), *image, 1});
    return handle;
}

BOOL FreeLibrary(HMODULE module) {
    const auto library = OpenLibraries().find(module);
    if (library == OpenLibraries().end()) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return FALSE;
    }
    if (--library->second.references == 0) OpenLibraries().erase(library);
    return TRUE;
}

int LoadStringW(HINSTANCE module, UINT id, LPWSTR buffer, int cch) {
    const std::span<const std::byte> text = FindString(module, id);
    const std::size_t units = text.size() / 2;
    if (buffer == nullptr || cch < 0) return 0;
    if (cch == 0) {
        *reinterpret_cast<LPCWSTR*>(buffer) = reinterpret_cast<LPCWSTR>(text.data());
        return static_cast<int>(units);
    }
    const std::size_t copied = std::min(units, static_cast<std::size_t>(cch) - 1);
    for (std::size_t i = 0; i < copied; ++i) {
        buffer[i] = static_cast<WCHAR>(std::to_integer<unsigned>(text[2 * i]) |
                                       (std::to_integer<unsigned>(text[2 * i + 1]) << 8));
    }
    buffer[copied] = 0;
    return static_cast<int>(copied);
}
