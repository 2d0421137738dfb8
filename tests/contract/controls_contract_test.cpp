// Buttons, edit fields, combo boxes and list boxes: their state, and what they tell the dialog.
#include <gtest/gtest.h>

#include "tests/contract/dialog_support.h"

namespace {

// One step: what is done, what the dialog is told, and the state that is then found.
struct Step {
    const char* label;
    std::function<void()> act;
    std::string told;
    std::string state;
    eGap gap = eGap::none;
};

template <typename State>
void RunSteps(const std::vector<Step>& steps, State state) {
    for (const Step& step : steps) {
        SCOPED_TRACE(step.label);
        step.act();
        const std::string told = Record().Take();
        const std::string found = state();
        KNOWN_GAP(step.gap, told == step.told && found == step.state)
            << "told '" << told << "', wanted '" << step.told << "'; state '" << found
            << "', wanted '" << step.state << "'";
    }
}

class Buttons : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(TemplateBuilder()
                 .Add(TEXT("Button"), TEXT("Push"), kTab | WS_GROUP, 10)
                 .Add(TEXT("Button"), TEXT("Check"), kTab | BS_AUTOCHECKBOX, 11)
                 .Add(TEXT("Button"), TEXT("By hand"), kTab | BS_CHECKBOX, 12)
                 .Add(TEXT("Button"), TEXT("One"), kTab | WS_GROUP | BS_AUTORADIOBUTTON, 13)
                 .Add(TEXT("Button"), TEXT("Two"), kShown | BS_AUTORADIOBUTTON, 14)
                 .Add(TEXT("Button"), TEXT("Three"), kShown | BS_AUTORADIOBUTTON, 15)
                 .Add(TEXT("Button"), TEXT("Other group"), kTab | WS_GROUP | BS_AUTORADIOBUTTON, 16)
                 .Add(TEXT("Button"), TEXT("Box"), kShown | BS_GROUPBOX, 17)
                 .Add(TEXT("Button"), TEXT("Off"), kTab | WS_DISABLED, 18));
    }
    // The checks of 10 to 18, and behind them the tab stops of the radio buttons.
    std::string State() const {
        std::string state;
        for (int id = 10; id <= 18; ++id)
            state += std::to_string(Send(id, BM_GETCHECK));
        state += " ";
        for (int id = 13; id <= 16; ++id)
            state += (GetWindowLongPtrW(Item(id), GWL_STYLE) & WS_TABSTOP) != 0 ? "t" : "-";
        return state;
    }
};

TEST_F(Buttons, ChecksAndClicks) {
    const auto click = [this](int id) { return [this, id] { Send(id, BM_CLICK); }; };
    const auto check = [this](int id, WPARAM value) {
        return [this, id, value] { EXPECT_EQ(0, Send(id, BM_SETCHECK, value)); };
    };
    RunSteps(
        {
            {"nothing yet", [] {}, "", "000000000 t--t"},
            {"push", click(10), "10:0", "000000000 t--t"},
            {"a push button takes no check", check(10, BST_CHECKED), "", "000000000 t--t"},
            {"auto check", click(11), "11:0", "010000000 t--t"},
            {"and back", click(11), "11:0", "000000000 t--t"},
            {"a check by hand stays", click(12), "12:0", "000000000 t--t"},
            {"set", check(12, BST_CHECKED), "", "001000000 t--t"},
            {"set by another number", check(11, 7), "", "011000000 t--t"},
            {"first of a group", click(13), "13:0", "011100000 t--t"},
            {"third of a group", click(15), "15:0", "011001000 --tt"},
            {"another group", click(16), "16:0", "011001100 --tt"},
            {"set by hand, the others stay", check(14, BST_CHECKED), "", "011011100 -ttt"},
            {"clicked, the others go", click(14), "14:0", "011010100 -t-t"},
            {"a group box", click(17), "17:0", "011010100 -t-t"},
            {"a disabled one", click(18), "18:0", "011010100 -t-t"},
        },
        [this] { return State(); });
}

TEST_F(Buttons, ClickTakesTheFocus) {
    Send(11, BM_CLICK);
    EXPECT_EQ(11, FocusId());
    Send(18, BM_CLICK);
    EXPECT_EQ(11, FocusId());
}

