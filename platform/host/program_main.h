// The entry of a console program in both builds: arguments as paths and as text, and output that
// is UTF-8 with bare line feeds everywhere.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/native_path.h"

struct HostArgument {
    NativePath path;   // as given, for opening files
    std::string text;  // UTF-8; natively the bytes as given, which need not be valid
};

// Each program defines this one. `arguments` leaves out the program's own name; the result is the
// exit status. An exception that leaves it is reported and ends the program with status 3.
int ProgramMain(const std::vector<HostArgument>& arguments);

// The bytes as they are. Output that can't be written is noticed at the end: status 3.
void WriteOutput(std::string_view text);
// What was written so far is with its reader; for a program that goes on for long.
void FlushOutput();
void WriteError(std::string_view text);
