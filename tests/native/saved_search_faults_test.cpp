// Saving when things go wrong: a full disk, a killed writer, two writers at once.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

#include "platform/processes.h"
#include "store/saved_search.h"

namespace {

constexpr const WCHAR* kName = TEXT("s");

// A list whose criteria all hold the same text.
StoredSearch Filled(const WCHAR* value) {
    StoredSearch search;
    for (int i = 0; i < 12; ++i) {
        StoredCriterion criterion;
        criterion.join = 1;
        criterion.number = 22;
        criterion.category = 1;
        criterion.condition = 21721;
        criterion.value = value;
        search.criteria.push_back(criterion);
    }
    return search;
}

// A process of its own; `work` gives its exit status.
pid_t Start(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0) _exit(work());
    EXPECT_LT(0, child);
    return child;
}

int StatusOf(pid_t child) {
    int status = 0;
    EXPECT_EQ(child, waitpid(child, &status, 0));
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class SavedSearchFaults : public testing::Test {
protected:
    SavedSearchFaults() { EXPECT_EQ(eStoredWrite::Whole, WriteSavedSearch(kName, old_)); }
    ~SavedSearchFaults() override { EXPECT_TRUE(DeleteSavedSearch(kName)); }

    const StoredSearch old_ = Filled(TEXT("old"));
    const StoredSearch new_ = Filled(TEXT("new"));
};

TEST_F(SavedSearchFaults, AFullDiskKeepsTheOldOne) {
    struct stat file = {};
    ASSERT_EQ(0, stat(std::getenv("SR_REGISTRY"), &file));
    // Room for the beginning of the copy, and for most of it.
    for (const long room : {200, 1500}) {
        const pid_t child = Start([&] {
            signal(SIGXFSZ, SIG_IGN);
            const rlim_t most = static_cast<rlim_t>(file.st_size + room);
            const rlimit limit = {most, most};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 100;
            return static_cast<int>(WriteSavedSearch(kName, new_));
        });
        EXPECT_EQ(static_cast<int>(eStoredWrite::KeptOld), StatusOf(child)) << room;
        StoredSearch read;
        EXPECT_EQ(eStoredRead::Whole, ReadSavedSearch(kName, read));
        EXPECT_EQ(old_, read) << room;
    }
}

TEST_F(SavedSearchFaults, AKilledWriterLeavesOneOfTheTwo) {
    int finished = 0;
    for (int round = 0; round < 25; ++round) {
        const pid_t child = Start([&] {
            for (;;) {
                (void)WriteSavedSearch(kName, new_);
                (void)WriteSavedSearch(kName, old_);
            }
            return 0;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(7 + 5 * round));
        kill(child, SIGKILL);
        EXPECT_EQ(-1, StatusOf(child));
        EXPECT_FALSE(IsProcessRunning(static_cast<DWORD>(child)));
        finished += static_cast<int>(FinishCutSaves().size());
        StoredSearch read;
        EXPECT_EQ(eStoredRead::Whole, ReadSavedSearch(kName, read));
        EXPECT_TRUE(read == old_ || read == new_) << "round " << round;
        EXPECT_EQ((std::vector<WText>{kName}), SavedSearchNames());
    }
    EXPECT_LT(0, finished) << "no kill came in mid-save";
}

TEST_F(SavedSearchFaults, TwoWritersAndAReader) {
    std::vector<pid_t> writers;
    for (const StoredSearch* search : {&old_, &new_}) {
        writers.push_back(Start([search] {
            for (int i = 0; i < 6; ++i) {
                if (WriteSavedSearch(kName, *search) != eStoredWrite::Whole) return 1;
            }
            return 0;
        }));
    }
    for (int i = 0; i < 6; ++i) {
        StoredSearch read;
        EXPECT_EQ(eStoredRead::Whole, ReadSavedSearch(kName, read));
        EXPECT_TRUE(read == old_ || read == new_) << "a list of two writers";
    }
    for (const pid_t writer : writers)
        EXPECT_EQ(0, StatusOf(writer));
}

}  // namespace
