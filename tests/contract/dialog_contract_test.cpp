// Dialogs: their making and end, the focus, the default button, and the messages of the thread.
#include <gtest/gtest.h>

#include "tests/contract/dialog_support.h"

namespace {

class Dialogs : public DialogTest {};

TEST_F(Dialogs, FocusOfTheFirst) {
    struct Row {
        const char* label;
        std::function<void(HWND)> onInit;
        INT_PTR answer;
        int focus;
    };
    const auto take = [](HWND dialog) { SetFocus(GetDlgItem(dialog, 13)); };
    const auto change = [](HWND dialog) { EnableWindow(GetDlgItem(dialog, 11), FALSE); };
    const Row rows[] = {
        {"given to the first that can take it", nullptr, TRUE, 11},
        {"left alone", nullptr, FALSE, -1},
        {"set by the procedure", take, FALSE, 13},
        {"looked up again when controls change", change, TRUE, 12},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        SetFocus(nullptr);
        Record() = {{}, row.answer, row.onInit, {}};
        ASSERT_NE(nullptr, Create(kDialog, 42));
        EXPECT_EQ(0u, Record().Take().find("init(11,42)"));
        EXPECT_EQ(row.focus, FocusId());
        EXPECT_FALSE(IsWindowVisible(dialog_));
        EXPECT_TRUE(DestroyWindow(dialog_));
        EXPECT_NE(std::string::npos, Record().Take().find("destroy"));
    }
}

TEST_F(Dialogs, Numbers) {
    constexpr LONG_PTR kButtonType = 0xF;
    Show(kDialog);
    EXPECT_EQ(0, SetWindowLongPtrW(dialog_, DWLP_USER, 5));
    EXPECT_EQ(5, GetWindowLongPtrW(dialog_, DWLP_USER));
    EXPECT_TRUE(SetWindowContextHelpId(Item(13), 99));
    EXPECT_EQ(99u, GetWindowContextHelpId(Item(13)));
    KNOWN_GAP(eGap::windows, GetWindowContextHelpId(Item(12)) == 4711) << "of the template";
    EXPECT_EQ(dialog_, GetParent(Item(12)));
    EXPECT_TRUE(SetWindowTextW(dialog_, TEXT("A title")));
    EXPECT_EQ(7, SendMessageW(dialog_, WM_GETTEXTLENGTH, 0, 0));
    RECT unit = {4, 8, 40, 80};
    EXPECT_TRUE(MapDialogRect(dialog_, &unit));
    EXPECT_EQ(10 * unit.left, unit.right) << "in base units of the font";
    for (const int id : {12, 13}) {
        if (id == 13) SendMessageW(dialog_, DM_SETDEFID, 13, 0);
        for (const int button : {12, 13}) {
            EXPECT_EQ(button == id, (GetWindowLongPtrW(Item(button), GWL_STYLE) & kButtonType) == 1)
                << button << ", with the default " << id;
        }
    }
}

TEST_F(Dialogs, Keys) {
    struct Row {
        const char* label;
        int from;
        WPARAM key;
        int to;
        std::string told;
    };
    const Row rows[] = {
        {"tab", 11, VK_TAB, 12, "11:512"},
        {"tab passes what can't be reached", 13, VK_TAB, IDCANCEL, ""},
        {"tab at the end", IDCANCEL, VK_TAB, 11, "11:256"},
        {"return in a field", 11, VK_RETURN, 11, "12:0"},
        {"return on another button", 13, VK_RETURN, 13, "12:0"},
        {"escape", 11, VK_ESCAPE, 11, "2:0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        Show(kDialog);
        SetFocus(Item(12));
        SetFocus(Item(row.from));
        Record().Take();
        PostMessageW(GetFocus(), WM_KEYDOWN, row.key, 0);
        Drain();
        EXPECT_EQ(row.told, Record().Take());
        EXPECT_EQ(row.to, FocusId());
        DestroyWindow(dialog_);
    }
}

TEST_F(Dialogs, ModalFromInitToEnd) {
    const HWND owner = Create(kDialog);
    Record().Take();
    HWND modal = nullptr;
    Record().onInit = [&](HWND dialog) {
        modal = dialog;
        EXPECT_FALSE(IsWindowEnabled(owner));
        PostMessageW(dialog, WM_APP, 1, 0);
        PostMessageW(dialog, WM_CLOSE, 0, 0);
    };
    Record().onMessage = [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
        if (message != WM_COMMAND || LOWORD(wParam) != IDCANCEL) return false;
        // Not shown yet: something has been waiting since the beginning.
        EXPECT_FALSE(IsWindowVisible(dialog));
        EXPECT_TRUE(EndDialog(dialog, 55));
        EXPECT_TRUE(IsWindow(dialog));
        return true;
    };
    EXPECT_EQ(55, Run(kDialog, owner));
    EXPECT_FALSE(IsWindow(modal));
    EXPECT_TRUE(IsWindowEnabled(owner));
    const std::string told = Record().Take();
    EXPECT_EQ(0u, told.find("init(11,7)")) << told;
    EXPECT_NE(std::string::npos, told.find("app1 2:0")) << told;
    EXPECT_EQ(told.size() - 7, told.rfind("destroy")) << told;
    Record().onInit = [](HWND dialog) { EXPECT_TRUE(EndDialog(dialog, 3)); };
    EXPECT_EQ(3, Run(kDialog)) << "ended before it is shown";
}

TEST_F(Dialogs, QueueOrderAndFilters) {
    Show(kDialog);
    PostQuitMessage(9);
    PostMessageW(dialog_, WM_APP, 1, 0);
    PostMessageW(Item(12), WM_APP + 1, 2, 0);
    PostMessageW(nullptr, WM_APP + 2, 3, 0);
    MSG message = Poison<MSG>();
    EXPECT_TRUE(PeekMessageW(&message, dialog_, WM_APP + 1, WM_APP + 1, PM_REMOVE));
    EXPECT_EQ(2u, message.wParam);
    EXPECT_TRUE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(1u, message.wParam);
    EXPECT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(3u, message.wParam);
    EXPECT_EQ(nullptr, message.hwnd);
    EXPECT_FALSE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(UINT{WM_QUIT}, message.message);
    EXPECT_EQ(9u, message.wParam);
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    // What was posted to a window goes with it.
    const HWND gone = Item(12);
    PostMessageW(gone, WM_APP, 1, 0);
    DestroyWindow(gone);
    EXPECT_FALSE(PostMessageW(gone, WM_APP, 1, 0));
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
}

}  // namespace
