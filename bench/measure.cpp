// Runs a command with its output thrown away: bench_measure COMMAND... prints its wall time in
// microseconds and its largest resident set in kilobytes. The command's status may be 0, 1 (nothing
// found) or 3 (some files unreadable).
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

int main(int count, char** values) {
    if (count < 2) return 2;
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        execvp(values[1], values + 1);
        _exit(127);
    }
    int status = 0;
    struct rusage usage {};
    if (child < 0 || wait4(child, &status, 0, &usage) != child) return 3;
    const auto time = std::chrono::steady_clock::now() - start;
    const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128;
    if (code != 0 && code != 1 && code != 3) {
        std::fprintf(stderr, "%s ended with status %d\n", values[1], code);
        return 3;
    }
    std::printf(
        "%lld %ld\n",
        static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(time).count()),
        usage.ru_maxrss);
    return 0;
}
