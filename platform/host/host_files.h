// What console programs need of files and terminals in both builds.
#pragma once

#include <string>
#include <string_view>

#include "platform/native_path.h"

// The whole file, or standard input for "-". False when it can't be read.
[[nodiscard]] bool ReadHostFile(const NativePath& path, std::string& bytes);

// A path as it stands on one line of a list: natively the bytes themselves, in the Windows build
// UTF-8, of which a carriage return at the end is no part.
NativePath NativePathFromLine(std::string_view line);

bool IsErrorTerminal();

// From now on an interrupt (Ctrl-C) ends nothing but is noted.
void NoteInterrupts();
bool WasInterrupted();
