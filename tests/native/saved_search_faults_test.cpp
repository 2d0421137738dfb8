// Saving when things go wrong: a change that fails, a full disk, a killed writer, two writers at
// once. Several searches are there each time, and none but the one in writing may suffer.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <random>
#include <vector>

#include "platform/processes.h"
#include "tests/native/failing_registry.h"
#include "tests/unit/find_window_fixture.h"
#include "tests/unit/stored_searches.h"

// Stands in front of the C library's. The registry calls it before and after it puts a changed file
// in place; a process can be killed at such a call.
int fsyncsUntilKilled = -1;
extern "C" int fsync(int) {
    if (fsyncsUntilKilled-- == 0) raise(SIGKILL);
    return 0;
}

namespace {

constexpr const WCHAR* kName = TEXT("s");
constexpr const WCHAR* kOthers[] = {TEXT("before"), TEXT("t"), TEXT("u")};

// A list whose criteria all hold the same text.
StoredSearch Filled(const WText& value, int count = 12) {
    StoredSearch search;
    search.matchCase = 1;
    search.lookFor = 2;
    search.environment = eAccessFindFiles;
    for (int i = 0; i < count; ++i) {
        StoredCriterion criterion;
        criterion.join = 1;
        criterion.number = 22;
        criterion.category = 1;
        criterion.condition = 21721;
        criterion.value = value;
        criterion.valueId = 21725;
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

bool IsStored(const WCHAR* name, const StoredSearch& search) {
    StoredSearch read;
    return ReadSavedSearch(name, read) == eStoredRead::Whole && read == search;
}

// While it lives no file can get larger than this.
class FullDisk {
public:
    explicit FullDisk(long most) {
        signal(SIGXFSZ, SIG_IGN);
        EXPECT_EQ(0, getrlimit(RLIMIT_FSIZE, &before_));
        rlimit limit = before_;
        limit.rlim_cur = static_cast<rlim_t>(most);
        EXPECT_EQ(0, setrlimit(RLIMIT_FSIZE, &limit));
    }
    ~FullDisk() { EXPECT_EQ(0, setrlimit(RLIMIT_FSIZE, &before_)); }

private:
    rlimit before_{};
};

void RemoveAll() {
    (void)FinishCutSaves();
    for (const WText& name : SavedSearchNames())
        EXPECT_TRUE(Remove(name.c_str()));
}

void PutOthers() {
    for (const WCHAR* name : kOthers)
        EXPECT_EQ(eStoredWrite::Whole, Save(name, Filled(name, 2)));
}

void ExpectOthers() {
    for (const WCHAR* name : kOthers)
        EXPECT_TRUE(IsStored(name, Filled(name, 2))) << wtext::ToUtf8(name);
}

class SavedSearchFaults : public testing::Test {
protected:
    SavedSearchFaults() {
        RemoveAll();
        PutOthers();
        EXPECT_EQ(eStoredWrite::Whole, Save(kName, old_));
    }
    ~SavedSearchFaults() override {
        ExpectOthers();
        RemoveAll();
        EXPECT_EQ(0u, BLxPref_Reg::DeleteKeyAndDescendants(HKEY_CURRENT_USER, kStore.c_str()));
    }
    // One without the property of its criterion.
    static void PutDamaged() {
        StoredSearch damaged;
        damaged.matchCase = 7;
        EXPECT_EQ(eStoredWrite::Whole, Save(kName, damaged));
        HKEY key = nullptr;
        const WText node = kStore + TEXT("\\s\\Node1");
        ASSERT_EQ(0u, BLxPref_Reg::CreateKey(HKEY_CURRENT_USER, node.c_str(), &key));
        EXPECT_EQ(0u, BLxPref_Reg::Write(key, TEXT("Join"), LONG{1}));
        BLxPref_Reg::CloseKey(key);
    }

    const WText kBelow = kStore + TEXT("\\s\\below");
    const StoredSearch old_ = Filled(TEXT("old"));
    const StoredSearch new_ = Filled(TEXT("new"));
};

// Each change of a save fails in its turn, alone or with all that follow.
TEST_F(SavedSearchFaults, EveryChangeThatFails) {
    const StoredSearch fresh = Filled(TEXT("fresh"), 1);
    std::map<eStoredWrite, int> results;
    // Once something lies below, the search goes in pieces.
    constexpr struct {
        eStoredRead before;
        bool below;
    } kRows[] = {{eStoredRead::Absent, false},
                 {eStoredRead::Whole, false},
                 {eStoredRead::Incomplete, false},
                 {eStoredRead::Whole, true}};
    for (const auto& row : kRows) {
        const eStoredRead before = row.before;
        if (row.below) MakeKeyAt(kBelow);
        for (const eRegistryFault fault : {eRegistryFault::Once, eRegistryFault::FromThenOn}) {
            for (int change = 0;; ++change) {
                SCOPED_TRACE(testing::Message() << static_cast<int>(before) << ", fault "
                                                << static_cast<int>(fault) << " at " << change);
                EXPECT_TRUE(Remove(kName));
                if (before == eStoredRead::Whole) {
                    EXPECT_EQ(eStoredWrite::Whole, Save(kName, Filled(TEXT("old"), 2)));
                } else if (before == eStoredRead::Incomplete) {
                    PutDamaged();
                }
                StoredSearch old;
                EXPECT_EQ(before, ReadSavedSearch(kName, old));
                const auto unchanged = [&] {
                    StoredSearch now;
                    return ReadSavedSearch(kName, now) == before && now == old;
                };
                FailRegistryChange(change, fault);
                std::vector<WText> finished;
                const eStoredWrite result = WriteSavedSearch(kName, fresh, finished);
                if (!EndRegistryFaults()) {
                    EXPECT_EQ(eStoredWrite::Whole, result);
                    break;
                }
                ++results[result];
                const bool keeps = result == eStoredWrite::KeptOld || result == eStoredWrite::NoKey;
                // A key alone, without any value, is no search yet.
                const bool none = result == eStoredWrite::CutShort && !HasSavedSearch(kName);
                EXPECT_EQ(keeps || none, unchanged());
                EXPECT_EQ(result == eStoredWrite::Whole, IsStored(kName, fresh));
                // A copy that couldn't be taken away is finished too, which is told.
                finished = FinishCutSaves();
                EXPECT_TRUE(!keeps || finished.empty() || fault != eRegistryFault::Once);
                EXPECT_EQ(finished.empty() && keeps, unchanged());
                EXPECT_EQ(!finished.empty() || !keeps, IsStored(kName, fresh));
                EXPECT_TRUE(FinishCutSaves().empty());
            }
        }
    }
    EXPECT_EQ(5u, results.size()) << "each of the answers";
    EXPECT_TRUE(HasKeyAt(kBelow));
}

TEST_F(SavedSearchFaults, EveryChangeOfADeletionThatFails) {
    int failures = 0;
    MakeKeyAt(kBelow);
    for (int change = 0;; ++change) {
        EXPECT_EQ(eStoredWrite::Whole, Save(kName, old_));
        FailRegistryChange(change, eRegistryFault::Once);
        const bool deleted = Remove(kName);
        if (!EndRegistryFaults()) break;
        EXPECT_EQ(!deleted, HasSavedSearch(kName));
        if (!deleted) ++failures;
    }
    EXPECT_LT(0, failures);
}

// A copy that can't be finished keeps its place beside that of the next search, and goes with its
// name: what comes later isn't lost to it.
TEST_F(SavedSearchFaults, ACopyThatHasToWait) {
    const StoredSearch waiting = Filled(TEXT("waiting"), 1);
    const StoredSearch later = Filled(TEXT("later"), 1);
    const struct {
        const char* next;
        const WCHAR* name;  // of the next search
        bool deleted;
        const StoredSearch* stands;  // under the name of the copy; null: nothing
    } kRows[] = {{"another is saved", TEXT("another"), false, &waiting},
                 {"it is saved", kName, false, &later},
                 {"it is deleted", kName, true, nullptr}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.next);
        EXPECT_TRUE(Remove(kName));
        // The criterion in its place can't be made: behind 11 changes of the copy and 4 there.
        FailRegistryChange(15, eRegistryFault::Once);
        EXPECT_EQ(eStoredWrite::CutShort, Save(kName, waiting));
        EXPECT_TRUE(EndRegistryFaults());
        // The first change would clear that place.
        FailRegistryChange(0, eRegistryFault::Once);
        if (row.deleted) {
            EXPECT_TRUE(Remove(row.name));
        } else {
            EXPECT_EQ(eStoredWrite::Whole, Save(row.name, later));
        }
        EXPECT_TRUE(EndRegistryFaults());
        EXPECT_EQ(row.stands == &waiting ? 1u : 0u, FinishCutSaves().size());
        EXPECT_EQ(row.stands != nullptr, HasSavedSearch(kName));
        if (row.stands != nullptr) {
            EXPECT_TRUE(IsStored(kName, *row.stands));
        }
    }
}

// What a writer is about, in memory that outlives it.
struct Progress {
    static constexpr int kSearches = 4;
    static constexpr int kGone = 0;
    int step;                 // the version that is being written
    int writing;              // its search
    int standing[kSearches];  // the version that was acknowledged last

    static WText NameOf(int search) { return TEXT("killed ") + wtext::FromNumber(search); }
    static StoredSearch Version(int step) { return Filled(wtext::FromNumber(step)); }
    static bool Deletes(int step) { return step % 5 == 0; }

    // Saves, overwrites and deletes in turn, until it is killed.
    [[noreturn]] void Work() {
        for (;;) {
            const int now = ++step;
            const int search = now % kSearches;
            const WText name = NameOf(search);
            std::vector<WText> finished;
            writing = search;
            if (Deletes(now)) {
                if (!DeleteSavedSearch(name.c_str(), finished)) _exit(1);
            } else if (WriteSavedSearch(name.c_str(), Version(now), finished) !=
                       eStoredWrite::Whole) {
                _exit(2);
            }
            standing[search] = Deletes(now) ? kGone : now;
        }
    }
    // Whether a version stands, or nothing where that is right.
    bool Stands(int search, int version) const {
        const WText name = NameOf(search);
        return version == kGone ? !HasSavedSearch(name.c_str())
                                : IsStored(name.c_str(), Version(version));
    }
};

// SR_KILLS: how many.
TEST_F(SavedSearchFaults, AKilledWriter) {
    const char* const given = std::getenv("SR_KILLS");
    const int kills = given != nullptr ? std::atoi(given) : 25;
    constexpr unsigned kMoments = 200;
    void* const shared =
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(MAP_FAILED, shared);
    auto& progress = *new (shared) Progress{};
    std::map<std::string, int> found;
    std::mt19937 random(static_cast<unsigned>(kills));
    for (int kill = 0; kill < kills; ++kill) {
        const int moment = static_cast<int>(random() % kMoments);
        const pid_t child = Start([&]() -> int {
            fsyncsUntilKilled = moment;
            progress.Work();
        });
        EXPECT_EQ(-1, StatusOf(child));
        EXPECT_FALSE(IsProcessRunning(static_cast<DWORD>(child)));
        const int writing = progress.writing;
        const int step = progress.step;
        SCOPED_TRACE("kill " + std::to_string(kill) + ", search " + std::to_string(writing));
        const auto state = [&]() -> std::string {
            if (progress.Stands(writing, progress.standing[writing])) return "old";
            const int version = Progress::Deletes(step) ? Progress::kGone : step;
            if (!progress.Stands(writing, version)) return "cut short";
            progress.standing[writing] = version;
            return version == Progress::kGone ? "absent" : "new";
        };
        const auto expectOthers = [&] {
            ExpectOthers();
            for (int search = 0; search < Progress::kSearches; ++search) {
                if (search == writing) continue;
                EXPECT_TRUE(progress.Stands(search, progress.standing[search])) << search;
            }
        };
        expectOthers();
        const std::string before = state();
        const std::vector<WText> finished = FinishCutSaves();
        if (!finished.empty()) {
            EXPECT_EQ(std::vector<WText>{Progress::NameOf(writing)}, finished);
            EXPECT_EQ("new", state());
        } else {
            EXPECT_NE("cut short", before) << "in silence";
            EXPECT_EQ(before == "absent" || before == "new" ? "old" : before, state());
        }
        expectOthers();
        ++found[finished.empty() ? before : before + ", finished"];
    }
    for (const auto& [state, count] : found) {
        if (given != nullptr) std::printf("%s: %d\n", state.c_str(), count);
    }
    EXPECT_LT(0, found["old, finished"] + found["cut short, finished"]) << "no kill in mid-save";
    munmap(shared, sizeof(Progress));
}

TEST_F(SavedSearchFaults, TwoWritersAndAReader) {
    std::vector<pid_t> writers;
    for (const StoredSearch* search : {&old_, &new_}) {
        writers.push_back(Start([search] {
            for (int i = 0; i < 6; ++i) {
                if (Save(kName, *search) != eStoredWrite::Whole) return 1;
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

// The dialogs on a full disk: what a person asked for is told, the rest goes on in silence.
class DialogsOnAFullDisk : public FindWindow {
protected:
    DialogsOnAFullDisk() {
        RemoveAll();
        PutOthers();
    }
    ~DialogsOnAFullDisk() override { RemoveAll(); }
    void Through(int button, std::function<void(HWND)> step) {
        Script({[this, step = std::move(step)] { step(Dialog()->nestedDialog); }});
        Press(button);
        EndScript();
    }
    static void Command(HWND dialog, int id) {
        SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
    }
};

TEST_F(DialogsOnAFullDisk, TellWhatWasAskedFor) {
    Tree({"one.hpa", "two.hpa"});
    Open(eAccessFindFiles);
    PutLookIn("");
    Add("Title", "contains", "shaft");
    const Names rows = Rows();
    {
        const FullDisk full(0);
        Through(IDC_SAVE_SEARCH, [this](HWND dialog) {
            desk_.Expect("The search mine could not be saved.");
            SetDlgItemTextW(dialog, IDC_SEARCH_NAME, TEXT("mine"));
            Command(dialog, IDOK);
        });
        Through(IDC_OPEN_SEARCH, [this](HWND dialog) {
            desk_.Expect("Delete the saved search before", IDYES);
            desk_.Expect("The saved search before could not be deleted.");
            const HWND list = GetDlgItem(dialog, IDC_SEARCH_LIST);
            SendMessageW(list, LB_SETCURSEL, 0, 0);
            Command(dialog, IDC_DELETE_SEARCH);
            EXPECT_EQ(3, SendMessageW(list, LB_GETCOUNT, 0, 0));
            Command(dialog, IDCANCEL);
        });
        EXPECT_EQ(rows, Rows());
        // The place to look in can't be remembered.
        Press(IDOK);
        PumpUntil([this] { return SearchesEnded(); });
        EXPECT_EQ(2u, tap_.files);
        // Nor that of the window.
        Press(IDCANCEL);
        EXPECT_FALSE(IsWindow(window_));
    }
    ExpectOthers();
    EXPECT_TRUE(FinishCutSaves().empty());
    EXPECT_FALSE(HasSavedSearch(TEXT("mine")));
}

}  // namespace
