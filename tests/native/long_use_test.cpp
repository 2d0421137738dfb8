// What a day of use leaves: nothing. SEARCHES says how many; the state behind the first 100 is that
// behind all of them.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>
#include <fstream>

#include "dialog/saved_search_commands.h"
#include "module/module_state.h"
#include "tests/unit/find_window_fixture.h"
#include "tests/unit/module_fixture.h"
#include "tests/unit/stored_searches.h"

namespace {

constexpr WPARAM kFoundTimer = 49650;

std::size_t OpenFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

struct Held {
    std::size_t bytes = mallinfo2().uordblks;
    std::size_t files = OpenFiles();
    LONG objects = objectCount;
    int windows = CountLiveWindows();
    int drawings = CountDrawingObjects();
    int handles = CountOpenHandles();
};

void ExpectSame(const Held& early, const Held& late) {
    // Less than an object a search.
    constexpr std::size_t kSlack = 4096;
    EXPECT_GE(early.bytes + kSlack, late.bytes);
    EXPECT_EQ(early.files, late.files);
    EXPECT_EQ(early.objects, late.objects);
    EXPECT_EQ(early.windows, late.windows);
    EXPECT_EQ(early.drawings, late.drawings);
    EXPECT_EQ(early.handles, late.handles);
    std::printf("%zu and %zu bytes, %zu and %zu files\n", early.bytes, late.bytes, early.files,
                late.files);
}

TEST_F(ModuleTest, ManySearchesLeaveNothing) {
    const char* asked = std::getenv("SEARCHES");
    const int searches = asked != nullptr ? std::atoi(asked) : 300;
    const WText lookIn = AbsoluteWidePath(folder_.native());
    std::optional<Held> early;
    for (int search = 1; search <= searches && !HasFailure(); ++search) {
        SRxShellExt* const extension = MakeExtension();
        CMINVOKECOMMANDINFO info{};
        info.lpVerb = "find";
        ASSERT_EQ(0, extension->InvokeCommand(&info));
        const HWND dialog = Module().dialogWindow(extension);
        SetDlgItemTextW(dialog, IDC_PATH_LIST, lookIn.c_str());
        Command(dialog, IDOK);
        const HWND found = ShownDialogWith(IDC_FOUND_LIST);
        ASSERT_NE(nullptr, found);
        SendMessageW(found, WM_TIMER, kFoundTimer, 0);
        EXPECT_EQ(2, SendDlgItemMessageW(found, IDC_FOUND_LIST, LVM_GETITEMCOUNT, 0, 0));
        // Closed in each way in turn: found dialog first, find dialog first, by its owner's call.
        if (search % 3 == 0) Command(found, IDCANCEL);
        if (search % 3 != 1) Command(dialog, IDCANCEL);
        Module().closeDialog(extension);
        EXPECT_EQ(0u, extension->Release());
        if (search == 100) early.emplace();
    }
    ASSERT_TRUE(early);
    ExpectSame(*early, Held());
}

class LongUse : public FindWindow {};

// A store as it has grown in years, written as one file: natively each key that closes is a file
// written anew, which would make most of a minute of it.
TEST_F(LongUse, AHundredSearchesOfFiftyCriteria) {
    StoredSearch search;
    search.environment = eAccessShellWindow;
    for (LONG i = 0; i < 50; ++i) {
        StoredCriterion criterion;
        criterion.join = i % 5 == 0 ? JOIN_AND : JOIN_OR;
        criterion.number = 22;
        criterion.category = 1;
        criterion.condition = 21721;
        criterion.value = TEXT("value ") + wtext::FromNumber(i);
        search.criteria.push_back(criterion);
    }
    const std::filesystem::path store = std::getenv("SR_REGISTRY");
    std::filesystem::remove(store);
    ASSERT_EQ(eStoredWrite::Whole, Save(TEXT("search 0"), search));
    std::ifstream in(store, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(in)), {});
    std::string more;
    const std::string key = "SavedSearches\\search 0";
    const std::size_t begin = text.rfind('[', text.find(key));
    for (int i = 1; i < 100; ++i) {
        std::string copy = text.substr(begin, text.rfind("\"ValueID\"") + 30 - begin);
        for (std::size_t at = 0; (at = copy.find(key, at)) != std::string::npos; at += key.size())
            copy.replace(at + key.size() - 1, 1, std::to_string(i));
        more += "\n" + copy + "\n";
    }
    std::ofstream(store, std::ios::binary | std::ios::app) << more;

    EXPECT_EQ(100u, SavedSearchNames().size());
    for (int i = 0; i < 100; ++i) {
        StoredSearch read;
        const WText name = TEXT("search ") + wtext::FromNumber(i);
        EXPECT_EQ(eStoredRead::Whole, ReadSavedSearch(name.c_str(), read));
        EXPECT_EQ(search, read) << i;
    }
    Open(eAccessShellWindow);
    EXPECT_TRUE(ReadSearch(*Dialog(), TEXT("search 99")));
    EXPECT_EQ(50u, Rows().size());
    search.criteria.pop_back();
    EXPECT_EQ(eStoredWrite::Whole, Save(TEXT("search 50"), search));
    StoredSearch read;
    EXPECT_EQ(eStoredRead::Whole, ReadSavedSearch(TEXT("search 50"), read));
    EXPECT_EQ(search, read);
    EXPECT_TRUE(Remove(TEXT("search 7")));
    EXPECT_EQ(99u, SavedSearchNames().size());
    std::filesystem::remove(store);
}

}  // namespace
