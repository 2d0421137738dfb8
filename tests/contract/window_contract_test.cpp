// Windows, the state of their controls, and the desk that answers message boxes.
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <vector>

#include "platform/desk.h"
#include "tests/contract/contract.h"

namespace {

constexpr int kLabel = 10;
constexpr int kCheck = 11;
constexpr int kField = 12;
constexpr int kList = 13;
constexpr int kCombo = 14;

LPARAM Text(LPCWSTR text) {
    return reinterpret_cast<LPARAM>(text);
}

// A window with one control of each class.
class Windows : public testing::Test {
protected:
    void SetUp() override {
        const INITCOMMONCONTROLSEX classes = {sizeof classes,
                                              ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
        ASSERT_TRUE(InitCommonControlsEx(&classes));
        parent_ = CreateWindowExW(0, TEXT("Static"), TEXT("the parent"), WS_POPUP, 5, 7, 300, 200,
                                  nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(nullptr, parent_);
        Add(TEXT("Static"), TEXT("Look in:"), 0, kLabel);
        Add(TEXT("BUTTON"), TEXT("Match case"), BS_AUTOCHECKBOX, kCheck);
        Add(TEXT("Edit"), TEXT("typed"), 0, kField);
        Add(TEXT("ComboBox"), TEXT("ignored"), CBS_DROPDOWNLIST, kList);
        Add(TEXT("combobox"), TEXT("ignored"), CBS_DROPDOWN, kCombo);
    }
    void TearDown() override {
        if (IsWindow(parent_)) DestroyWindow(parent_);
    }
    void Add(LPCWSTR name, LPCWSTR text, DWORD style, int id) {
        const HWND child =
            CreateWindowExW(0, name, text, WS_CHILD | style, 10, 20, 80, 60, parent_,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
        ASSERT_NE(nullptr, child);
        ASSERT_EQ(child, GetDlgItem(parent_, id));
    }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendDlgItemMessageW(parent_, id, message, wParam, lParam);
    }
    WText TextOf(int id) const {
        WCHAR text[64] = {kGuard, 0};
        GetDlgItemTextW(parent_, id, text, 64);
        return text;
    }

    HWND parent_ = nullptr;
};

TEST_F(Windows, CreationThatFails) {
    struct Row {
        const char* label;
        LPCWSTR name;
        DWORD style;
        HWND parent;
        DWORD error;
        eGap gap = eGap::none;
    };
    const auto stale = reinterpret_cast<HWND>(static_cast<INT_PTR>(0x7FFE));
    const Row rows[] = {
        {"no such class", TEXT("SrNoClass"), WS_POPUP, nullptr, ERROR_CANNOT_FIND_WND_CLASS,
         eGap::windows},
        {"empty class", TEXT(""), WS_POPUP, nullptr, ERROR_CANNOT_FIND_WND_CLASS, eGap::windows},
        {"child of none", TEXT("Static"), WS_CHILD, nullptr, ERROR_TLW_WITH_WSCHILD},
        {"child of a stale one", TEXT("Static"), WS_CHILD, stale, ERROR_INVALID_WINDOW_HANDLE},
        {"owned by a stale one", TEXT("Static"), WS_POPUP, stale, ERROR_INVALID_WINDOW_HANDLE},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        SetLastError(kPoisonError);
        EXPECT_EQ(nullptr, CreateWindowExW(0, row.name, nullptr, row.style, 0, 0, 1, 1, row.parent,
                                           nullptr, nullptr, nullptr));
        const DWORD error = GetLastError();
        KNOWN_GAP(row.gap, error == row.error) << error;
    }
}

TEST_F(Windows, ExtendedStyles) {
    constexpr DWORD kControlParent = 0x00010000;
    const HWND made = CreateWindowExW(kControlParent, TEXT("Static"), nullptr, WS_POPUP, 0, 0, 1, 1,
                                      nullptr, nullptr, nullptr, nullptr);
    KNOWN_GAP(eGap::native, made != nullptr);
    if (made != nullptr) DestroyWindow(made);
}

TEST_F(Windows, DestroyTakesTheChildren) {
    const HWND label = GetDlgItem(parent_, kLabel);
    const HWND field = GetDlgItem(parent_, kField);
    EXPECT_TRUE(DestroyWindow(label));
    EXPECT_FALSE(IsWindow(label));
    SetLastError(kPoisonError);
    EXPECT_EQ(nullptr, GetDlgItem(parent_, kLabel));
    KNOWN_GAP(eGap::windows, GetLastError() == ERROR_CONTROL_ID_NOT_FOUND);
    EXPECT_TRUE(DestroyWindow(parent_));
    RECT rect = Poison<RECT>();
    struct Row {
        const char* label;
        std::function<bool(HWND)> call;
        eGap gap = eGap::none;
    };
    const Row rows[] = {
        {"DestroyWindow", [](HWND gone) { return DestroyWindow(gone) != FALSE; }, eGap::windows},
        {"EnableWindow", [](HWND gone) { return EnableWindow(gone, TRUE) != FALSE; }},
        {"IsWindowEnabled", [](HWND gone) { return IsWindowEnabled(gone) != FALSE; }},
        {"GetWindowRect", [&rect](HWND gone) { return GetWindowRect(gone, &rect) != FALSE; }},
        {"GetDlgItem", [](HWND gone) { return GetDlgItem(gone, kLabel) != nullptr; },
         eGap::windows},
        {"SendMessageW", [](HWND gone) { return SendMessageW(gone, WM_GETTEXTLENGTH, 0, 0) != 0; }},
        {"GetDlgItemTextW",
         [](HWND gone) {
             WCHAR text[4];
             return GetDlgItemTextW(gone, kLabel, text, 4) != 0;
         },
         eGap::windows},
    };
    for (const HWND gone : {parent_, field, label}) {
        EXPECT_FALSE(IsWindow(gone));
        for (const Row& row : rows) {
            SCOPED_TRACE(row.label);
            SetLastError(kPoisonError);
            EXPECT_FALSE(row.call(gone));
            const DWORD error = GetLastError();
            KNOWN_GAP(row.gap, error == ERROR_INVALID_WINDOW_HANDLE) << error;
        }
    }
    EXPECT_TRUE(IsPoison(rect));
}

TEST_F(Windows, Enabling) {
    const HWND check = GetDlgItem(parent_, kCheck);
    EXPECT_TRUE(IsWindowEnabled(check));
    EXPECT_FALSE(EnableWindow(check, FALSE));
    EXPECT_FALSE(IsWindowEnabled(check));
    EXPECT_TRUE(EnableWindow(check, FALSE));
    EXPECT_TRUE(EnableWindow(check, 2));
    EXPECT_TRUE(IsWindowEnabled(check));
    // A disabled parent leaves the state of its children.
    EnableWindow(parent_, FALSE);
    EXPECT_TRUE(IsWindowEnabled(check));
    const HWND born = CreateWindowExW(0, TEXT("Edit"), nullptr, WS_CHILD | WS_DISABLED, 0, 0, 1, 1,
                                      parent_, nullptr, nullptr, nullptr);
    EXPECT_FALSE(IsWindowEnabled(born));
}

TEST_F(Windows, Rectangles) {
    RECT rect = Poison<RECT>();
    ASSERT_TRUE(GetWindowRect(parent_, &rect));
    EXPECT_EQ((std::vector<LONG>{5, 7, 305, 207}),
              (std::vector<LONG>{rect.left, rect.top, rect.right, rect.bottom}));
    rect = Poison<RECT>();
    ASSERT_TRUE(GetWindowRect(GetDlgItem(parent_, kLabel), &rect));
    EXPECT_EQ((std::vector<LONG>{15, 27, 95, 87}),
              (std::vector<LONG>{rect.left, rect.top, rect.right, rect.bottom}));
}

TEST_F(Windows, TextsAndSizes) {
    EXPECT_EQ(TEXT("Look in:"), TextOf(kLabel));
    EXPECT_EQ(TEXT("typed"), TextOf(kField));
    EXPECT_EQ(TEXT(""), TextOf(kList));
    EXPECT_EQ(TEXT(""), TextOf(kCombo));
    EXPECT_EQ(TEXT(""), TextOf(999));
    for (const int id : {kLabel, kCheck, kField, kCombo}) {
        SCOPED_TRACE(id);
        EXPECT_TRUE(SetDlgItemTextW(parent_, id, TEXT("five5")));
        EXPECT_EQ(5, Send(id, WM_GETTEXTLENGTH));
        for (const int cch : {0, 1, 5, 6, 7}) {
            SCOPED_TRACE(cch);
            const WText wanted = WText(TEXT("five5"))
                                     .substr(0, static_cast<std::size_t>(cch > 5   ? 5
                                                                         : cch > 0 ? cch - 1
                                                                                   : 0));
            GuardedBuffer buffer(static_cast<std::size_t>(cch));
            EXPECT_EQ(wanted.size(), GetDlgItemTextW(parent_, id, buffer.data(), cch));
            EXPECT_TRUE(buffer.IsGuardWhole());
            if (cch > 0) {
                EXPECT_EQ(wanted, buffer.Text());
            }
            GuardedBuffer again(static_cast<std::size_t>(cch));
            EXPECT_EQ(wanted.size(),
                      static_cast<std::size_t>(
                          Send(id, WM_GETTEXT, static_cast<WPARAM>(cch), Text(again.data()))));
            EXPECT_TRUE(again.IsGuardWhole());
            if (cch > 0) {
                EXPECT_EQ(wanted, again.Text());
            }
        }
        EXPECT_TRUE(SetDlgItemTextW(parent_, id, nullptr));
        EXPECT_EQ(TEXT(""), TextOf(id));
    }
    EXPECT_FALSE(SetDlgItemTextW(parent_, 999, TEXT("x")));
    EXPECT_EQ(0, Send(999, WM_GETTEXTLENGTH));
}

TEST_F(Windows, CheckBox) {
    EXPECT_EQ(0, Send(kCheck, BM_GETCHECK));
    Send(kCheck, BM_SETCHECK, BST_CHECKED);
    EXPECT_EQ(1, Send(kCheck, BM_GETCHECK));
    Send(kCheck, BM_SETCHECK, BST_UNCHECKED);
    EXPECT_EQ(0, Send(kCheck, BM_GETCHECK));
}

TEST_F(Windows, ComboBoxes) {
    struct Step {
        UINT message;
        WPARAM wParam;
        LPCWSTR text;
        LRESULT result;
        LRESULT selected;  // what stands behind the step
        LPCWSTR items;
        eGap gap = eGap::none;
    };
    const auto none = static_cast<WPARAM>(-1);
    const Step steps[] = {
        {CB_GETCOUNT, 0, nullptr, 0, -1, TEXT("")},
        {CB_SETCURSEL, 0, nullptr, -1, -1, TEXT("")},
        {CB_ADDSTRING, 0, TEXT("b"), 0, -1, TEXT("b|")},
        {CB_ADDSTRING, 0, TEXT("a"), 1, -1, TEXT("b|a|")},
        {CB_INSERTSTRING, 1, TEXT("c"), 1, -1, TEXT("b|c|a|")},
        {CB_INSERTSTRING, none, TEXT("d"), 3, -1, TEXT("b|c|a|d|")},
        {CB_INSERTSTRING, 5, TEXT("x"), -1, -1, TEXT("b|c|a|d|")},
        {CB_SETCURSEL, 2, nullptr, 2, 2, TEXT("b|c|a|d|")},
        {CB_INSERTSTRING, 0, TEXT("e"), 0, 3, TEXT("e|b|c|a|d|")},
        {CB_DELETESTRING, 0, nullptr, 4, 2, TEXT("b|c|a|d|")},
        {CB_DELETESTRING, 3, nullptr, 3, 2, TEXT("b|c|a|")},
        {CB_DELETESTRING, 3, nullptr, -1, 2, TEXT("b|c|a|")},
        {CB_DELETESTRING, 2, nullptr, 2, -1, TEXT("b|c|")},
        {CB_SETCURSEL, 1, nullptr, 1, 1, TEXT("b|c|")},
        {CB_SETCURSEL, 2, nullptr, -1, -1, TEXT("b|c|"), eGap::windows},
        {CB_SETCURSEL, none, nullptr, -1, -1, TEXT("b|c|")},
        {CB_ADDSTRING, 0, TEXT(""), 2, -1, TEXT("b|c||")},
        {CB_GETLBTEXTLEN, 3, nullptr, -1, -1, TEXT("b|c||")},
        {CB_RESETCONTENT, 0, nullptr, 1, -1, TEXT("")},
    };
    for (const int id : {kList, kCombo}) {
        int number = 0;
        for (const Step& step : steps) {
            SCOPED_TRACE(std::to_string(id) + ", step " + std::to_string(number++));
            EXPECT_EQ(step.result, Send(id, step.message, step.wParam, Text(step.text)));
            KNOWN_GAP(step.gap, Send(id, CB_GETCURSEL) == step.selected);
            WText items;
            const auto count = static_cast<WPARAM>(Send(id, CB_GETCOUNT));
            for (WPARAM i = 0; i < count; ++i) {
                const LRESULT units = Send(id, CB_GETLBTEXTLEN, i);
                GuardedBuffer buffer(static_cast<std::size_t>(units) + 1);
                EXPECT_EQ(units, Send(id, CB_GETLBTEXT, i, Text(buffer.data())));
                EXPECT_TRUE(buffer.IsGuardWhole());
                items += buffer.Text() + TEXT("|");
            }
            EXPECT_EQ(step.items, items);
        }
    }
    GuardedBuffer buffer(4);
    EXPECT_EQ(CB_ERR, Send(kList, CB_GETLBTEXT, 0, Text(buffer.data())));
    EXPECT_TRUE(buffer.IsUntouched());
}

TEST_F(Windows, DrawingTellsWhetherThereIsAWindow) {
    const HWND gone = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, 10, 10, nullptr,
                                      nullptr, nullptr, nullptr);
    DestroyWindow(gone);
    const HWND here = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, 10, 10, nullptr,
                                      nullptr, nullptr, nullptr);
    for (const HWND window : {here, gone}) {
        const BOOL wanted = window == here;
        EXPECT_EQ(wanted, InvalidateRect(window, nullptr, TRUE));
        KNOWN_GAP(window == here ? eGap::none : eGap::windows, UpdateWindow(window) == wanted);
        EXPECT_EQ(wanted, RedrawWindow(window, nullptr, nullptr,
                                       RDW_INVALIDATE | RDW_INTERNALPAINT | RDW_UPDATENOW));
    }
    DestroyWindow(here);
}

TEST(Cursors, LoadAndSet) {
    const HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    const HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
    ASSERT_NE(nullptr, arrow);
    ASSERT_NE(nullptr, wait);
    EXPECT_NE(arrow, wait);
    EXPECT_EQ(arrow, LoadCursorW(nullptr, IDC_ARROW));
    SetCursor(arrow);
    EXPECT_EQ(arrow, SetCursor(wait));
    EXPECT_EQ(wait, SetCursor(nullptr));
    EXPECT_EQ(nullptr, SetCursor(arrow));
}

TEST(Icons, NoneIsNone) {
    SetLastError(kPoisonError);
    EXPECT_FALSE(DestroyIcon(nullptr));
    KNOWN_GAP(eGap::windows, GetLastError() == ERROR_INVALID_CURSOR_HANDLE);
    const HWND button = CreateWindowExW(0, TEXT("Button"), TEXT("b"), WS_POPUP, 0, 0, 10, 10,
                                        nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(0, SendMessageW(button, BM_GETIMAGE, IMAGE_ICON, 0));
    DestroyWindow(button);
}

TEST(CommonControls, Initialisation) {
    const INITCOMMONCONTROLSEX good = {sizeof good, ICC_DATE_CLASSES};
    const INITCOMMONCONTROLSEX short_ = {sizeof good - 1, ICC_DATE_CLASSES};
    EXPECT_TRUE(InitCommonControlsEx(&good));
    EXPECT_FALSE(InitCommonControlsEx(&short_));
    EXPECT_FALSE(InitCommonControlsEx(nullptr));
}

constexpr UINT kButtons = 0x0F;  // the part of a box's type that names its buttons

// Gives the answers in turn and keeps what was asked.
class ScriptedDesk : public Desk {
public:
    explicit ScriptedDesk(std::deque<int> answers) : answers_(std::move(answers)) {}
    int AnswerMessageBox(const MessageBoxQuestion& question) override {
        asked.push_back(wtext::ToUtf8(question.caption) + "|" + wtext::ToUtf8(question.text) + "|" +
                        std::to_string(question.type & kButtons));
        if (answers_.empty()) return IDCANCEL;
        const int answer = answers_.front();
        answers_.pop_front();
        return answer;
    }
    std::vector<std::string> asked;

private:
    std::deque<int> answers_;
};

TEST(Desks, EachButton) {
    struct Row {
        UINT type;
        int answer;
        const char* asked;
    };
    const Row rows[] = {
        {MB_OK | MB_ICONINFORMATION, IDOK, "Find|Done.|0"},
        {MB_YESNO | MB_ICONQUESTION, IDYES, "Find|Done.|4"},
        {MB_YESNO, IDNO, "Find|Done.|4"},
        {MB_YESNOCANCEL, IDYES, "Find|Done.|3"},
        {MB_YESNOCANCEL | MB_ICONWARNING, IDNO, "Find|Done.|3"},
        {MB_YESNOCANCEL | MB_ICONERROR, IDCANCEL, "Find|Done.|3"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.asked);
        ScriptedDesk desk({row.answer});
        const DeskScope scope(desk);
        EXPECT_EQ(row.answer, MessageBoxW(nullptr, TEXT("Done."), TEXT("Find"), row.type));
        EXPECT_EQ(std::vector<std::string>{row.asked}, desk.asked);
    }
}

TEST(Desks, NestedScopes) {
    ScriptedDesk outer({IDYES, IDNO});
    const DeskScope outerScope(outer);
    EXPECT_EQ(IDYES, MessageBoxW(nullptr, TEXT("1"), TEXT("o"), MB_YESNO));
    {
        ScriptedDesk inner({IDNO});
        const DeskScope innerScope(inner);
        EXPECT_EQ(IDNO, MessageBoxW(nullptr, TEXT("2"), TEXT("i"), MB_YESNO));
        EXPECT_EQ(std::vector<std::string>{"i|2|4"}, inner.asked);
    }
    EXPECT_EQ(IDNO, MessageBoxW(nullptr, TEXT("3"), TEXT("o"), MB_YESNO));
    EXPECT_EQ((std::vector<std::string>{"o|1|4", "o|3|4"}), outer.asked);
}

// A desk that asks in its turn while it answers.
class AskingDesk : public Desk {
public:
    int AnswerMessageBox(const MessageBoxQuestion& question) override {
        if (question.text != TEXT("outer")) return IDNO;
        within = MessageBoxW(nullptr, TEXT("inner"), TEXT("c"), MB_YESNO);
        return IDYES;
    }
    int within = 0;
};

TEST(Desks, BoxWithinABox) {
    AskingDesk desk;
    const DeskScope scope(desk);
    EXPECT_EQ(IDYES, MessageBoxW(nullptr, TEXT("outer"), TEXT("c"), MB_YESNO));
    EXPECT_EQ(IDNO, desk.within);
}

}  // namespace
