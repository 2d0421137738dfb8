// Each allocation of the work of the module fails, alone and with all behind it: a whole search,
// saving and opening, each of the entries. What fails is told or answered with a failure; nothing
// is lost in silence or left behind, and nothing hangs. Each round has a process of its own, since
// a warm cache would hide its first allocation. ALLOCATION_STEP=1 tries every one, else a sample.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>

#include "dialog/find_dialog.h"
#include "found/found_dialog.h"
#include "module/module_state.h"
#include "store/saved_search.h"
#include "tests/native/failing_malloc.h"
#include "tests/unit/module_fixture.h"

namespace {

constexpr unsigned kMostSeconds = 20;  // of one round

// Counts what it is told, without memory of its own.
class CountingDesk : public Desk {
public:
    int AnswerMessageBox(const MessageBoxQuestion& question) override {
        ++boxes;
        return (question.type & MB_YESNO) != 0 ? IDYES : IDOK;
    }
    int boxes = 0;
};

class AllocationFaultsTest : public ModuleTest {
protected:
    AllocationFaultsTest() {
        current_ = this;
        timer_ = SetTimer(nullptr, 0, 10, Tick);
    }
    ~AllocationFaultsTest() override {
        KillTimer(nullptr, timer_);
        current_ = nullptr;
    }

    // One piece of work; true when it was done as without a fault.
    using Work = std::function<bool()>;

    struct Alive {
        LONG objects = objectCount;
        int windows = CountLiveWindows();
        int drawings = CountDrawingObjects();
        int handles = CountOpenHandles();
        long blocks = allocationFaults.alive;
    };

    // True when the work left nothing behind.
    bool Try(const Work& work, std::size_t failAt) {
        const DeskScope scope(counting_);
        counting_.boxes = 0;
        const Alive before;
        bool left = false;  // by an exception
        bool done = false;
        alarm(kMostSeconds);
        allocationFaults.made = 0;
        allocationFaults.failAt = failAt;
        allocationFaults.counts = true;
        try {
            done = work();
        } catch (...) {
            left = true;
        }
        allocationFaults.counts = false;
        const bool failed = allocationFaults.made >= failAt;
        alarm(0);
        if (tidy_) tidy_();
        const Alive after;
        EXPECT_FALSE(left) << "an exception left the module, allocation " << failAt;
        EXPECT_TRUE(done || (failed && (counting_.boxes > 0 || answeredFailure_)))
            << "lost in silence, allocation " << failAt;
        EXPECT_EQ(before.objects, after.objects) << "allocation " << failAt;
        EXPECT_EQ(before.windows, after.windows) << "allocation " << failAt;
        EXPECT_EQ(before.drawings, after.drawings) << "allocation " << failAt;
        EXPECT_EQ(before.handles, after.handles) << "allocation " << failAt;
        return after.blocks <= before.blocks;
    }

