// Buttons, edit fields, combo boxes and list boxes: their state, and what they tell the dialog.
#include <gtest/gtest.h>

#include <vector>

#include "tests/contract/dialog_support.h"

namespace {

constexpr int kPush = 10;
constexpr int kCheck = 11;
constexpr int kFirstRadio = 13;
constexpr int kOff = 17;

constexpr int kList = 10;  // a combo box without a field
constexpr int kBox = 11;   // and one with it
constexpr int kNames = 12;
constexpr int kField = 13;
constexpr int kButton = 14;

constexpr DWORD kTabStop = 0x00010000;
constexpr auto kNone = static_cast<WPARAM>(-1);

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
            << "told '" << told << "', state '" << found << "'";
    }
}

class Buttons : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(kButtons);
    }
    // The checks, and behind them the tab stops of the radio buttons.
    std::string State() const {
        std::string state;
        for (int id = kPush; id <= kOff; ++id)
            state += std::to_string(Send(id, BM_GETCHECK));
        state += " ";
        for (int id = kFirstRadio; id < kOff; ++id)
            state += (GetWindowLongPtrW(Item(id), GWL_STYLE) & kTabStop) != 0 ? "t" : "-";
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
            {"push", click(kPush), "10:0", "00000000 t--t"},
            {"a push button takes no check", check(kPush, BST_CHECKED), "", "00000000 t--t"},
            {"a check box", click(kCheck), "11:0", "01000000 t--t"},
            {"first of a group", click(13), "13:0", "01010000 t--t"},
            {"third of a group", click(15), "15:0", "01000100 --tt"},
            {"another group", click(16), "16:0", "01000110 --tt"},
            {"set by hand, the others stay", check(14, BST_CHECKED), "", "01001110 -ttt"},
            {"clicked, the others go", click(14), "14:0", "01001010 -t-t"},
            {"a disabled one", click(kOff), "17:0", "01001010 -t-t"},
        },
        [this] { return State(); });
    EXPECT_EQ(14, FocusId()) << "a click takes the focus, but to one that is disabled";
}

class Lists : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(kLists);
        SetFocus(Item(kButton));
        Record().Take();
    }
    std::string State(int id) const {
        return std::to_string(Send(id, CB_GETCURSEL)) + " '" + wtext::ToUtf8(TextOf(id)) + "'";
    }
    std::function<void()> Do(int id, UINT message, WPARAM wParam, LRESULT wanted,
                             LPCWSTR text = nullptr) const {
        return [=, this] { EXPECT_EQ(wanted, SendText(id, message, wParam, text)); };
    }
    std::function<void()> Focus(int id) const {
        return [this, id] { SetFocus(Item(id)); };
    }
};

TEST_F(Lists, EditField) {
    RunSteps({{"focus", Focus(kField), "13:256", "text"},
              {"set", Do(kField, WM_SETTEXT, 0, TRUE, TEXT("three")), "13:1024 13:768", "three"},
              {"set null", Do(kField, WM_SETTEXT, 0, TRUE), "13:1024 13:768", ""},
              {"limit", [this] { Send(kField, EM_LIMITTEXT, 3); }, "", ""},
              {"it binds typing alone", Do(kField, WM_SETTEXT, 0, TRUE, TEXT("longer")),
               "13:1024 13:768", "longer"},
              {"out", Focus(kButton), "13:512", "longer"}},
             [this] { return wtext::ToUtf8(TextOf(kField)); });
}

TEST_F(Lists, Texts) {
    for (const int id : {15, kButton, kField, kBox}) {
        EXPECT_TRUE(SetDlgItemTextW(dialog_, id, TEXT("five5")));
        EXPECT_EQ(5, Send(id, WM_GETTEXTLENGTH));
        GuardedBuffer buffer(5);
        EXPECT_EQ(4u, GetDlgItemTextW(dialog_, id, buffer.data(), 5));
        EXPECT_EQ(TEXT("five"), buffer.Text()) << id;
        EXPECT_TRUE(buffer.IsGuardWhole());
        EXPECT_TRUE(SetDlgItemTextW(dialog_, id, nullptr));
        EXPECT_EQ(TEXT(""), TextOf(id));
    }
    EXPECT_FALSE(SetDlgItemTextW(dialog_, 999, TEXT("x")));
}

// The messages of the lists.
struct ListMessages {
    int id;
    UINT insert, remove, clear, count, select, selected, length, text, data, setData;
};
constexpr ListMessages kComboMessages[] = {
    {kList, CB_INSERTSTRING, CB_DELETESTRING, CB_RESETCONTENT, CB_GETCOUNT, CB_SETCURSEL,
     CB_GETCURSEL, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_GETITEMDATA, CB_SETITEMDATA},
    {kNames, LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT, LB_GETCOUNT, LB_SETCURSEL,
     LB_GETCURSEL, LB_GETTEXTLEN, LB_GETTEXT, LB_GETITEMDATA, LB_SETITEMDATA},
};

