// What a day of use leaves: nothing. SEARCHES says how many; the state behind the first 100 is that
// behind all of them.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>

#include "module/module_state.h"
#include "tests/unit/module_fixture.h"

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

}  // namespace