TEST_F(Buttons, DialogCodes) {
    const LRESULT codes[] = {DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON, DLGC_BUTTON, DLGC_BUTTON,
                             DLGC_BUTTON | DLGC_RADIOBUTTON};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(codes[i], Send(10 + i, WM_GETDLGCODE)) << i;
    EXPECT_EQ(DLGC_STATIC, Send(17, WM_GETDLGCODE));
    Send(10, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    EXPECT_EQ(DLGC_BUTTON | DLGC_DEFPUSHBUTTON, Send(10, WM_GETDLGCODE));
}

class Edits : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(TemplateBuilder()
                 .Add(TEXT("Edit"), TEXT("text"), kTab | ES_AUTOHSCROLL, 10)
                 .Add(TEXT("Edit"), TEXT("fixed"), kTab | ES_AUTOHSCROLL | ES_READONLY, 11)
                 .Add(TEXT("Button"), TEXT("Push"), kTab, 12));
    }
    std::string State() const {
        DWORD start = 9;
        DWORD end = 9;
        Send(10, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        return wtext::ToUtf8(TextOf(10)) + " " + std::to_string(start) + "-" + std::to_string(end);
    }
    std::function<void()> Type(LPCWSTR text) const {
        return [this, text] {
            for (const WCHAR unit : WTextView(text))
                Send(10, WM_CHAR, unit);
        };
    }
    std::function<void()> Do(UINT message, WPARAM wParam, LPARAM lParam) const {
        return [this, message, wParam, lParam] { Send(10, message, wParam, lParam); };
    }
};

TEST_F(Edits, TypingAndLimits) {
    const auto set = [this](LPCWSTR text) {
        return [this, text] { EXPECT_EQ(TRUE, SendText(10, WM_SETTEXT, 0, text)); };
    };
    RunSteps(
        {
            {"nothing yet", Do(EM_SETSEL, 0, 0), "", "text 0-0"},
            {"typed in front", Type(TEXT("a")), "10:1024 10:768", "atext 1-1"},
            {"two letters", Type(TEXT("bc")), "10:1024 10:768 10:1024 10:768", "abctext 3-3"},
            {"back", Type(TEXT("\b")), "10:1024 10:768", "abtext 2-2"},
            {"select all", Do(EM_SETSEL, 0, -1), "", "abtext 0-6"},
            {"typed over", Type(TEXT("x")), "10:1024 10:768", "x 1-1"},
            {"back twice", Type(TEXT("\b\b")), "10:1024 10:768", " 0-0"},
            {"set", set(TEXT("three")), "10:1024 10:768", "three 0-0"},
            {"set the same", set(TEXT("three")), "10:1024 10:768", "three 0-0"},
            {"set null", set(nullptr), "10:1024 10:768", " 0-0"},
            {"limit", Do(EM_LIMITTEXT, 3, 0), "", " 0-0"},
            {"up to the limit", Type(TEXT("abc")), "10:1024 10:768 10:1024 10:768 10:1024 10:768",
             "abc 3-3"},
            {"one too many", Type(TEXT("d")), "10:1281 10:1024 10:768", "abc 3-3"},
            {"one in the place of one", Do(EM_SETSEL, 1, 2), "", "abc 1-2"},
            {"fits", Type(TEXT("d")), "10:1024 10:768", "adc 2-2"},
            {"set beyond the limit", set(TEXT("longer")), "10:1024 10:768", "longer 0-0"},
            {"beyond it already", Type(TEXT("d")), "10:1281 10:1024 10:768", "longer 0-0"},
            {"no limit", Do(EM_LIMITTEXT, 0, 0), "", "longer 0-0"},
            {"typed again", Type(TEXT("d")), "10:1024 10:768", "dlonger 1-1"},
            {"selection beyond the end", Do(EM_SETSEL, 3, 99), "", "dlonger 3-7"},
            {"selection the other way round", Do(EM_SETSEL, 5, 2), "", "dlonger 2-5"},
            {"selection dropped", Do(EM_SETSEL, static_cast<WPARAM>(-1), 0), "", "dlonger 2-2"},
            {"control characters", Type(TEXT("\x1F\x02")), "", "dlonger 2-2"},
        },
        [this] { return State(); });
    Send(11, WM_CHAR, 'x');
    EXPECT_EQ(TEXT("fixed"), TextOf(11));
    EXPECT_EQ("", Record().Take());
}

TEST_F(Edits, Focus) {
    const auto focus = [this](int id) { return [this, id] { SetFocus(Item(id)); }; };
    SetFocus(Item(12));
    Record().Take();
    RunSteps({{"in", focus(10), "10:256", "10"},
              {"again", focus(10), "", "10"},
              {"to the other", focus(11), "10:512 11:256", "11"},
              {"out", focus(12), "11:512", "12"}},
             [this] { return std::to_string(FocusId()); });
}

