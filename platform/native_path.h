// A path as the operating system takes it: UTF-16 text in the Windows build, bytes natively.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/wtext.h"

#ifdef _WIN32
using NativePath = WText;
#else
using NativePath = std::string;
#endif

// The path in the form of the operating system, from one in the form of Windows. Empty, with the
// last error, when there is no such path natively (another drive, a network path).
NativePath NativePathFromWide(WTextView path);
// The absolute path, its dot names resolved, of a path in the form of Windows. Empty when there is
// none.
WText FullWidePath(const WText& path);
// The folder that the process is in, in the form of Windows; empty when it is gone.
WText CurrentWideFolder();
// The absolute path in the form of Windows, from one as a person types it. Empty when there is
// none.
WText AbsoluteWidePath(const NativePath& path);
// The last name of a path in the form of Windows, as PathFindFileNameW finds it, for a path whose
// length is known: its end alone is looked at.
WTextView FileNameIn(WTextView path);
// The extension with its point, as PathFindExtensionW finds it; empty at the end of `path` without
// one.
WTextView ExtensionIn(WTextView path);
// How a path in the form of Windows is shown: natively as a path of the system, byte by byte.
std::string DisplayPath(WTextView path);
// A file name as a person types it, in the form in which the names of files are compared.
WText WideNameFromTyped(std::string_view name);
// On a drive from its root, or in the network: means the same place from every folder.
inline bool IsAbsoluteWidePath(WTextView path) {
    const bool hasDrive = path.size() > 2 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
    return hasDrive || path.substr(0, 2) == TEXT("\\\\");
}
// There is a file, or a link to one: no folder, pipe or device.
bool IsPlainFile(WTextView path);
// The size of the file in bytes; false and 0 when it can't be looked at or is no plain file.
[[nodiscard]] bool FileSize(WTextView path, std::uint64_t& bytes);
