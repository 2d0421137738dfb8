#include "platform/host/program_main.h"

#include <cstdio>
#include <exception>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace {

constexpr int kFailed = 3;

bool outputFailed = false;

// `add(arguments)` gives the arguments.
template <typename Add>
int RunProgram(const Add& add) {
    int status = kFailed;
    try {
        std::vector<HostArgument> arguments;
        add(arguments);
        status = ProgramMain(arguments);
    } catch (const std::exception& error) {
        // In pieces: there may be no memory for the whole line.
        WriteError("The program stopped: ");
        WriteError(error.what());
        WriteError("\n");
    }
    if (std::fflush(stdout) != 0 || outputFailed) {
        WriteError("The output could not be written.\n");
        if (status == 0) status = kFailed;
    }
    return status;
}

}  // namespace

void WriteOutput(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) outputFailed = true;
}

void FlushOutput() {
    if (std::fflush(stdout) != 0) outputFailed = true;
}

void WriteError(std::string_view text) {
    // What was printed before comes before, also where both go to one place.
    static_cast<void>(std::fflush(stdout));
    // Where even this fails there is nobody left to tell.
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
}

#ifdef _WIN32

extern "C" int wmain(int count, wchar_t** values) {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    return RunProgram([=](std::vector<HostArgument>& arguments) {
        for (int i = 1; i < count; ++i)
            arguments.push_back({values[i], wtext::ToUtf8(values[i])});
    });
}

#else

int main(int count, char** values) {
    return RunProgram([=](std::vector<HostArgument>& arguments) {
        for (int i = 1; i < count; ++i)
            arguments.push_back({values[i], values[i]});
    });
}

#endif