class ComboBoxes : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(TemplateBuilder()
                 .Add(TEXT("ComboBox"), TEXT(""), kTab | CBS_DROPDOWNLIST | WS_VSCROLL, 10)
                 .Add(TEXT("ComboBox"), TEXT(""), kTab | CBS_DROPDOWN | CBS_AUTOHSCROLL, 11)
                 .Add(TEXT("Button"), TEXT("Push"), kTab, 12));
        for (const int id : {10, 11}) {
            for (const LPCWSTR text : {TEXT("Bolt"), TEXT("bolt M8"), TEXT("Nut"), TEXT("")})
                SendText(id, CB_ADDSTRING, 0, text);
        }
        Record().Take();
    }
    std::string State(int id) const {
        return std::to_string(Send(id, CB_GETCURSEL)) + " '" + wtext::ToUtf8(TextOf(id)) + "'";
    }
    std::function<void()> Do(int id, UINT message, WPARAM wParam, LRESULT wanted,
                             LPCWSTR text = nullptr) const {
        return [=, this] {
            EXPECT_EQ(wanted, Send(id, message, wParam, reinterpret_cast<LPARAM>(text)));
        };
    }
};

constexpr auto kNone = static_cast<WPARAM>(-1);

TEST_F(ComboBoxes, Finding) {
    struct Row {
        WPARAM behind;
        LPCWSTR text;
        LRESULT beginning;
        LRESULT whole;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {kNone, TEXT("bolt"), 0, 0},   {kNone, TEXT("BOLT m"), 1, -1}, {0, TEXT("bolt"), 1, 0},
        {1, TEXT("bolt"), 0, 0},       {kNone, TEXT("nut"), 2, 2},     {2, TEXT("nut"), 2, 2},
        {kNone, TEXT("nuts"), -1, -1}, {99, TEXT("nut"), 2, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(wtext::ToUtf8(row.text) + " behind " + std::to_string(row.behind));
        for (const int id : {10, 11}) {
            const LRESULT beginning = SendText(id, CB_FINDSTRING, row.behind, row.text);
            const LRESULT whole = SendText(id, CB_FINDSTRINGEXACT, row.behind, row.text);
            KNOWN_GAP(row.gap, beginning == row.beginning && whole == row.whole)
                << beginning << " and " << whole;
        }
    }
}

TEST_F(ComboBoxes, NumbersAndWidths) {
    for (const int id : {10, 11}) {
        EXPECT_EQ(0, Send(id, CB_GETITEMDATA, 1));
        EXPECT_EQ(TRUE, Send(id, CB_SETITEMDATA, 1, -7));
        EXPECT_EQ(-7, Send(id, CB_GETITEMDATA, 1));
        EXPECT_EQ(CB_ERR, Send(id, CB_SETITEMDATA, 4, 5));
        EXPECT_EQ(CB_ERR, Send(id, CB_GETITEMDATA, 4));
        // A number travels with its text.
        SendText(id, CB_INSERTSTRING, 0, TEXT("first"));
        EXPECT_EQ(-7, Send(id, CB_GETITEMDATA, 2));
        EXPECT_EQ(0, Send(id, CB_GETITEMDATA, 0));

        EXPECT_EQ(FALSE, Send(id, CB_GETEXTENDEDUI));
        EXPECT_EQ(CB_OKAY, Send(id, CB_SETEXTENDEDUI, TRUE));
        EXPECT_EQ(TRUE, Send(id, CB_GETEXTENDEDUI));
        EXPECT_EQ(500, Send(id, CB_SETDROPPEDWIDTH, 500));
        EXPECT_EQ(500, Send(id, CB_GETDROPPEDWIDTH));
    }
    EXPECT_EQ("", Record().Take());
}

TEST_F(ComboBoxes, WithoutField) {
    SetFocus(Item(12));
    Record().Take();
    const auto key = [this](WPARAM code) { return [this, code] { Send(10, WM_KEYDOWN, code); }; };
    RunSteps(
        {
            {"nothing yet", [] {}, "", "-1 ''"},
            {"focus", [this] { SetFocus(Item(10)); }, "10:3", "-1 ''"},
            {"select", Do(10, CB_SETCURSEL, 1, 1), "", "1 'bolt M8'"},
            {"select by text", Do(10, CB_SELECTSTRING, kNone, 2, TEXT("n")), "", "2 'Nut'"},
            {"select by a missing text", Do(10, CB_SELECTSTRING, kNone, -1, TEXT("z")), "",
             "2 'Nut'"},
            {"set a text", Do(10, WM_SETTEXT, 0, CB_ERR, TEXT("x")), "", "2 'Nut'"},
            {"up", key(VK_UP), "10:9 10:1", "1 'bolt M8'"},
            {"up", key(VK_UP), "10:9 10:1", "0 'Bolt'"},
            {"up at the top", key(VK_UP), "10:9 10:1", "0 'Bolt'"},
            {"down", key(VK_DOWN), "10:9 10:1", "1 'bolt M8'"},
            {"focus lost", [this] { SetFocus(Item(12)); }, "10:10 10:4", "1 'bolt M8'"},
            {"emptied", Do(10, CB_RESETCONTENT, 0, TRUE), "", "-1 ''"},
            {"down in the empty one", key(VK_DOWN), "", "-1 ''"},
        },
        [this] { return State(10); });
}

TEST_F(ComboBoxes, WithField) {
    const HWND field = GetDlgItem(Item(11), 1001);
    ASSERT_NE(nullptr, field);
    SetFocus(Item(12));
    Record().Take();
    const auto type = [field](WCHAR unit) {
        return [field, unit] { SendMessageW(field, WM_CHAR, unit, 0); };
    };
    RunSteps(
        {
            {"nothing yet", [] {}, "", "-1 ''"},
            {"focus goes to the field",
             [&] {
                 SetFocus(Item(11));
                 EXPECT_EQ(field, GetFocus());
             },
             "11:3", "-1 ''"},
            {"typed", type('n'), "11:6 11:5", "-1 'n'"},
            {"typed on", type('x'), "11:6 11:5", "-1 'nx'"},
            {"select", Do(11, CB_SETCURSEL, 1, 1), "", "1 'bolt M8'"},
            {"typed behind a selection", type('y'), "11:6 11:5", "-1 'y'"},
            {"set a text", Do(11, WM_SETTEXT, 0, TRUE, TEXT("set")), "", "-1 'set'"},
            {"select by text", Do(11, CB_SELECTSTRING, kNone, 2, TEXT("nut")), "", "2 'Nut'"},
            {"select none", Do(11, CB_SETCURSEL, kNone, -1), "", "-1 ''"},
            {"down", [&] { SendMessageW(Item(11), WM_KEYDOWN, VK_DOWN, 0); }, "11:9 11:1",
             "2 'Nut'"},
            {"one is deleted", Do(11, CB_DELETESTRING, 0, 3), "", "1 'Nut'"},
            {"limit", [this] { Send(11, CB_LIMITTEXT, 2); }, "", "1 'Nut'"},
            {"cleared", Do(11, WM_SETTEXT, 0, TRUE, TEXT("")), "", "-1 ''", eGap::windows},
            {"typed", type('a'), "11:6 11:5", "-1 'a'", eGap::windows},
            {"typed", type('b'), "11:6 11:5", "-1 'ab'"},
            {"typed beyond the limit", type('c'), "11:65535 11:6 11:5", "-1 'ab'"},
            {"focus lost", [this] { SetFocus(Item(12)); }, "11:10 11:4", "-1 'ab'"},
            {"emptied", Do(11, CB_RESETCONTENT, 0, TRUE), "", "-1 ''"},
        },
        [this] { return State(11); });
    EnableWindow(Item(11), FALSE);
    EXPECT_FALSE(IsWindowEnabled(field));
    EnableWindow(Item(11), TRUE);
    EXPECT_TRUE(IsWindowEnabled(field));
}

class ListBoxes : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(TemplateBuilder()
                 .Add(TEXT("ListBox"), TEXT(""), kTab | LBS_NOTIFY | WS_VSCROLL, 10)
                 .Add(TEXT("ListBox"), TEXT(""), kTab, 11)
                 .Add(TEXT("Button"), TEXT("Push"), kTab, 12));
        SetFocus(Item(12));
        Record().Take();
    }
    // The selection and the items.
    std::string State(int id) const {
        std::string state = std::to_string(Send(id, LB_GETCURSEL)) + " ";
        const auto count = static_cast<WPARAM>(Send(id, LB_GETCOUNT));
        for (WPARAM i = 0; i < count; ++i) {
            GuardedBuffer buffer(static_cast<std::size_t>(Send(id, LB_GETTEXTLEN, i)) + 1);
            Send(id, LB_GETTEXT, i, reinterpret_cast<LPARAM>(buffer.data()));
            EXPECT_TRUE(buffer.IsGuardWhole());
            state += wtext::ToUtf8(buffer.Text()) + "|";
        }
        return state;
    }
};

