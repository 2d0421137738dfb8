// The keyboard in a dialog beyond single keys, and hooks in a chain.
#include <gtest/gtest.h>

#include <array>

#include "tests/contract/dialog_support.h"

namespace {

class DialogKeys : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(TemplateBuilder()
                 .Add(TEXT("Static"), TEXT("&Name:"), kShown, 9)
                 .Add(TEXT("Edit"), TEXT("nut"), kTab, 10)
                 .Add(TEXT("Button"), TEXT("&And"), kTab | WS_GROUP | BS_AUTORADIOBUTTON, 11)
                 .Add(TEXT("Button"), TEXT("&Or"), kShown | BS_AUTORADIOBUTTON, 12)
                 .Add(TEXT("Button"), TEXT("&Xor"), kShown | BS_AUTORADIOBUTTON, 13)
                 .Add(TEXT("Button"), TEXT("&Find"), kTab | WS_GROUP | BS_DEFPUSHBUTTON, 14)
                 .Add(TEXT("Button"), TEXT("&Stop"), kTab, 15)
                 .Add(TEXT("Button"), TEXT("Cancel"), kTab, IDCANCEL));
    }
    void TearDown() override {
        HoldShift(false);
        DialogTest::TearDown();
    }
    static void HoldShift(bool held) {
        std::array<BYTE, 256> states = {};
        states[VK_SHIFT] = held ? 0x80 : 0;
        ASSERT_TRUE(SetKeyboardState(states.data()));
        EXPECT_EQ(held, GetKeyState(VK_SHIFT) < 0);
    }
};

// Keys one behind the other, each with the focus that it leads to.
TEST_F(DialogKeys, InSequence) {
    struct Step {
        const char* label;
        UINT message;
        WPARAM key;
        bool shift;
        int focus;
        const char* told;
    };
    const Step steps[] = {
        {"back from the first", WM_KEYDOWN, VK_TAB, true, IDCANCEL, "10:512"},
        {"back to a button", WM_KEYDOWN, VK_TAB, true, 15, ""},
        {"return on it", WM_KEYDOWN, VK_RETURN, false, 15, "15:0"},
        {"back to the default button", WM_KEYDOWN, VK_TAB, true, 14, ""},
        {"return on it", WM_KEYDOWN, VK_RETURN, false, 14, "14:0"},
        {"back to the group", WM_KEYDOWN, VK_TAB, true, 11, ""},
        {"return in the group", WM_KEYDOWN, VK_RETURN, false, 11, "14:0"},
        {"left, round the group", WM_KEYDOWN, VK_LEFT, false, 13, "13:0"},
        {"up", WM_KEYDOWN, VK_UP, false, 12, "12:0"},
        {"on from the one that is checked", WM_KEYDOWN, VK_TAB, false, 14, ""},
        {"back to the one that is checked", WM_KEYDOWN, VK_TAB, true, 12, ""},
        {"the field by its label", WM_SYSCHAR, 'n', false, 10, "10:256"},
        {"escape", WM_KEYDOWN, VK_ESCAPE, false, 10, "2:0"},
    };
    ASSERT_EQ(10, FocusId());
    for (const Step& step : steps) {
        SCOPED_TRACE(step.label);
        HoldShift(step.shift);
        PostMessageW(GetFocus(), step.message, step.key, step.message == WM_SYSCHAR ? 1 << 29 : 0);
        Drain();
        EXPECT_EQ(step.told, Record().Take());
        EXPECT_EQ(step.focus, FocusId());
    }
    EXPECT_EQ(BST_CHECKED, static_cast<WPARAM>(Send(12, BM_GETCHECK)));
}

std::string seen;
std::array<HHOOK, 3> hooks = {};
int ending = -1;   // the hook that is ended, by the middle one
int keeping = -1;  // the hook that doesn't hand on

template <int kNumber>
LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam) {
    const bool isOurs =
        code == HC_ACTION && reinterpret_cast<const MSG*>(lParam)->message == WM_APP;
    if (isOurs) seen += static_cast<char>('a' + kNumber);
    if (isOurs && kNumber == 1 && ending >= 0) {
        EXPECT_TRUE(UnhookWindowsHookEx(hooks[static_cast<std::size_t>(ending)]));
        hooks[static_cast<std::size_t>(ending)] = nullptr;
        ending = -1;
    }
    return isOurs && keeping == kNumber ? 0 : CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST(Hooks, Chain) {
    struct Row {
        const char* label;
        int ended;  // beforehand
        int ending;
        int keeping;
        const char* seen;  // of two messages
    };
    const Row rows[] = {
        {"the newest comes first", -1, -1, -1, "cba cba"},
        {"the middle one is gone", 1, -1, -1, "ca ca"},
        {"the newest is gone", 2, -1, -1, "ba ba"},
        {"one that ends itself", -1, 1, -1, "cba ca"},
        {"one that ends the next", -1, 0, -1, "cb cb"},
        {"one that ends the one before", -1, 2, -1, "cba ba"},
        {"one that keeps it", -1, -1, 1, "cb cb"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        constexpr HOOKPROC kProcedures[] = {Hook<0>, Hook<1>, Hook<2>};
        for (std::size_t i = 0; i < hooks.size(); ++i) {
            hooks[i] =
                SetWindowsHookExW(WH_GETMESSAGE, kProcedures[i], nullptr, GetCurrentThreadId());
            ASSERT_NE(nullptr, hooks[i]);
        }
        if (row.ended >= 0) {
            EXPECT_TRUE(UnhookWindowsHookEx(
                std::exchange(hooks[static_cast<std::size_t>(row.ended)], nullptr)));
        }
        seen.clear();
        ending = row.ending;
        keeping = row.keeping;
        for (int i = 0; i < 2; ++i) {
            if (i > 0) seen += ' ';
            MSG message;
            PostMessageW(nullptr, WM_APP, 0, 0);
            EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_REMOVE));
        }
        EXPECT_EQ(row.seen, seen);
        for (HHOOK& hook : hooks) {
            if (hook != nullptr) {
                EXPECT_TRUE(UnhookWindowsHookEx(hook));
            }
        }
    }
    EXPECT_EQ(0, CallNextHookEx(nullptr, HC_ACTION, 0, 0));
}

}  // namespace
