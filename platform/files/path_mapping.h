// Native build: paths in the form of Windows to and from the bytes of the file system. Z:\ is the
// root. A name keeps every byte: what Windows forbids in a name (\ : * ? " < > |) and bytes that
// are no UTF-8 stand as U+F000 plus the byte; characters of that range itself are written byte by
// byte, so that no two names collide.
#pragma once

#include <string>
#include <string_view>

#include "platform/wtext.h"

namespace platform {

inline bool IsSeparator(WCHAR unit) {
    return unit == '\\' || unit == '/';
}

// One name, without separators.
void AppendNameFromBytes(WText& out, std::string_view bytes);
void AppendNameToBytes(std::string& out, WTextView name);

// An absolute or relative native path; '/' becomes '\', and an absolute path begins with Z:.
WText PathFromBytes(std::string_view path);

// Both separators are taken. Relative paths stay relative. False, with the last error
// ERROR_PATH_NOT_FOUND, for another drive and for a network path; ERROR_INVALID_NAME for a text
// with an embedded null.
[[nodiscard]] bool PathToBytes(WTextView path, std::string& out);

// The last error that stands for an errno value of a file operation.
unsigned ErrorFromErrno(int error);

}  // namespace platform
