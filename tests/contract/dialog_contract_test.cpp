// Dialogs: their making and end, the focus, the keyboard, and the messages of the thread.
#include <gtest/gtest.h>

#include "tests/contract/dialog_support.h"

namespace {

TemplateBuilder SomeControls(DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU) {
    TemplateBuilder builder(style);
    builder.Add(TEXT("Static"), TEXT("&Name:"), kShown, 9)
        .Add(TEXT("Edit"), TEXT("bolt"), kTab | WS_DISABLED | ES_AUTOHSCROLL, 10)
        .Add(TEXT("Edit"), TEXT("nut"), kTab | ES_AUTOHSCROLL, 11)
        .Add(TEXT("Button"), TEXT("&Find && go"), kTab | BS_DEFPUSHBUTTON, 12)
        .Add(TEXT("Button"), TEXT("&Stop"), kTab, 13)
        .Add(TEXT("Button"), TEXT("Match &case"), kTab | BS_AUTOCHECKBOX, 14)
        .Add(TEXT("Button"), TEXT("&And"), kTab | WS_GROUP | BS_AUTORADIOBUTTON, 15)
        .Add(TEXT("Button"), TEXT("&Or"), kShown | BS_AUTORADIOBUTTON, 16)
        .Add(TEXT("Button"), TEXT("&Xor"), kShown | WS_DISABLED | BS_AUTORADIOBUTTON, 17)
        .Add(TEXT("Button"), TEXT("Hidden"), WS_CHILD | WS_TABSTOP | WS_GROUP, 18)
        .Add(TEXT("Button"), TEXT("Cancel"), kTab | WS_GROUP, IDCANCEL);
    return builder;
}

class Dialogs : public DialogTest {
protected:
    HWND Create(TemplateBuilder builder, LPARAM parameter = 0, HWND parent = nullptr) {
        dialog_ = CreateDialogIndirectParamW(nullptr, builder.Get(), parent, RecordingProcedure,
                                             parameter);
        return dialog_;
    }
    INT_PTR Run(TemplateBuilder builder, HWND owner = nullptr) {
        return DialogBoxIndirectParamW(nullptr, builder.Get(), owner, RecordingProcedure, 7);
    }
};

TEST_F(Dialogs, FocusOfTheFirst) {
    struct Row {
        const char* label;
        std::function<void(HWND)> onInit;
        INT_PTR answer;
        int focus;
    };
    const Row rows[] = {
        {"given to the first that can take it", nullptr, TRUE, 11},
        {"left alone", nullptr, FALSE, -1},
        {"set by the procedure", [](HWND dialog) { SetFocus(GetDlgItem(dialog, 13)); }, FALSE, 13},
        {"set by the procedure, and given", [](HWND dialog) { SetFocus(GetDlgItem(dialog, 13)); },
         TRUE, 11},
        {"looked up again when controls change",
         [](HWND dialog) { EnableWindow(GetDlgItem(dialog, 11), FALSE); }, TRUE, 12},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        SetFocus(nullptr);
        Record() = {{}, row.answer, row.onInit, {}};
        ASSERT_NE(nullptr, Create(SomeControls(), 42));
        EXPECT_EQ(0u, Record().Take().find("init(11,42)"));
        EXPECT_EQ(row.focus, FocusId());
        EXPECT_FALSE(IsWindowVisible(dialog_));
        EXPECT_TRUE(DestroyWindow(dialog_));
        EXPECT_NE(std::string::npos, Record().Take().find("destroy"));
    }
}

TEST_F(Dialogs, ThatCannotBeMade) {
    const auto broken = [](DWORD style) {
        TemplateBuilder builder(style);
        builder.Add(TEXT("SrNoClass"), TEXT(""), kShown, 9)
            .Add(TEXT("Static"), TEXT(""), kShown, 10);
        return builder;
    };
    EXPECT_EQ(nullptr, Create(broken(WS_POPUP)));
    EXPECT_EQ(-1, Run(broken(WS_POPUP)));
    EXPECT_EQ(std::string::npos, Record().Take().find("init"));
    ASSERT_NE(nullptr, Create(broken(WS_POPUP | DS_NOFAILCREATE)));
    EXPECT_EQ(nullptr, Item(9));
    EXPECT_NE(nullptr, Item(10));
    EXPECT_EQ(nullptr,
              CreateDialogParamW(nullptr, MAKEINTRESOURCEW(4711), nullptr, RecordingProcedure, 0));
    EXPECT_EQ(-1, DialogBoxParamW(nullptr, MAKEINTRESOURCEW(4711), nullptr, RecordingProcedure, 0));
}

// A window hears of its size when that changes, and of being disabled.
TEST_F(Dialogs, SizeAndStateAreTold) {
    std::string told;
    Record().onMessage = [&told](HWND, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_SIZE) {
            told += std::to_string(LOWORD(lParam)) + "x" + std::to_string(HIWORD(lParam)) + " ";
        } else if (message == WM_ENABLE) {
            told += wParam != 0 ? "on " : "off ";
        }
        return false;
    };
    ASSERT_NE(nullptr, Create(SomeControls()));
    ShowWindow(dialog_, SW_SHOW);
    told.clear();
    RECT outer;
    ASSERT_TRUE(GetWindowRect(dialog_, &outer));
    const int width = static_cast<int>(outer.right - outer.left);
    const int height = static_cast<int>(outer.bottom - outer.top);
    EXPECT_TRUE(SetWindowPos(dialog_, nullptr, 5, 5, 0, 0, SWP_NOSIZE | SWP_NOZORDER));
    EXPECT_EQ("", told) << "moved only";
    EXPECT_TRUE(SetWindowPos(dialog_, nullptr, 0, 0, width + 10, height - 7,
                             SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE));
    RECT inner = {0, 0, 200, 100};  // of the template; what a unit measures depends on the fonts
    ASSERT_TRUE(MapDialogRect(dialog_, &inner));
    EXPECT_EQ(std::to_string(inner.right + 10) + "x" + std::to_string(inner.bottom - 7) + " ",
              std::exchange(told, {}));
    EnableWindow(dialog_, FALSE);
    EnableWindow(dialog_, FALSE);
    EnableWindow(dialog_, TRUE);
    EXPECT_EQ("off on ", told);
}

