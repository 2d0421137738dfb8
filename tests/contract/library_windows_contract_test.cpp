// What a resource library holds for windows: icons and dialogs.
#include <gtest/gtest.h>

#include "tests/contract/dialog_support.h"

namespace {

constexpr int kIcon = 1;
constexpr int kNoIcon = 99;

class LibraryTest : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        WCHAR path[1024];
        GetModuleFileNameW(nullptr, path, 1024);
        *PathFindFileNameW(path) = 0;
        library_ = LoadLibraryExW((WText(path) + TEXT("TestRes.dll")).c_str(), nullptr,
                                  DONT_RESOLVE_DLL_REFERENCES);
        ASSERT_NE(nullptr, library_);
    }
    void TearDown() override {
        DialogTest::TearDown();
        FreeLibrary(library_);
    }
    HICON Icon(int id, int width, int height, UINT flags) const {
        return static_cast<HICON>(LoadImageW(library_, MAKEINTRESOURCEW(static_cast<WORD>(id)),
                                             IMAGE_ICON, width, height, flags));
    }

    HMODULE library_ = nullptr;
};

TEST_F(LibraryTest, Icons) {
    const int small = GetSystemMetrics(SM_CXSMICON);
    const HICON icons[] = {Icon(kIcon, 0, 0, LR_DEFAULTSIZE),
                           Icon(kIcon, small, GetSystemMetrics(SM_CYSMICON), 0),
                           Icon(kIcon, 0, 0, LR_DEFAULTSIZE)};
    for (const HICON icon : icons)
        EXPECT_NE(nullptr, icon);
    EXPECT_NE(icons[0], icons[2]);
    for (const HICON icon : icons) {
        EXPECT_TRUE(DestroyIcon(icon));
        SetLastError(kPoisonError);
        EXPECT_FALSE(DestroyIcon(icon));
        KNOWN_GAP(eGap::windows, GetLastError() == ERROR_INVALID_CURSOR_HANDLE);
    }
}

TEST_F(LibraryTest, IconsThatAreNotThere) {
    struct Row {
        const char* label;
        HMODULE module;
        int id;
        DWORD error;
    };
    const Row rows[] = {
        {"no such number", library_, kNoIcon, ERROR_RESOURCE_NAME_NOT_FOUND},
        {"a number of another type", library_, 2, ERROR_RESOURCE_NAME_NOT_FOUND},
        {"no library", nullptr, kIcon, ERROR_RESOURCE_DATA_NOT_FOUND},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        SetLastError(kPoisonError);
        EXPECT_EQ(nullptr, LoadImageW(row.module, MAKEINTRESOURCEW(static_cast<WORD>(row.id)),
                                      IMAGE_ICON, 0, 0, LR_DEFAULTSIZE));
        const DWORD error = GetLastError();
        KNOWN_GAP(eGap::windows, error == row.error) << error;
    }
    // Cursors and shared icons are asked for by nobody.
    SetLastError(kPoisonError);
    const HANDLE shared =
        LoadImageW(library_, MAKEINTRESOURCEW(kIcon), IMAGE_ICON, 0, 0, 0x8000 | LR_DEFAULTSIZE);
    KNOWN_GAP(eGap::native, shared != nullptr);
}

TEST_F(LibraryTest, IconsOnWindows) {
    Show(TemplateBuilder()
             .Add(TEXT("Button"), TEXT("Browse"), kTab | BS_ICON, 10)
             .Add(TEXT("Button"), TEXT("Find"), kTab, 11));
    const HICON one = Icon(kIcon, 0, 0, LR_DEFAULTSIZE);
    const HICON two = Icon(kIcon, 0, 0, LR_DEFAULTSIZE);
    const auto number = [](HICON icon) { return reinterpret_cast<LRESULT>(icon); };
    struct Step {
        UINT set;
        UINT get;
        WPARAM kind;
        HWND window;
    };
    const Step steps[] = {{BM_SETIMAGE, BM_GETIMAGE, IMAGE_ICON, Item(10)},
                          {WM_SETICON, WM_GETICON, ICON_SMALL, dialog_},
                          {WM_SETICON, WM_GETICON, ICON_BIG, dialog_}};
    for (const Step& step : steps) {
        SCOPED_TRACE(step.set * 10 + step.kind);
        const auto set = [&](HICON icon) {
            return SendMessageW(step.window, step.set, step.kind, reinterpret_cast<LPARAM>(icon));
        };
        EXPECT_EQ(0, SendMessageW(step.window, step.get, step.kind, 0));
        EXPECT_EQ(0, set(one));
        EXPECT_EQ(number(one), SendMessageW(step.window, step.get, step.kind, 0));
        EXPECT_EQ(number(one), set(two));
        EXPECT_EQ(number(two), set(nullptr));
        EXPECT_EQ(0, SendMessageW(step.window, step.get, step.kind, 0));
    }
    // A button of text takes none.
    EXPECT_EQ(0, Send(11, BM_SETIMAGE, IMAGE_ICON, number(one)));
    EXPECT_EQ(0, Send(11, BM_GETIMAGE, IMAGE_ICON));
    EXPECT_TRUE(DestroyIcon(one));
    EXPECT_TRUE(DestroyIcon(two));
}

