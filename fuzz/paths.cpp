// Names and paths between the bytes of the file system and the form of Windows: the way there and
// back loses nothing, and what works on a path stays inside it.
#include "platform/files/path_mapping.h"

#include <algorithm>

#include "fuzz/fuzz_input.h"
#include "outside/blx_directory_search.h"

namespace {

void MapBytes(std::string bytes) {
    std::replace(bytes.begin(), bytes.end(), '\0', '?');
    const std::string path = "/" + bytes;
    const WText wide = platform::PathFromBytes(path);
    Require(wide.substr(0, 3) == TEXT("Z:\\"));
    std::string back;
    Require(platform::PathToBytes(wide, back) && back == path);
    Require(DisplayPath(wide) == path);

    const std::string name = bytes.substr(0, bytes.find('/'));
    WText wideName;
    platform::AppendNameFromBytes(wideName, name);
    Require(wideName.find_first_of(TEXT("\\/:*?\"<>|")) == WText::npos);
    back.clear();
    platform::AppendNameToBytes(back, wideName);
    Require(back == name);
    (void)AbsoluteWidePath(bytes);
    (void)WideNameFromTyped(bytes);
}

// Any units, unpaired surrogates among them.
void ParseWide(WText path) {
    path.erase(std::remove(path.begin(), path.end(), WCHAR{0}), path.end());
    const WTextView name = FileNameIn(path);
    Require(name.data() >= path.data() && name.data() + name.size() == path.data() + path.size());
    const WCHAR* const extension = PathFindExtensionW(path.c_str());
    Require(extension >= path.c_str() && extension <= path.c_str() + path.size());
    const WText full = FullWidePath(path);
    Require(full.empty() || FullWidePath(full) == full);
    std::string bytes;
    if (!full.empty() && platform::PathToBytes(full, bytes)) {
        Require(!bytes.empty() && bytes.find('\0') == std::string::npos);
    }
    const std::size_t before = path.size();
    const BOOL cut = PathRemoveFileSpecW(path.data());
    Require((wtext::Length(path.c_str()) < before) == (cut != FALSE));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kMostBytes = 4096;
    size = std::min(size, kMostBytes);
    MapBytes(std::string(reinterpret_cast<const char*>(data), size));
    WText units(size / 2, 0);
    std::copy_n(data, size / 2 * 2, reinterpret_cast<std::uint8_t*>(units.data()));
    ParseWide(units);
    return 0;
}
