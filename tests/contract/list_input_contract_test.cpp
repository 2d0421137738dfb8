// What the mouse and the keyboard do to list views, list boxes and date fields, and what the dialog
// is told of it.
#include <gtest/gtest.h>

#include "tests/contract/dialog_support.h"

namespace {

constexpr int kSingle = 10;
constexpr int kMulti = 11;
constexpr int kNames = 12;
constexpr int kPush = 13;
constexpr int kDate = 14;
constexpr int kDateOrNone = 15;
constexpr int kNowhere = -1;

std::string NameOf(UINT code) {
    switch (code) {
        case NM_CLICK:
            return "click";
        case NM_DBLCLK:
            return "double";
        case NM_RCLICK:
            return "right";
        case LVN_COLUMNCLICK:
            return "column";
        default:
            return "";
    }
}

class Input : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(TemplateBuilder()
                 .Add(WC_LISTVIEWW, TEXT(""), kTab | LVS_REPORT | LVS_SINGLESEL, kSingle)
                 .Add(WC_LISTVIEWW, TEXT(""), kTab | LVS_REPORT, kMulti)
                 .Add(TEXT("ListBox"), TEXT(""), kTab | LBS_NOTIFY, kNames)
                 .Add(TEXT("Button"), TEXT("Push"), kTab, kPush)
                 .Add(DATETIMEPICK_CLASSW, TEXT(""), kTab, kDate)
                 .Add(DATETIMEPICK_CLASSW, TEXT(""), kTab | DTS_SHOWNONE, kDateOrNone));
        for (const int id : {kSingle, kMulti}) {
            MoveWindow(Item(id), 0, 0, 300, 200, FALSE);
            for (int i = 0; i < 2; ++i) {
                LVCOLUMNW column{};
                column.mask = LVCF_WIDTH;
                column.cx = 100;
                Send(id, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&column));
            }
            for (int i = 0; i < 5; ++i) {
                LVITEMW item{};
                item.mask = LVIF_TEXT;
                item.iItem = i;
                item.pszText = const_cast<LPWSTR>(TEXT("a row"));
                Send(id, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
            }
        }
        MoveWindow(Item(kNames), 0, 0, 300, 200, FALSE);
        for (const LPCWSTR text : {TEXT("a"), TEXT("b"), TEXT("c")})
            SendText(kNames, LB_ADDSTRING, 0, text);
        SetFocus(Item(kPush));
        Record().Take();
        Record().onMessage = [](HWND, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message == WM_CONTEXTMENU) {
                Record().Write("menu" +
                               std::to_string(GetDlgCtrlID(reinterpret_cast<HWND>(wParam))));
            }
            if (message == WM_NOTIFY) WriteNotice(reinterpret_cast<const NMHDR*>(lParam));
            return false;
        };
    }
    static void WriteNotice(const NMHDR* header) {
        if (header->code == DTN_DATETIMECHANGE) {
            const auto* change = reinterpret_cast<const NMDATETIMECHANGE*>(header);
            Record().Write("date" + std::to_string(change->dwFlags) + ":" +
                           std::to_string(change->st.wMonth));
            return;
        }
        const std::string name = NameOf(header->code);
        if (name.empty()) return;
        const auto* notice = reinterpret_cast<const NMLISTVIEW*>(header);
        const bool isColumn = header->code == LVN_COLUMNCLICK;
        Record().Write(name + std::to_string(isColumn ? notice->iSubItem : notice->iItem));
    }
    // A point within a row, or below the last one.
    LPARAM At(int id, int row) const {
        RECT rect{};
        rect.left = LVIR_BOUNDS;
        const int asked = row == kNowhere ? 2 : row;
        if (id == kNames) {
            EXPECT_NE(LB_ERR, Send(id, LB_GETITEMRECT, static_cast<WPARAM>(asked),
                                   reinterpret_cast<LPARAM>(&rect)));
        } else {
            EXPECT_EQ(TRUE, Send(id, LVM_GETITEMRECT, static_cast<WPARAM>(asked),
                                 reinterpret_cast<LPARAM>(&rect)));
        }
        if (row == kNowhere) rect.top = 190;
        return MAKELPARAM(static_cast<WORD>(rect.left + 6), static_cast<WORD>(rect.top + 2));
    }
    std::function<void()> Mouse(int id, int row, std::initializer_list<UINT> messages,
                                WPARAM keys = 0) const {
        return [=, this, sequence = std::vector<UINT>(messages)] {
            for (const UINT message : sequence)
                PostMessageW(Item(id), message, keys, At(id, row));
            Drain();
        };
    }
    std::function<void()> Click(int id, int row, WPARAM keys = 0) const {
        return Mouse(id, row, {WM_LBUTTONDOWN, WM_LBUTTONUP}, keys);
    }
    std::function<void()> Key(int id, WPARAM key) const {
        return [=, this] { Send(id, WM_KEYDOWN, key); };
    }
    // The state of each row: 1 focused, 2 selected, 3 both; of the list box the selection.
    std::string State(int id) const {
        if (id == kNames) return std::to_string(Send(id, LB_GETCURSEL));
        std::string state;
        for (WPARAM i = 0; i < 5; ++i)
            state += std::to_string(Send(id, LVM_GETITEMSTATE, i, 3));
        return state;
    }
    struct Step {
        const char* label;
        std::function<void()> act;
        std::string told;
        std::string state;
        eGap gap = eGap::none;
    };
    void Run(int id, const std::vector<Step>& steps) const {
        for (const Step& step : steps) {
            step.act();
            const std::string told = Record().Take();
            const std::string state = State(id);
            KNOWN_GAP(step.gap, told == step.told && state == step.state)
                << step.label << ": told '" << told << "', wanted '" << step.told << "'; state '"
                << state << "', wanted '" << step.state << "'";
        }
    }
};