TEST_F(Dialogs, TextsAndTheNextControl) {
    ASSERT_NE(nullptr, Create(SomeControls()));
    EXPECT_TRUE(SetWindowTextW(dialog_, TEXT("A title")));
    EXPECT_EQ(7, GetWindowTextLengthW(dialog_));
    EXPECT_TRUE(SetWindowTextW(Item(10), TEXT("")));
    EXPECT_EQ(0, GetWindowTextLengthW(Item(10)));
    EXPECT_EQ(Item(12), GetNextDlgTabItem(dialog_, Item(11), FALSE));
    EXPECT_EQ(Item(IDCANCEL), GetNextDlgTabItem(dialog_, Item(11), TRUE)) << "10 is disabled";
    EXPECT_EQ(Item(16), GetNextDlgGroupItem(dialog_, Item(15), FALSE));
    EXPECT_EQ(Item(15), GetNextDlgGroupItem(dialog_, Item(16), FALSE)) << "17 is disabled";
    SetFocus(Item(11));
    SendMessageW(dialog_, WM_NEXTDLGCTL, 0, FALSE);
    EXPECT_EQ(12, FocusId());
    SendMessageW(dialog_, WM_NEXTDLGCTL, 1, FALSE);
    EXPECT_EQ(11, FocusId());
    SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(14)), TRUE);
    EXPECT_EQ(14, FocusId());
}