    // Does a round in a process of its own, in which nothing is warm yet; false when it failed.
    static bool InFreshProcess(const std::function<void()>& round) {
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            round();
            std::fflush(nullptr);
            _exit(HasFailure() ? 1 : 0);
        }
        int status = 0;
        EXPECT_EQ(child, waitpid(child, &status, 0));
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    // `sample`: how many rounds the ordinary run takes.
    void FailEach(std::size_t sample, const Work& work) {
        void* const shared = mmap(nullptr, sizeof(std::size_t), PROT_READ | PROT_WRITE,
                                  MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(MAP_FAILED, shared);
        auto& count = *static_cast<std::size_t*>(shared);
        // The first one writes the registry.
        for (int round = 0; round < 2; ++round) {
            EXPECT_TRUE(InFreshProcess([&] {
                (void)Try(work, 0);
                count = allocationFaults.made;
            }));
        }
        const char* asked = std::getenv("ALLOCATION_STEP");
        const std::size_t step =
            asked != nullptr ? std::strtoul(asked, nullptr, 10) : count / sample + 1;
        for (std::size_t failAt = 1; failAt <= count && !HasFailure(); failAt += step) {
            for (const bool lasts : {false, true}) {
                SCOPED_TRACE(lasts ? "and all behind" : "alone");
                EXPECT_TRUE(InFreshProcess([&] {
                    allocationFaults.lasts = lasts;
                    (void)Try(work, failAt);
                    // Texts, tables and caches come with the first rounds, and a cache may grow
                    // once for one that was interrupted; a leak goes on.
                    (void)Try(work, 0);
                    const bool clean = Try(work, failAt) || Try(work, failAt) || Try(work, failAt);
                    EXPECT_TRUE(clean) << "blocks are left, allocation " << failAt;
                })) << "allocation "
                    << failAt;
            }
        }
        RecordProperty("allocations", static_cast<int>(count));
        munmap(shared, sizeof(std::size_t));
    }

    // The find dialog of an extension inside the application; null where it didn't come to one.
    SRxShellExt* OpenDialog() {
        answeredFailure_ = false;
        void* factory = nullptr;
        if (Module().getClassObject(CLSID_SRxShellExt, IID_IClassFactory, &factory) != S_OK) {
            answeredFailure_ = true;
            return nullptr;
        }
        void* made = nullptr;
        const HRESULT status =
            static_cast<IClassFactory*>(factory)->CreateInstance(nullptr, IID_IContextMenu, &made);
        static_cast<IClassFactory*>(factory)->Release();
        if (FAILED(status)) {
            answeredFailure_ = true;
            return nullptr;
        }
        auto* const extension = static_cast<SRxShellExt*>(static_cast<IContextMenu*>(made));
        CMINVOKECOMMANDINFO info{};
        info.lpVerb = "find";
        if (extension->InvokeCommand(&info) == 0) return extension;
        answeredFailure_ = true;
        Module().closeDialog(extension);
        extension->Release();
        return nullptr;
    }
    static LRESULT Send(HWND dialog, int id, UINT message, WPARAM wParam, const void* lParam) {
        return SendMessageW(GetDlgItem(dialog, id), message, wParam,
                            reinterpret_cast<LPARAM>(lParam));
    }
    static void Choose(HWND dialog, int id, const WCHAR* text) {
        Send(dialog, id, CB_SELECTSTRING, static_cast<WPARAM>(-1), text);
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), CBN_SELCHANGE), 0);
    }
    static void AddCriterion(HWND dialog) {
        Choose(dialog, IDC_PROPERTY_LIST, TEXT("Title"));
        Choose(dialog, IDC_CONDITION_LIST, TEXT("differs from"));
        SetDlgItemTextW(dialog, IDC_VALUE_EDIT, TEXT("none"));
        Command(dialog, IDC_ADD);
    }
    static LRESULT CountCriteria(HWND dialog) {
        return Send(dialog, IDC_CRITERIA_LIST, LB_GETCOUNT, 0, nullptr);
    }
    // Does `act` in a dialog with a second criterion; true when all came about.
    bool WithCriterion(const std::function<bool(HWND)>& act) {
        SRxShellExt* const extension = OpenDialog();
        if (extension == nullptr) return false;
        const HWND dialog = Module().dialogWindow(extension);
        AddCriterion(dialog);
        const bool added = CountCriteria(dialog) == 2;
        const bool done = act(dialog);
        Module().closeDialog(extension);
        extension->Release();
        return added && done;
    }
    // The found dialog of a search that has run, or null.
    HWND Search(HWND dialog) const {
        SetDlgItemTextW(dialog, IDC_PATH_LIST, lookIn_.c_str());
        Command(dialog, IDOK);
        const HWND found = ShownDialogWith(IDC_FOUND_LIST);
        if (found != nullptr) SendMessageW(found, WM_TIMER, 49650, 0);
        return found;
    }
    // Works the dialog of the saved searches that `control` opens.
    void Through(HWND dialog, int control) {
        step_ = eStep::Saved;
        Command(dialog, control);
        step_ = eStep::None;
    }
    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        if (current_->step_ == eStep::Saved) {
            WorkSavedSearches();
        } else if (current_->step_ != eStep::None) {
            WorkFindFiles();
        }
    }
    static void WorkFindFiles() {
        const HWND find = ShownDialogWith(IDC_CRITERIA_LIST);
        const HWND found = ShownDialogWith(IDC_FOUND_LIST);
        eStep& step = current_->step_;
        if (step == eStep::Search && find != nullptr && found == nullptr) {
            SetDlgItemTextW(find, IDC_PATH_LIST, current_->lookIn_.c_str());
            step = eStep::Pick;
            Command(find, IDOK);
            // It is modal: here it has ended, or didn't come to be.
            step = eStep::Close;
        } else if (step == eStep::Pick && found != nullptr &&
                   IsWindowEnabled(GetDlgItem(found, IDOK))) {
            LVITEMW item{};
            item.stateMask = item.state = LVIS_SELECTED;
            Send(found, IDC_FOUND_LIST, LVM_SETITEMSTATE, 0, &item);
            Command(found, IDOK);
            if (IsWindow(found)) Command(found, IDCANCEL);
        } else if (step == eStep::Close && find != nullptr && found == nullptr) {
            Command(find, IDCANCEL);
        }
    }
    static void WorkSavedSearches() {
        const HWND save = ShownDialogWith(IDC_SEARCH_NAME);
        const HWND open = ShownDialogWith(IDC_SEARCH_LIST);
        if (save != nullptr) {
            SetDlgItemTextW(save, IDC_SEARCH_NAME, kName);
            Command(save, IDOK);
            // One that wasn't taken, being told so.
            if (IsWindow(save) && current_->counting_.boxes > 3) Command(save, IDCANCEL);
        } else if (open != nullptr) {
            Send(open, IDC_SEARCH_LIST, LB_SETCURSEL, 0, nullptr);
            Command(open,
                    Send(open, IDC_SEARCH_LIST, LB_GETCOUNT, 0, nullptr) > 0 ? IDOK : IDCANCEL);
        }
    }

    static constexpr const WCHAR* kName = TEXT("faults");
    static inline AllocationFaultsTest* current_ = nullptr;
    CountingDesk counting_;
    std::function<void()> tidy_;  // behind each round
    bool answeredFailure_ = false;
    enum class eStep { None, Saved, Search, Pick, Close };
    eStep step_ = eStep::None;
    UINT_PTR timer_ = 0;
    const WText lookIn_ = AbsoluteWidePath(folder_.native());
};