TEST_F(Lists, ItemsAndSelection) {
    for (const ListMessages& list : kComboMessages) {
        SCOPED_TRACE(list.id);
        const auto state = [&] {
            std::string all = std::to_string(Send(list.id, list.selected)) + " ";
            const auto count = static_cast<WPARAM>(Send(list.id, list.count));
            for (WPARAM i = 0; i < count; ++i) {
                GuardedBuffer buffer(static_cast<std::size_t>(Send(list.id, list.length, i)) + 1);
                Send(list.id, list.text, i, reinterpret_cast<LPARAM>(buffer.data()));
                EXPECT_TRUE(buffer.IsGuardWhole());
                all += wtext::ToUtf8(buffer.Text()) + "|";
            }
            return all;
        };
        const auto act = [&](UINT message, WPARAM wParam, LRESULT wanted, LPCWSTR text = nullptr) {
            return Do(list.id, message, wParam, wanted, text);
        };
        RunSteps(
            {
                {"select in the empty one", act(list.select, 0, -1), "", "-1 "},
                {"insert", act(list.insert, 0, 0, TEXT("a")), "", "-1 a|"},
                {"in front", act(list.insert, 0, 0, TEXT("c")), "", "-1 c|a|"},
                {"at the end", act(list.insert, kNone, 2, TEXT("")), "", "-1 c|a||"},
                {"beyond the end", act(list.insert, 4, -1, TEXT("x")), "", "-1 c|a||"},
                {"select", act(list.select, 1, 1), "", "1 c|a||"},
                {"insert before it", act(list.insert, 0, 0, TEXT("e")), "", "2 e|c|a||"},
                {"delete before it", act(list.remove, 0, 3), "", "1 c|a||"},
                {"delete behind it", act(list.remove, 2, 2), "", "1 c|a|"},
                {"delete it", act(list.remove, 1, 1), "", "-1 c|"},
                {"select", act(list.select, 0, 0), "", "0 c|"},
                {"beyond", act(list.select, 1, -1), "", "-1 c|", eGap::windows},
                {"none", act(list.select, kNone, -1), "", "-1 c|"},
            },
            state);
        // A number travels with its text.
        EXPECT_EQ(0, Send(list.id, list.data, 0));
        EXPECT_EQ(TRUE, Send(list.id, list.setData, 0, -7));
        SendText(list.id, list.insert, 0, TEXT("first"));
        EXPECT_EQ(-7, Send(list.id, list.data, 1));
        for (const UINT message :
             {list.text, list.length, list.data, list.setData, list.remove, list.insert}) {
            for (const int index : {4, 99, 0x7FFFFFFF, -2}) {
                BYTE zeros[512] = {};
                EXPECT_EQ(-1, Send(list.id, message, static_cast<WPARAM>(index),
                                   reinterpret_cast<LPARAM>(zeros)))
                    << message << " of " << index;
            }
        }
        Send(list.id, list.clear);
        EXPECT_EQ("-1 ", state());
        EXPECT_EQ("", Record().Take());
    }
}

TEST_F(Lists, FindingTexts) {
    struct Row {
        WPARAM behind;
        LPCWSTR text;
        LRESULT beginning, whole;
    };
    const Row rows[] = {{kNone, TEXT("bolt"), 0, 0},   {kNone, TEXT("BOLT m"), 1, -1},
                        {0, TEXT("bolt"), 1, 0},       {2, TEXT("nut"), 2, 2},
                        {kNone, TEXT("nuts"), -1, -1}, {99, TEXT("nut"), 2, 2}};
    for (const int id : {kList, kBox}) {
        for (const LPCWSTR text : {TEXT("Bolt"), TEXT("bolt M8"), TEXT("Nut"), TEXT("")})
            SendText(id, CB_ADDSTRING, 0, text);
        for (const Row& row : rows) {
            EXPECT_EQ(row.beginning, SendText(id, CB_FINDSTRING, row.behind, row.text));
            EXPECT_EQ(row.whole, SendText(id, CB_FINDSTRINGEXACT, row.behind, row.text));
        }
        EXPECT_EQ(500, Send(id, CB_SETDROPPEDWIDTH, 500));
    }
}

TEST_F(Lists, ComboBoxesTellTheFocusAlone) {
    for (const int id : {kList, kBox}) {
        const bool hasField = id == kBox;
        const std::string number = std::to_string(id);
        for (const LPCWSTR text : {TEXT("Bolt"), TEXT("Nut")})
            SendText(id, CB_ADDSTRING, 0, text);
        RunSteps(
            {
                {"focus", Focus(id), number + ":3", "-1 ''"},
                {"select", Do(id, CB_SETCURSEL, 0, 0), "", "0 'Bolt'"},
                {"by text", Do(id, CB_SELECTSTRING, kNone, 1, TEXT("n")), "", "1 'Nut'"},
                {"by a missing text", Do(id, CB_SELECTSTRING, kNone, -1, TEXT("z")), "", "1 'Nut'"},
                {"set a text", Do(id, WM_SETTEXT, 0, hasField ? TRUE : -1, TEXT("set")), "",
                 hasField ? "-1 'set'" : "1 'Nut'", hasField ? eGap::windows : eGap::none},
                {"select none", Do(id, CB_SETCURSEL, kNone, -1), "", "-1 ''"},
                {"focus lost", Focus(kButton), number + ":4", "-1 ''"},
            },
            [&] { return State(id); });
    }
    EnableWindow(Item(kBox), FALSE);
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(Item(kBox), 1001))) << "with its field";
}

}  // namespace