TEST_F(Dialogs, PlacesInPixels) {
    ASSERT_NE(nullptr, Create(SomeControls()));
    RECT rect = {4, 8, 40, 80};
    EXPECT_TRUE(MapDialogRect(dialog_, &rect));
    EXPECT_EQ((std::vector<LONG>{7, 16, 70, 160}),
              (std::vector<LONG>{rect.left, rect.top, rect.right, rect.bottom}));
    ASSERT_TRUE(GetClientRect(dialog_, &rect));
    EXPECT_EQ((std::vector<LONG>{0, 0, 350, 200}),
              (std::vector<LONG>{rect.left, rect.top, rect.right, rect.bottom}));
    ASSERT_TRUE(GetClientRect(Item(12), &rect));
    EXPECT_EQ((std::vector<LONG>{0, 0, 88, 80}),
              (std::vector<LONG>{rect.left, rect.top, rect.right, rect.bottom}));
    const HWND plain = std::exchange(dialog_, nullptr);
    ASSERT_NE(nullptr, Create(SomeControls(WS_POPUP | DS_SETFONT)));
    rect = {4, 8, 40, 80};
    EXPECT_TRUE(MapDialogRect(dialog_, &rect));
    // The height of the font differs by a pixel with the fonts that a machine has.
    EXPECT_EQ(60, rect.right);
    EXPECT_NEAR(130, rect.bottom, 10);
    DestroyWindow(std::exchange(dialog_, plain));

    EXPECT_TRUE(MoveWindow(Item(12), 5, 6, 70, 30, FALSE));
    EXPECT_TRUE(
        SetWindowPos(Item(12), nullptr, 1, 1, 9, 9, SWP_NOZORDER | SWP_NOMOVE | SWP_NOSIZE));
    ASSERT_TRUE(GetClientRect(Item(12), &rect));
    EXPECT_EQ(70, rect.right);
    EXPECT_TRUE(SetWindowPos(Item(12), nullptr, 1, 1, 90, 20, SWP_NOZORDER | SWP_NOMOVE));
    ASSERT_TRUE(GetClientRect(Item(12), &rect));
    EXPECT_EQ(90, rect.right);
}

TEST_F(Dialogs, Numbers) {
    ASSERT_NE(nullptr, Create(SomeControls()));
    EXPECT_EQ(0, SetWindowLongPtrW(dialog_, DWLP_USER, 5));
    EXPECT_EQ(5, GetWindowLongPtrW(dialog_, DWLP_USER));
    EXPECT_EQ(0, SetWindowLongPtrW(dialog_, GWLP_USERDATA, 6));
    EXPECT_EQ(6, GetWindowLongPtrW(dialog_, GWLP_USERDATA));
    EXPECT_EQ(12, GetWindowLongPtrW(Item(12), GWLP_ID));
    EXPECT_EQ(reinterpret_cast<LONG_PTR>(RecordingProcedure),
              GetWindowLongPtrW(dialog_, DWLP_DLGPROC));
    EXPECT_TRUE(SetWindowContextHelpId(Item(12), 99));
    EXPECT_EQ(99u, GetWindowContextHelpId(Item(12)));
    EXPECT_EQ(0u, GetWindowContextHelpId(Item(13)));
    EXPECT_EQ(dialog_, GetParent(Item(12)));

    // The result of a message is the one set, when the procedure says so.
    bool handled = true;
    Record().onMessage = [&](HWND dialog, UINT message, WPARAM, LPARAM) {
        if (message == WM_APP) SetWindowLongPtrW(dialog, DWLP_MSGRESULT, 77);
        return message == WM_APP && handled;
    };
    EXPECT_EQ(77, SendMessageW(dialog_, WM_APP, 0, 0));
    handled = false;
    EXPECT_EQ(0, SendMessageW(dialog_, WM_APP, 0, 0));
    EXPECT_EQ(MAKELONG(12, DC_HASDEFID),
              static_cast<ULONG_PTR>(SendMessageW(dialog_, DM_GETDEFID, 0, 0)));
    SendMessageW(dialog_, DM_SETDEFID, 13, 0);
    EXPECT_EQ(MAKELONG(13, DC_HASDEFID),
              static_cast<ULONG_PTR>(SendMessageW(dialog_, DM_GETDEFID, 0, 0)));
    EXPECT_EQ(DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON, Send(12, WM_GETDLGCODE));
    EXPECT_EQ(DLGC_BUTTON | DLGC_DEFPUSHBUTTON, Send(13, WM_GETDLGCODE));
}

// The first number is the focus before the key, the last the one behind it.
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
        {"tab from a button", 12, VK_TAB, 13, ""},
        {"tab passes what can't be reached", 15, VK_TAB, IDCANCEL, ""},
        {"tab at the end", IDCANCEL, VK_TAB, 11, "11:256"},
        {"return in a field", 11, VK_RETURN, 11, "12:0"},
        {"return on another button", 13, VK_RETURN, 13, "12:0"},
        {"escape", 11, VK_ESCAPE, 11, "2:0"},
        {"arrow between radio buttons", 15, VK_DOWN, 16, "16:0"},
        {"arrow round the group", 16, VK_RIGHT, 15, "15:0"},
        {"arrow in a field stays", 11, VK_DOWN, 11, ""},
        {"another key", 12, VK_HOME, 12, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        TemplateBuilder builder = SomeControls();
        Show(builder);
        SetFocus(Item(12));
        Record().Take();
        SetFocus(Item(row.from));
        Record().Take();
        PostMessageW(GetFocus(), WM_KEYDOWN, row.key, 0);
        Drain();
        EXPECT_EQ(row.told, Record().Take());
        EXPECT_EQ(row.to, FocusId());
        DestroyWindow(dialog_);
    }
}

