// srsample --hold: the documents that it names are in use until it is told to end.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "companions/md/document/document_properties.h"
#include "tests/unit/document_support.h"

namespace {

// srsample as a child, with pipes for what it reads and prints.
class Sampler {
public:
    explicit Sampler(const std::string& folder) {
        int input[2];
        int output[2];
        if (pipe(input) != 0 || pipe(output) != 0) throw std::runtime_error("no pipe");
        child_ = fork();
        if (child_ == 0) {
            dup2(input[0], STDIN_FILENO);
            dup2(output[1], STDOUT_FILENO);
            for (const int end : {input[0], input[1], output[0], output[1]})
                close(end);
            execl(SR_SAMPLE, SR_SAMPLE, folder.c_str(), "--documents", "30", "--hold", nullptr);
            _exit(127);
        }
        close(input[0]);
        close(output[1]);
        input_ = input[1];
        output_ = output[0];
    }
    ~Sampler() {
        close(input_);
        close(output_);
    }
    pid_t Child() const { return child_; }
    void Say(const char* text) {
        EXPECT_LT(0, write(input_, text, std::char_traits<char>::length(text)));
    }
    void EndInput() {
        close(input_);
        input_ = -1;
    }

    // The documents it says it holds: the lines behind the one that says so.
    std::vector<std::string> ReadHeld() {
        std::vector<std::string> held;
        std::string line;
        bool isHolding = false;
        for (char c = 0; held.size() < 5 && read(output_, &c, 1) == 1;) {
            if (c != '\n') {
                line += c;
                continue;
            }
            if (isHolding) held.push_back(line.substr(2));
            isHolding = isHolding || line.starts_with("Keeps locked");
            line.clear();
        }
        return held;
    }
    int WaitForStatus() {
        int status = 0;
        waitpid(child_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    pid_t child_ = -1;
    int input_ = -1;
    int output_ = -1;
};

TEST(SampleHold, HoldsUntilToldToEnd) {
    struct Row {
        const char* label;
        void (*end)(Sampler& sampler);
    };
    const Row rows[] = {
        {"a line", [](Sampler& sampler) { sampler.Say("enough\n"); }},
        {"the end of input behind half a line",
         [](Sampler& sampler) {
             sampler.Say("en");
             sampler.EndInput();
         }},
        {"an interrupt", [](Sampler& sampler) { kill(sampler.Child(), SIGINT); }},
        {"a request to end", [](Sampler& sampler) { kill(sampler.Child(), SIGTERM); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        const TempFolder folder;
        Sampler sampler((folder.Path() / "library").string());
        const std::vector<std::string> held = sampler.ReadHeld();
        EXPECT_EQ(5u, held.size());
        mddoc::DocumentProperties reader;
        for (const std::string& path : held)
            EXPECT_EQ(STG_E_SHAREVIOLATION, reader.Open(path)) << path;
        row.end(sampler);
        EXPECT_EQ(0, sampler.WaitForStatus());
        for (const std::string& path : held)
            EXPECT_EQ(S_OK, reader.Open(path)) << path;
    }
}

}  // namespace
