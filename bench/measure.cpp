// Runs a command with its output thrown away: bench_measure COMMAND... prints its wall time in
// microseconds and its largest resident set in kilobytes. The command's status may be 0, 1 (nothing
// found) or 3 (some files unreadable). With --first before the command the time is that until its
// first output.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <string_view>

int main(int count, char** values) {
    const bool first = count > 1 && std::string_view(values[1]) == "--first";
    char** const command = values + (first ? 2 : 1);
    int ends[2] = {-1, -1};
    if (*command == nullptr || (first && pipe(ends) != 0)) return 2;
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(first ? ends[1] : nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        if (first) close(ends[0]);
        execvp(*command, command);
        _exit(127);
    }
    auto time = std::chrono::steady_clock::duration{};
    if (first) {
        close(ends[1]);
        char bytes[4096];
        if (read(ends[0], bytes, sizeof bytes) > 0) time = std::chrono::steady_clock::now() - start;
        while (read(ends[0], bytes, sizeof bytes) > 0) {
        }
        if (time.count() == 0) {
            std::fprintf(stderr, "%s printed nothing\n", *command);
            return 3;
        }
    }
    int status = 0;
    struct rusage usage {};
    if (child < 0 || wait4(child, &status, 0, &usage) != child) return 3;
    if (!first) time = std::chrono::steady_clock::now() - start;
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128;
    if (code != 0 && code != 1 && code != 3) {
        std::fprintf(stderr, "%s ended with status %d\n", *command, code);
        return 3;
    }
    std::printf(
        "%lld %ld\n",
        static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(time).count()),
        usage.ru_maxrss);
    return 0;
}