TEST_F(ListBoxes, ItemsAndSelection) {
    const auto act = [this](UINT message, WPARAM wParam, LRESULT wanted, LPCWSTR text = nullptr) {
        return [=, this] {
            EXPECT_EQ(wanted, Send(10, message, wParam, reinterpret_cast<LPARAM>(text)));
        };
    };
    RunSteps(
        {
            {"nothing yet", act(LB_GETCOUNT, 0, 0), "", "-1 "},
            {"key in the empty one", act(WM_KEYDOWN, VK_DOWN, 0), "", "-1 "},
            {"add", act(LB_ADDSTRING, 0, 0, TEXT("b")), "", "-1 b|"},
            {"add", act(LB_ADDSTRING, 0, 1, TEXT("a")), "", "-1 b|a|"},
            {"insert", act(LB_INSERTSTRING, 1, 1, TEXT("c")), "", "-1 b|c|a|"},
            {"insert at the end", act(LB_INSERTSTRING, kNone, 3, TEXT("d")), "", "-1 b|c|a|d|"},
            {"insert beyond the end", act(LB_INSERTSTRING, 5, LB_ERR, TEXT("x")), "",
             "-1 b|c|a|d|"},
            {"select", act(LB_SETCURSEL, 2, 2), "", "2 b|c|a|d|"},
            {"insert in front", act(LB_INSERTSTRING, 0, 0, TEXT("e")), "", "3 e|b|c|a|d|"},
            {"delete in front", act(LB_DELETESTRING, 0, 4), "", "2 b|c|a|d|"},
            {"delete behind", act(LB_DELETESTRING, 3, 3), "", "2 b|c|a|"},
            {"delete beyond", act(LB_DELETESTRING, 3, LB_ERR), "", "2 b|c|a|"},
            {"up", act(WM_KEYDOWN, VK_UP, 0), "10:1", "1 b|c|a|"},
            {"home", act(WM_KEYDOWN, VK_HOME, 0), "10:1", "0 b|c|a|"},
            {"end", act(WM_KEYDOWN, VK_END, 0), "10:1", "2 b|c|a|"},
            {"down at the end", act(WM_KEYDOWN, VK_DOWN, 0), "10:1", "2 b|c|a|"},
            {"delete the selected", act(LB_DELETESTRING, 2, 2), "", "-1 b|c|"},
            {"select", act(LB_SETCURSEL, 1, 1), "", "1 b|c|"},
            {"select beyond", act(LB_SETCURSEL, 2, LB_ERR), "", "-1 b|c|", eGap::windows},
            {"select none", act(LB_SETCURSEL, kNone, LB_ERR), "", "-1 b|c|"},
            {"focus", [this] { SetFocus(Item(10)); }, "10:4", "-1 b|c|"},
            {"focus lost", [this] { SetFocus(Item(12)); }, "10:5", "-1 b|c|"},
            {"emptied", act(LB_RESETCONTENT, 0, LB_OKAY), "", "-1 "},
        },
        [this] { return State(10); });
    GuardedBuffer buffer(4);
    EXPECT_EQ(LB_ERR, Send(10, LB_GETTEXT, 0, reinterpret_cast<LPARAM>(buffer.data())));
    EXPECT_EQ(LB_ERR, Send(10, LB_GETTEXTLEN, 0));
    EXPECT_TRUE(buffer.IsUntouched());
}

