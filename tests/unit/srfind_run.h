// Runs the program in the test's own process. It stands in one source of a test program, since the
// functions by which a program writes are defined here.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/host/host_files.h"
#include "platform/host/program_main.h"

struct SrfindRun {
    int status = -1;
    std::string out;
    std::string err;
};

namespace {
SrfindRun captured;
}

void WriteOutput(std::string_view text) {
    captured.out += text;
}

void FlushOutput() {}

void WriteError(std::string_view text) {
    captured.err += text;
}

inline SrfindRun RunSrfind(const std::vector<std::string>& arguments) {
    std::vector<HostArgument> given;
    for (const std::string& each : arguments)
        given.push_back({NativePathFromLine(each), each});
    captured = {};
    captured.status = ProgramMain(given);
    return std::exchange(captured, {});
}
