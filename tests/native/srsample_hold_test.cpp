// srsample --hold: the documents that it names are in use until it is told to end.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "companions/md/document/document_properties.h"
#include "tests/unit/document_support.h"

namespace {

TEST(SampleHold, HoldsUntilToldToEnd) {
    const struct {
        const char* label;
        void (*end)(pid_t child, int ends);
    } kRows[] = {
        {"a line", [](pid_t, int end) { EXPECT_EQ(4, write(end, "end\n", 4)); }},
        {"the end of input behind half a line",
         [](pid_t, int end) {
             EXPECT_EQ(2, write(end, "en", 2));
             shutdown(end, SHUT_WR);
         }},
        {"an interrupt", [](pid_t child, int) { kill(child, SIGINT); }},
        {"a request to end", [](pid_t child, int) { kill(child, SIGTERM); }},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        const TempFolder folder;
        const std::string library = (folder.Path() / "library").string();
        int ends[2];
        ASSERT_EQ(0, socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends));
        const pid_t child = fork();
        if (child == 0) {
            for (const int stream : {STDIN_FILENO, STDOUT_FILENO})
                dup2(ends[1], stream);
            execl(SR_SAMPLE, SR_SAMPLE, library.c_str(), "--documents", "30", "--hold", nullptr);
            _exit(127);
        }
        close(ends[1]);
        // The documents it says it holds: the lines behind the one that says so.
        std::vector<std::string> held;
        std::string line;
        bool isHolding = false;
        for (char c = 0; held.size() < 5 && read(ends[0], &c, 1) == 1;) {
            if (c != '\n') {
                line += c;
                continue;
            }
            if (isHolding) held.push_back(line.substr(2));
            isHolding = isHolding || line.starts_with("Keeps locked");
            line.clear();
        }
        EXPECT_EQ(5u, held.size());
        mddoc::DocumentProperties reader;
        for (const std::string& path : held)
            EXPECT_EQ(STG_E_SHAREVIOLATION, reader.Open(path)) << path;
        row.end(child, ends[0]);
        int status = -1;
        EXPECT_EQ(child, waitpid(child, &status, 0));
        EXPECT_EQ(0, status);
        close(ends[0]);
        for (const std::string& path : held)
            EXPECT_EQ(S_OK, reader.Open(path)) << path;
    }
}

}  // namespace
