// The controls of the found dialog: where they lie at any size, and how the rows sort and read.
#include "tests/unit/found_dialog_fixture.h"

namespace {

RECT PlaceOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

TEST_F(FoundDialog, LayoutAndRememberedSize) {
    foundWidth = foundHeight = -1;
    const auto client = [this] {
        RECT rect{};
        GetClientRect(Found(), &rect);
        return rect;
    };
    const auto size = [this](int width, int height) {
        SendMessageW(Found(), WM_SIZE, 0,
                     MAKELPARAM(static_cast<WORD>(width), static_cast<WORD>(height)));
    };
    const int buttons[] = {IDOK, IDC_FOUND_STOP, IDC_FOUND_SAVE};
    Search({[&] {
                const RECT find = PlaceOf(dialog_.dialogWindow);
                EXPECT_EQ(find.left + 50, PlaceOf(Found()).left);
                EXPECT_EQ(find.top + 50, PlaceOf(Found()).top);
                const RECT start = client();
                const RECT first = PlaceOf(Control(IDC_FOUND_LIST));
                size(start.right, start.bottom);
                EXPECT_EQ(first.right, PlaceOf(Control(IDC_FOUND_LIST)).right);
                EXPECT_EQ(first.bottom, PlaceOf(Control(IDC_FOUND_LIST)).bottom);
                std::vector<RECT> before;
                for (const int id : buttons)
                    before.push_back(PlaceOf(Control(id)));
                const RECT list = PlaceOf(Control(IDC_FOUND_LIST));
                const RECT status = PlaceOf(Control(IDC_FOUND_STATUS));
                const RECT whole = PlaceOf(Found());
                SetWindowPos(Found(), nullptr, 0, 0, whole.right - whole.left + 100,
                             whole.bottom - whole.top + 30, SWP_NOMOVE | SWP_NOZORDER);
                for (std::size_t i = 0; i < before.size(); ++i) {
                    const RECT now = PlaceOf(Control(buttons[i]));
                    EXPECT_EQ(before[i].left + 100, now.left) << i;
                    EXPECT_EQ(before[i].top + 30, now.top) << i;
                    EXPECT_EQ(before[i].right + 100, now.right) << i;
                }
                const RECT wider = PlaceOf(Control(IDC_FOUND_LIST));
                EXPECT_EQ(list.left, wider.left);
                EXPECT_EQ(list.right + 100, wider.right);
                EXPECT_EQ(list.bottom + 30, wider.bottom);
                // The measures count the frame; and a status bar sets itself to the edge when it
                // changes its size.
                constexpr int kFrame = 8;
                EXPECT_NEAR(PlaceOf(Control(IDC_FOUND_SAVE)).right, wider.right, kFrame);
                EXPECT_NEAR(status.top + 30, PlaceOf(Control(IDC_FOUND_STATUS)).top, kFrame);
                EXPECT_EQ(start.right + 100, foundWidth);
                EXPECT_EQ(start.bottom + 30, foundHeight);
            },
            [&] {
                size(0, 0);
                const RECT none = PlaceOf(Control(IDC_FOUND_LIST));
                EXPECT_EQ(none.left, none.right);
                EXPECT_EQ(none.top, none.bottom);
                EXPECT_EQ(0, foundWidth);
                SendMessageW(Found(), WM_SIZE, SIZE_MINIMIZED, MAKELPARAM(7, 7));
                EXPECT_EQ(0, foundWidth) << "a minimized dialog has no size";
                size(500, 400);
                Close();
            }});
    // The next one takes the client size for its whole size.
    Search({[&] {
        const RECT whole = PlaceOf(Found());
        EXPECT_EQ(500, whole.right - whole.left);
        EXPECT_EQ(400, whole.bottom - whole.top);
        Close();
    }});
    foundWidth = foundHeight = -1;
}

TEST_F(FoundDialog, RowsCompare) {
    const struct {
        const WCHAR* a;
        const WCHAR* b;
        int byName;
        int byFolder;
    } kRows[] = {
        {TEXT("Z:\\a\\x.hpa"), TEXT("Z:\\b\\X.HPA"), 0, -1},
        {TEXT("Z:\\a\\y.hpa"), TEXT("Z:\\A\\x.hpa"), 1, 1},
        {TEXT("Z:\\a\\x"), TEXT("Z:\\a b\\x"), 0, -1},
        {TEXT("Z:\\b"), TEXT("Z:\\a\\a"), 1, -1},
        {TEXT("zz"), TEXT("Z:\\a"), 1, -1},
        {TEXT("Z:\\a\\x-1"), TEXT("Z:\\a\\x1"), -1, -1},
        {TEXT("Z:\\a\\x"), nullptr, 0, 0},
    };
    for (const auto& row : kRows) {
        const auto a = reinterpret_cast<LPARAM>(row.a);
        const auto b = reinterpret_cast<LPARAM>(row.b);
        const std::string label = wtext::ToUtf8(row.a);
        EXPECT_EQ(row.byName, CompareRows(a, b, 0)) << label;
        EXPECT_EQ(-row.byName, CompareRows(b, a, 0)) << label;
        EXPECT_EQ(row.byFolder, CompareRows(a, b, 1)) << label;
        EXPECT_EQ(-row.byFolder, CompareRows(b, a, 1)) << label;
    }
}

TEST_F(FoundDialog, LongPathsAreWhole) {
    const WText folder = TEXT("Z:\\") + WText(300, 'f') + TEXT("\\");
    const WText name = WText(200, 'n') + TEXT(".hpa");
    dialog_.SetModal(false);
    tap_.onFile = [&](SRxFoundList& list) {
        if (std::exchange(acted_, true)) return;
        int at = 0;
        MDxFileNameNode node((folder + name).c_str(), -1, false);
        list.rowsSink.OnHit(list.run, folder.c_str(), name.c_str(), node, at);
    };
    EXPECT_TRUE(Search({[this] { Select({static_cast<int>(Send(LVM_GETITEMCOUNT)) - 1}); },
                        [this] { Press(IDOK); }}));
    ASSERT_NE(nullptr, slot_);
    EXPECT_EQ(wtext::ToUtf8(folder + name), wtext::ToUtf8(slot_->GetFileName()));
    slot_->Release();
}

TEST(FoundRowIndex, OneRowForWhatCountsAsOneFile) {
    const struct {
        const WCHAR* folder;
        const WCHAR* name;
        bool isNew;
        const char* label;
    } kRows[] = {
        {TEXT("Z:\\a\\"), TEXT("A.hpa"), true, "first"},
        {TEXT("Z:\\a\\"), TEXT("A.hpa"), false, "the same"},
        {TEXT("Z:\\A\\"), TEXT("a.HPA"), false, "but for case"},
        {TEXT("Z:\\\uFF41\\"), TEXT("A.hpa"), false, "a folder but for width"},
        {TEXT("Z:\\b\\"), TEXT("A.hpa"), true, "another folder"},
        {TEXT("Z:\\a\\"), TEXT("A1.hpa"), true, "another name"},
        {TEXT("Z:\\b\\"), TEXT("a.hpa"), false, "known from before the other"},
    };
    FoundRowIndex index;
    for (const auto& row : kRows) {
        const WCHAR** place = index.PlaceOf(row.folder, row.name);
        EXPECT_EQ(row.isNew, *place == nullptr) << row.label;
        *place = row.name;
    }
}

}  // namespace