TEST_F(AllocationFaultsTest, AWholeSearch) {
    FailEach(1000, [this] {
        return WithCriterion([this](HWND dialog) {
            const HWND found = Search(dialog);
            if (found == nullptr) return false;
            const LRESULT rows = Send(found, IDC_FOUND_LIST, LVM_GETITEMCOUNT, 0, nullptr);
            Send(found, IDC_FOUND_LIST, LVM_SORTITEMS, 0,
                 reinterpret_cast<const void*>(CompareRows));
            Command(found, IDOK);
            return rows == 2;
        });
    });
}

TEST_F(AllocationFaultsTest, SavingAndOpening) {
    // The search is there whole, or not there, and so is nothing of it.
    tidy_ = [] {
        (void)FinishCutSaves();
        StoredSearch search;
        const eStoredRead read = ReadSavedSearch(kName, search);
        EXPECT_NE(eStoredRead::Incomplete, read);
        EXPECT_EQ(read == eStoredRead::Whole, !search.criteria.empty());
        std::vector<WText> finished;
        EXPECT_TRUE(DeleteSavedSearch(kName, finished));
        EXPECT_FALSE(HasSavedSearch(kName));
    };
    FailEach(40, [this] {
        return WithCriterion([this](HWND dialog) {
            Through(dialog, IDC_SAVE_SEARCH);
            Command(dialog, IDC_NEW_SEARCH);
            Through(dialog, IDC_OPEN_SEARCH);
            return CountCriteria(dialog) == 2;
        });
    });
}

TEST_F(AllocationFaultsTest, FindFilesWithAPick) {
    FailEach(40, [this] {
        WCHAR name[kPathLength] = {};
        step_ = eStep::Search;
        const bool result = Module().findFiles(nullptr, name, kPathLength, true);
        step_ = eStep::None;
        // Without a name nothing was picked.
        answeredFailure_ = name[0] == 0;
        return result && name[0] != 0;
    });
}

}  // namespace