TEST_F(Dialogs, AccessKeys) {
    struct Row {
        const char* label;
        WCHAR letter;
        int to;
        std::string told;
    };
    const Row rows[] = {
        {"a label stands for what follows", 'n', 11, "11:256"},
        {"a push button", 's', 13, "13:0"},
        {"upper case", 'S', 13, "13:0"},
        {"a check box", 'c', 14, "14:0"},
        {"a radio button", 'o', 16, "16:0"},
        {"a disabled one", 'x', IDCANCEL, ""},
        {"nobody's", 'q', IDCANCEL, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        TemplateBuilder builder = SomeControls();
        Show(builder);
        SetFocus(Item(IDCANCEL));
        Record().Take();
        PostMessageW(GetFocus(), WM_SYSCHAR, row.letter, 0x20000000);
        Drain();
        EXPECT_EQ(row.told, Record().Take());
        EXPECT_EQ(row.to, FocusId());
        DestroyWindow(dialog_);
    }
}

TEST_F(Dialogs, ModalFromInitToEnd) {
    const HWND owner = CreateWindowExW(0, TEXT("Static"), nullptr, WS_POPUP, 0, 0, 9, 9, nullptr,
                                       nullptr, nullptr, nullptr);
    Record().onInit = [&](HWND dialog) {
        dialog_ = dialog;
        EXPECT_FALSE(IsWindowEnabled(owner));
        PostMessageW(dialog, WM_APP, 1, 0);
        PostMessageW(dialog, WM_CLOSE, 0, 0);
    };
    Record().onMessage = [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL) {
            // Not shown yet: something has been waiting since the beginning.
            EXPECT_FALSE(IsWindowVisible(dialog));
            EXPECT_TRUE(EndDialog(dialog, 55));
            EXPECT_TRUE(IsWindow(dialog));
            return true;
        }
        return false;
    };
    EXPECT_EQ(55, Run(SomeControls(), owner));
    EXPECT_FALSE(IsWindow(dialog_));
    EXPECT_TRUE(IsWindowEnabled(owner));
    const std::string told = Record().Take();
    EXPECT_EQ(0u, told.find("init(11,7)")) << told;
    EXPECT_NE(std::string::npos, told.find("app1 2:0")) << told;
    EXPECT_EQ(told.size() - 7, told.rfind("destroy")) << told;
    DestroyWindow(owner);
}

TEST_F(Dialogs, EndedBeforeItIsShown) {
    Record().onInit = [](HWND dialog) { EXPECT_TRUE(EndDialog(dialog, 3)); };
    EXPECT_EQ(3, Run(SomeControls()));
}

TEST_F(Dialogs, TimersRunInAModalDialog) {
    Record().onInit = [](HWND dialog) {
        EXPECT_EQ(5u, SetTimer(dialog, 5, 10, nullptr));
        EXPECT_EQ(6u, SetTimer(dialog, 6, 10, nullptr));
        EXPECT_TRUE(KillTimer(dialog, 6));
        EXPECT_FALSE(KillTimer(dialog, 6));
    };
    int ticks = 0;
    Record().onMessage = [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_TIMER) {
            EXPECT_EQ(5u, wParam);
            // On a slow machine a tick may come before the dialog is shown.
            if (++ticks >= 3 && IsWindowVisible(dialog)) EndDialog(dialog, 3);
        }
        return false;
    };
    EXPECT_EQ(3, Run(SomeControls()));
    EXPECT_LE(3, ticks);
}

int calledBack = 0;
void CALLBACK CallBack(HWND, UINT, UINT_PTR, DWORD) {
    ++calledBack;
}