TEST_F(LibraryTest, DialogFromTheLibrary) {
    dialog_ = CreateDialogParamW(library_, MAKEINTRESOURCEW(100), nullptr, RecordingProcedure, 3);
    ASSERT_NE(nullptr, dialog_);
    EXPECT_EQ("init(11,3) 11:256", Record().Take());
    WCHAR title[32] = {};
    GetWindowTextW(dialog_, title, 32);
    EXPECT_EQ(WTextView(TEXT("From the library")), WTextView(title));
    EXPECT_EQ(TEXT("&Name:"), TextOf(10));
    KNOWN_GAP(eGap::windows, GetWindowContextHelpId(Item(IDOK)) == 4711);
    EXPECT_EQ(MAKELONG(IDOK, DC_HASDEFID),
              static_cast<ULONG_PTR>(SendMessageW(dialog_, DM_GETDEFID, 0, 0)));
    WCHAR text[8] = {};
    EXPECT_EQ(5, LoadStringW(library_, 5, text, 8));

    Record().onInit = [](HWND dialog) { EndDialog(dialog, 9); };
    const auto run = [this](WORD id) {
        return DialogBoxParamW(library_, MAKEINTRESOURCEW(id), nullptr, RecordingProcedure, 3);
    };
    EXPECT_EQ(9, run(100));
    struct Row {
        const char* label;
        WORD id;
        DWORD error;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {"no such dialog", 999, ERROR_RESOURCE_NAME_NOT_FOUND},
        {"a number of another type", 2, ERROR_RESOURCE_NAME_NOT_FOUND},
        {"a control of no known class", 101, ERROR_CANNOT_FIND_WND_CLASS, eGap::windows},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        Record().Take();
        SetLastError(kPoisonError);
        EXPECT_EQ(nullptr, CreateDialogParamW(library_, MAKEINTRESOURCEW(row.id), nullptr,
                                              RecordingProcedure, 3));
        const DWORD error = GetLastError();
        KNOWN_GAP(row.gap, error == row.error) << error;
        EXPECT_EQ(-1, run(row.id));
        EXPECT_EQ(std::string::npos, Record().Take().find("init"));
    }
}

TEST(SystemMetrics, Sizes) {
    struct Row {
        const char* label;
        int index;
        int wanted;  // 0: any size will do
    };
    const Row rows[] = {
        {"screen width", SM_CXSCREEN, 0}, {"screen height", SM_CYSCREEN, 0},
        {"scroll bar", SM_CXVSCROLL, 0},  {"edge", SM_CXEDGE, 2},
        {"edge down", SM_CYEDGE, 2},      {"border", SM_CXBORDER, 1},
        {"icon", SM_CXICON, 32},          {"icon down", SM_CYICON, 32},
        {"small icon", SM_CXSMICON, 16},  {"small icon down", SM_CYSMICON, 16},
    };
    for (const Row& row : rows) {
        const int size = GetSystemMetrics(row.index);
        EXPECT_TRUE(row.wanted != 0 ? size == row.wanted : size > 0) << row.label << ": " << size;
    }
    EXPECT_EQ(0, GetSystemMetrics(9999));
    constexpr int kCursorWidth = 13;
    KNOWN_GAP(eGap::native, GetSystemMetrics(kCursorWidth) > 0);
}

}  // namespace