TEST_F(Input, ListViewOfOneSelection) {
    Run(kSingle,
        {
            {"click", Click(kSingle, 1), "click1", "03000"},
            {"the focus follows", [this] { EXPECT_EQ(kSingle, FocusId()); }, "", "03000"},
            {"click with Ctrl", Click(kSingle, 2, MK_CONTROL), "click2", "00300"},
            {"double click",
             Mouse(kSingle, 0, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}),
             "click0 double0", "30000"},
            {"right click", Mouse(kSingle, 3, {WM_RBUTTONDOWN, WM_RBUTTONUP}), "right3 menu10",
             "00030"},
            {"click on nothing", Click(kSingle, kNowhere), "click-1", "00010"},
            {"down", Key(kSingle, VK_DOWN), "", "00003"},
            {"down at the end", Key(kSingle, VK_DOWN), "", "00003"},
            {"up", Key(kSingle, VK_UP), "", "00030"},
            {"home", Key(kSingle, VK_HOME), "", "30000"},
            {"end", Key(kSingle, VK_END), "", "00003"},
        });
}

TEST_F(Input, ListViewOfManySelections) {
    Run(kMulti,
        {
            {"click", Click(kMulti, 1), "click1", "03000"},
            {"with Ctrl", Click(kMulti, 3, MK_CONTROL), "click3", "02030"},
            {"with Ctrl again", Click(kMulti, 3, MK_CONTROL), "click3", "02010"},
            {"click", Click(kMulti, 1), "click1", "03000"},
            {"with Shift", Click(kMulti, 3, MK_SHIFT), "click3", "02230"},
            {"with Shift the other way", Click(kMulti, 0, MK_SHIFT), "click0", "32000"},
            {"click on a selected one", Click(kMulti, 1), "click1", "03000"},
            {"with Shift", Click(kMulti, 4, MK_SHIFT), "click4", "02223"},
            {"right click on a selected one", Mouse(kMulti, 2, {WM_RBUTTONDOWN, WM_RBUTTONUP}),
             "right2 menu11", "02322"},
            {"right click on another", Mouse(kMulti, 0, {WM_RBUTTONDOWN, WM_RBUTTONUP}),
             "right0 menu11", "30000"},
            {"right click on nothing", Mouse(kMulti, kNowhere, {WM_RBUTTONDOWN, WM_RBUTTONUP}),
             "right-1 menu11", "10000"},
            {"down", Key(kMulti, VK_DOWN), "", "03000"},
            {"with Ctrl", Click(kMulti, 3, MK_CONTROL), "click3", "02030"},
            {"with Ctrl on nothing", Click(kMulti, kNowhere, MK_CONTROL), "click-1", "02030"},
            {"click on nothing", Click(kMulti, kNowhere), "click-1", "00010"},
            {"space", Key(kMulti, VK_SPACE), "", "00030"},
        });
}