TEST_F(Dialogs, TimerWithACallback) {
    const UINT_PTR id = SetTimer(nullptr, 0, 10, CallBack);
    ASSERT_NE(0u, id);
    calledBack = 0;
    MSG message;
    while (calledBack < 2 && GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    EXPECT_TRUE(KillTimer(nullptr, id));
    EXPECT_EQ(2, calledBack);
}

TEST_F(Dialogs, QueueOrderAndFilters) {
    TemplateBuilder builder = SomeControls();
    Show(builder);
    PostQuitMessage(9);
    PostMessageW(dialog_, WM_APP, 1, 0);
    PostMessageW(Item(12), WM_APP + 1, 2, 0);
    PostMessageW(nullptr, WM_APP + 2, 3, 0);
    MSG message = Poison<MSG>();
    EXPECT_TRUE(PeekMessageW(&message, dialog_, WM_APP + 1, WM_APP + 1, PM_REMOVE));
    EXPECT_EQ(2u, message.wParam);
    EXPECT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(1u, message.wParam);
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
    SetLastError(kPoisonError);
    EXPECT_FALSE(PostMessageW(gone, WM_APP, 1, 0));
    EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, GetLastError());
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
}

// Where a wait could never end it fails, on the side that has this gap; the other would wait.
TEST_F(Dialogs, NothingToWaitFor) {
    if (!GapApplies(eGap::native)) GTEST_SKIP() << "waits for ever, as it should";
    MSG message;
    SetLastError(kPoisonError);
    EXPECT_EQ(-1, GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(DWORD{ERROR_NO_MORE_ITEMS}, GetLastError());
    EXPECT_EQ(-1, Run(SomeControls()));
}

std::string seenByHooks;

LRESULT Seen(const char* who, int code, WPARAM wParam, LPARAM lParam) {
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    if (code == HC_ACTION && message->message == WM_APP) {
        seenByHooks += who + std::to_string(wParam) + " ";
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}
LRESULT CALLBACK FirstHook(int code, WPARAM wParam, LPARAM lParam) {
    return Seen("first", code, wParam, lParam);
}

TEST_F(Dialogs, HookSeesWhatTheQueueGives) {
    const HHOOK first = SetWindowsHookExW(WH_GETMESSAGE, FirstHook, nullptr, GetCurrentThreadId());
    ASSERT_NE(nullptr, first);
    seenByHooks.clear();
    PostMessageW(nullptr, WM_APP, 1, 0);
    MSG message;
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_NOREMOVE));
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
    EXPECT_EQ("first0 first1 ", seenByHooks);
    EXPECT_TRUE(UnhookWindowsHookEx(first));
    PostMessageW(nullptr, WM_APP, 1, 0);
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
    EXPECT_EQ("first0 first1 ", seenByHooks);
    SetLastError(kPoisonError);
    EXPECT_FALSE(UnhookWindowsHookEx(first));
    EXPECT_EQ(DWORD{ERROR_INVALID_HOOK_HANDLE}, GetLastError());
}

TEST_F(Dialogs, ShowingAndFocus) {
    TemplateBuilder builder = SomeControls();
    Show(builder);
    EXPECT_TRUE(IsWindowVisible(Item(12)));
    EXPECT_FALSE(IsWindowVisible(Item(18)));
    SetFocus(Item(12));
    EXPECT_EQ(Item(12), SetFocus(Item(13)));
    EXPECT_EQ(nullptr, SetFocus(Item(10)));  // disabled
    EXPECT_EQ(13, FocusId());
    EXPECT_TRUE(ShowWindow(Item(12), SW_HIDE));
    EXPECT_FALSE(ShowWindow(Item(12), SW_SHOW));
    EnableWindow(Item(13), FALSE);
    EXPECT_EQ(nullptr, GetFocus());
    ShowWindow(dialog_, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(Item(12)));
    for (const HWND gone : {reinterpret_cast<HWND>(static_cast<INT_PTR>(0x7FFE))}) {
        EXPECT_FALSE(IsWindowVisible(gone));
        EXPECT_FALSE(ShowWindow(gone, SW_SHOW));
        EXPECT_EQ(nullptr, SetFocus(gone));
        EXPECT_FALSE(EndDialog(gone, 1));
        EXPECT_FALSE(MoveWindow(gone, 0, 0, 1, 1, FALSE));
        EXPECT_EQ(0, GetWindowLongPtrW(gone, DWLP_USER));
    }
}

}  // namespace