TEST_F(ListBoxes, NumbersAndExtent) {
    SendText(10, LB_ADDSTRING, 0, TEXT("a"));
    EXPECT_EQ(0, Send(10, LB_GETITEMDATA, 0));
    EXPECT_EQ(TRUE, Send(10, LB_SETITEMDATA, 0, -7));
    EXPECT_EQ(-7, Send(10, LB_GETITEMDATA, 0));
    EXPECT_EQ(LB_ERR, Send(10, LB_SETITEMDATA, 1, 5));
    EXPECT_EQ(LB_ERR, Send(10, LB_GETITEMDATA, 1));
    EXPECT_EQ(0, Send(10, LB_GETHORIZONTALEXTENT));
    Send(10, LB_SETHORIZONTALEXTENT, 777);
    EXPECT_EQ(777, Send(10, LB_GETHORIZONTALEXTENT));
}

TEST_F(ListBoxes, WithoutNoticesOnlyTheFocusIsTold) {
    SendText(11, LB_ADDSTRING, 0, TEXT("a"));
    SetFocus(Item(11));
    Send(11, WM_KEYDOWN, VK_DOWN);
    SetFocus(Item(12));
    EXPECT_EQ("11:4 11:5", Record().Take());
    EXPECT_EQ(0, Send(11, LB_GETCURSEL));
}

}  // namespace