TEST_F(Input, ColumnsAndPlaces) {
    const auto header = reinterpret_cast<HWND>(Send(kSingle, LVM_GETHEADER));
    ASSERT_TRUE(IsWindow(header));
    for (const int x : {20, 120, 220}) {
        PostMessageW(header, WM_LBUTTONDOWN, 0, MAKELPARAM(static_cast<WORD>(x), 5));
        PostMessageW(header, WM_LBUTTONUP, 0, MAKELPARAM(static_cast<WORD>(x), 5));
    }
    Drain();
    EXPECT_EQ("column0 column1", Record().Take());
    RECT rect{};
    rect.left = LVIR_BOUNDS;
    EXPECT_EQ(FALSE, Send(kSingle, LVM_GETITEMRECT, 5, reinterpret_cast<LPARAM>(&rect)));
    LRESULT hits[] = {0, 1, 4, kNowhere};
    for (const LRESULT row : hits) {
        const LPARAM at = At(kSingle, static_cast<int>(row));
        LVHITTESTINFO hit{};
        hit.pt = {LOWORD(static_cast<ULONG_PTR>(at)), HIWORD(static_cast<ULONG_PTR>(at))};
        EXPECT_EQ(row, Send(kSingle, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
        EXPECT_EQ(row, hit.iItem);
        EXPECT_EQ(row == kNowhere ? LVHT_NOWHERE : LVHT_ONITEMLABEL, hit.flags);
    }
    // Right of the text a row is hit only where the whole row counts.
    const LPARAM at = At(kSingle, 1);
    for (const DWORD style : {DWORD{0}, DWORD{LVS_EX_FULLROWSELECT}}) {
        Send(kSingle, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style));
        LVHITTESTINFO hit{};
        hit.pt = {150, HIWORD(static_cast<ULONG_PTR>(at))};
        EXPECT_EQ(style != 0 ? 1 : -1,
                  Send(kSingle, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    }
}

TEST_F(Input, ListBox) {
    Run(kNames,
        {
            {"click", Click(kNames, 1), "12:4 12:1", "1"},
            {"click on the same", Click(kNames, 1), "12:1", "1"},
            {"double click",
             Mouse(kNames, 2, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}),
             "12:1 12:2", "2"},
            {"up", Key(kNames, VK_UP), "12:1", "1"},
        });
    RECT rect{};
    EXPECT_EQ(LB_ERR, Send(kNames, LB_GETITEMRECT, 3, reinterpret_cast<LPARAM>(&rect)));
}

TEST_F(Input, DateFields) {
    const auto date = [this](int id) {
        SYSTEMTIME time{};
        const LRESULT kind = Send(id, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
        return kind == GDT_VALID ? std::to_string(time.wYear) + "-" + std::to_string(time.wMonth) +
                                       "-" + std::to_string(time.wDay)
                                 : "none";
    };
    const auto set = [this](int id, LRESULT kind, WORD year, WORD month, WORD day) {
        SYSTEMTIME time{};
        time.wYear = year;
        time.wMonth = month;
        time.wDay = day;
        return Send(id, DTM_SETSYSTEMTIME, static_cast<WPARAM>(kind),
                    reinterpret_cast<LPARAM>(&time));
    };
    struct Edge {
        WORD year, month, day;
        bool taken;
        eGap gap = eGap::none;
    };
    const Edge edges[] = {
        {1601, 1, 1, true},
        {1752, 9, 14, true},
        {9999, 12, 31, true},
        {2023, 2, 29, false},
        {2024, 0, 1, false},
        {2024, 13, 1, false},
        {2024, 4, 31, false},
        {2024, 4, 0, false},
        {1600, 12, 31, false, eGap::windows},
        {30828, 1, 1, false, eGap::windows},
    };
    for (const Edge& edge : edges) {
        ASSERT_EQ(TRUE, set(kDate, GDT_VALID, 2024, 1, 31));
        const bool taken = set(kDate, GDT_VALID, edge.year, edge.month, edge.day) != FALSE;
        KNOWN_GAP(edge.gap, taken == edge.taken) << edge.year << " " << edge.month;
    }
    EXPECT_EQ(FALSE, set(kDate, 7, 2024, 1, 1));
    EXPECT_EQ("", Record().Take());

    ASSERT_EQ(TRUE, set(kDate, GDT_VALID, 2024, 12, 31));
    SetFocus(Item(kDate));
    Send(kDate, WM_KEYDOWN, VK_UP);
    Record().Take();
    KNOWN_GAP(eGap::windows, date(kDate) == "2024-1-31");
    // There no part is chosen until an arrow goes to one.
    if (GapApplies(eGap::windows)) Send(kDate, WM_KEYDOWN, VK_RIGHT);
    struct Press {
        const char* label;
        WORD year, month, day;  // before
        WPARAM key;
        const char* told;
        const char* then;
        eGap gap = eGap::none;
    };
    const Press presses[] = {
        {"month up goes round", 2024, 12, 31, VK_UP, "date0:1", "2024-1-31"},
        {"month up cuts the day", 2024, 1, 31, VK_UP, "date0:2", "2024-2-29", eGap::windows},
        {"to the day", 2024, 2, 29, VK_RIGHT, "", "2024-2-29"},
        {"day up goes round", 2024, 2, 29, VK_UP, "date0:2", "2024-2-1"},
        {"day down goes round", 2024, 2, 1, VK_DOWN, "date0:2", "2024-2-29"},
        {"to the year", 2024, 2, 29, VK_RIGHT, "", "2024-2-29"},
        {"year down cuts the day", 2024, 2, 29, VK_DOWN, "date0:2", "2023-2-28"},
        {"back to the month", 2023, 2, 28, VK_RIGHT, "", "2023-2-28"},
        {"month down", 2023, 2, 28, VK_DOWN, "date0:1", "2023-1-28"},
    };
    for (const Press& press : presses) {
        ASSERT_EQ(TRUE, set(kDate, GDT_VALID, press.year, press.month, press.day));
        Send(kDate, WM_KEYDOWN, press.key);
        const std::string told = Record().Take();
        const std::string then = date(kDate);
        KNOWN_GAP(press.gap, told == press.told && then == press.then)
            << press.label << ": " << told << ", " << then;
    }

    ASSERT_EQ(TRUE, set(kDateOrNone, GDT_NONE, 2024, 5, 6));
    SetFocus(Item(kDateOrNone));
    Send(kDateOrNone, WM_KEYDOWN, VK_UP);
    EXPECT_EQ("none", date(kDateOrNone));
    Record().Take();
    Send(kDateOrNone, WM_KEYDOWN, VK_SPACE);
    KNOWN_GAP(eGap::windows, date(kDateOrNone) != "none" && Record().Take().rfind("date0", 0) == 0);
    Send(kDateOrNone, WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ("none", date(kDateOrNone));
}

}  // namespace
