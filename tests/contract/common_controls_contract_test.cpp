// List views, status bars and date fields: their state, and what they tell the dialog.
#include <gtest/gtest.h>

#include "tests/contract/dialog_support.h"

namespace {

class CommonControls : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        const INITCOMMONCONTROLSEX classes = {
            sizeof classes, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_DATE_CLASSES};
        ASSERT_TRUE(InitCommonControlsEx(&classes));
        TemplateBuilder builder;
        builder
            .Add(WC_LISTVIEWW, TEXT(""), kTab | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS, 10)
            .Add(WC_LISTVIEWW, TEXT(""), kTab | LVS_REPORT, 11)
            .Add(STATUSCLASSNAMEW, TEXT("ready"), kShown, 12)
            .Add(DATETIMEPICK_CLASSW, TEXT(""), kTab, 13)
            .Add(DATETIMEPICK_CLASSW, TEXT(""), kTab | DTS_SHOWNONE, 14);
        Show(builder);
        for (const int id : {10, 11}) {
            for (const LPCWSTR title : {TEXT("Name"), TEXT("Folder")}) {
                LVCOLUMNW column{};
                column.mask = LVCF_TEXT | LVCF_WIDTH;
                column.cx = 60;
                column.pszText = const_cast<LPWSTR>(title);
                EXPECT_EQ(title[0] == 'N' ? 0 : 1,
                          Send(id, LVM_INSERTCOLUMNW, title[0] == 'N' ? 0 : 99,
                               reinterpret_cast<LPARAM>(&column)));
            }
        }
        // Changes of the list views, as "code item old>new".
        Record().onMessage = [](HWND, UINT message, WPARAM, LPARAM lParam) {
            if (message != WM_NOTIFY) return false;
            const auto* notice = reinterpret_cast<const NMLISTVIEW*>(lParam);
            const UINT code = notice->hdr.code;
            if (code == LVN_ITEMCHANGING || code == LVN_ITEMCHANGED) {
                Record().Write((code == LVN_ITEMCHANGING ? "changing" : "changed") +
                               std::to_string(notice->iItem) + ":" +
                               std::to_string(notice->uOldState) + ">" +
                               std::to_string(notice->uNewState));
            }
            if (code == LVN_INSERTITEM) Record().Write("insert" + std::to_string(notice->iItem));
            if (code == LVN_DELETEITEM) Record().Write("delete" + std::to_string(notice->iItem));
            if (code == LVN_DELETEALLITEMS) Record().Write("deleteall");
            return false;
        };
    }
    LRESULT Insert(int id, int at, LPCWSTR text, LPARAM number) const {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = at;
        item.pszText = const_cast<LPWSTR>(text);
        item.lParam = number;
        return Send(id, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    LRESULT SetText(int id, int at, int column, LPCWSTR text) const {
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = const_cast<LPWSTR>(text);
        return Send(id, LVM_SETITEMTEXTW, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&item));
    }
    LRESULT SetState(int id, int at, UINT state, UINT mask) const {
        LVITEMW item{};
        item.state = state;
        item.stateMask = mask;
        return Send(id, LVM_SETITEMSTATE, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&item));
    }
    LRESULT Find(int id, int behind, UINT flags, LPCWSTR text, LPARAM number = 0) const {
        LVFINDINFOW wanted{};
        wanted.flags = flags;
        wanted.psz = text;
        wanted.lParam = number;
        return Send(id, LVM_FINDITEMW, static_cast<WPARAM>(behind),
                    reinterpret_cast<LPARAM>(&wanted));
    }
    // Text, second text, number and state of each row.
    std::string Rows(int id) const {
        std::string rows;
        const LRESULT count = Send(id, LVM_GETITEMCOUNT);
        for (int i = 0; i < count; ++i) {
            for (int column = 0; column < 2; ++column) {
                WCHAR text[32] = {kGuard, 0};
                LVITEMW item{};
                item.mask = LVIF_TEXT | LVIF_PARAM | LVIF_STATE;
                item.iItem = i;
                item.iSubItem = column;
                item.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
                item.pszText = text;
                item.cchTextMax = 32;
                EXPECT_EQ(TRUE, Send(id, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)));
                rows += wtext::ToUtf8(item.pszText) + (column == 0 ? "," : "");
                if (column == 1) {
                    rows += " " + std::to_string(item.lParam) + " " +
                            std::to_string(Send(id, LVM_GETITEMSTATE, static_cast<WPARAM>(i), 3)) +
                            "|";
                }
            }
        }
        return rows;
    }
};

TEST_F(CommonControls, RowsAndTexts) {
    EXPECT_EQ(0, Insert(10, 0, TEXT("nut"), 1));
    EXPECT_EQ(1, Insert(10, 99, TEXT("Bolt"), 2));
    EXPECT_EQ(0, Insert(10, 0, TEXT("pin"), 3));
    EXPECT_EQ("insert0 insert1 insert0", Record().Take());
    EXPECT_EQ(TRUE, SetText(10, 1, 1, TEXT("C")));
    EXPECT_EQ(TRUE, SetText(10, 0, 0, TEXT("Pin")));
    EXPECT_EQ(FALSE, SetText(10, 3, 0, TEXT("x")));
    EXPECT_EQ(FALSE, SetText(10, -1, 0, TEXT("x")));
    EXPECT_EQ("Pin, 3 0|nut,C 1 0|Bolt, 2 0|", Rows(10));
    EXPECT_EQ(TRUE, Send(10, LVM_DELETEITEM, 1));
    EXPECT_EQ(FALSE, Send(10, LVM_DELETEITEM, 2));
    EXPECT_EQ("Pin, 3 0|Bolt, 2 0|", Rows(10));
    Record().Take();
    EXPECT_EQ(TRUE, Send(10, LVM_DELETEALLITEMS));
    EXPECT_EQ("deleteall delete1 delete0", Record().Take());
    EXPECT_EQ(0, Send(10, LVM_GETITEMCOUNT));
}

TEST_F(CommonControls, TextsIntoSmallBuffers) {
    Insert(10, 0, TEXT("five5"), 1);
    for (const int cch : {1, 5, 6, 7}) {
        SCOPED_TRACE(cch);
        GuardedBuffer buffer(static_cast<std::size_t>(cch));
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.pszText = buffer.data();
        item.cchTextMax = cch;
        EXPECT_EQ(TRUE, Send(10, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)));
        EXPECT_EQ(WText(TEXT("five5")).substr(0, static_cast<std::size_t>(cch) - 1), buffer.Text());
        EXPECT_TRUE(buffer.IsGuardWhole());
    }
    GuardedBuffer buffer(4);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = 1;
    item.pszText = buffer.data();
    item.cchTextMax = 4;
    EXPECT_EQ(FALSE, Send(10, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    EXPECT_TRUE(buffer.IsUntouched());
}

TEST_F(CommonControls, Selection) {
    for (const int id : {10, 11}) {
        for (const LPCWSTR text : {TEXT("a"), TEXT("b"), TEXT("c")})
            Insert(id, 99, text, 0);
    }
    Record().Take();
    EXPECT_EQ(-1, Send(10, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    EXPECT_EQ(TRUE, SetState(10, 1, 3, 3));
    EXPECT_EQ("changing1:0>3 changed1:0>3", Record().Take());
    EXPECT_EQ(TRUE, SetState(10, 1, 3, 3));
    EXPECT_EQ("changing1:3>3", Record().Take());
    EXPECT_EQ(TRUE, SetState(10, 2, LVIS_SELECTED, LVIS_SELECTED));
    EXPECT_EQ("a, 0 0|b, 0 1|c, 0 2|", Rows(10));
    EXPECT_EQ("changing2:0>2 changing1:3>1 changed1:3>1 changed2:0>2", Record().Take());
    EXPECT_EQ(2, Send(10, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    EXPECT_EQ(-1, Send(10, LVM_GETNEXTITEM, 2, LVNI_SELECTED));
    EXPECT_EQ(1, Send(10, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
    EXPECT_EQ(1, Send(10, LVM_GETNEXTITEM, 0, LVNI_ALL));
    EXPECT_EQ(-1, Send(10, LVM_GETNEXTITEM, 2, LVNI_ALL));
    EXPECT_EQ(FALSE, SetState(10, 3, 3, 3));

    EXPECT_EQ(TRUE, SetState(11, -1, LVIS_SELECTED, LVIS_SELECTED));
    EXPECT_EQ(3, Send(11, LVM_GETSELECTEDCOUNT));
    EXPECT_EQ("a, 0 2|b, 0 2|c, 0 2|", Rows(11));
    EXPECT_EQ(TRUE, SetState(11, -1, 0, LVIS_SELECTED));
    EXPECT_EQ(0, Send(11, LVM_GETSELECTEDCOUNT));
}

TEST_F(CommonControls, Finding) {
    for (const LPCWSTR text : {TEXT("bolt"), TEXT("Bolt M8"), TEXT("nut"), TEXT("BOLT")})
        Insert(11, 99, text, text[0]);
    struct Row {
        int behind;
        UINT flags;
        LPCWSTR text;
        LPARAM number;
        LRESULT found;
    };
    const Row rows[] = {
        {-1, LVFI_STRING, TEXT("bolt"), 0, 0},
        {0, LVFI_STRING, TEXT("bolt"), 0, 3},
        {3, LVFI_STRING, TEXT("bolt"), 0, -1},
        {3, LVFI_STRING | LVFI_WRAP, TEXT("bolt"), 0, 0},
        {0, LVFI_STRING | LVFI_PARTIAL, TEXT("BOLT"), 0, 1},
        {-1, LVFI_STRING, TEXT("screw"), 0, -1},
        {-1, LVFI_PARAM, nullptr, 'n', 2},
        {2, LVFI_PARAM, nullptr, 'n', -1},
    };
    int number = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(number++);
        EXPECT_EQ(row.found, Find(11, row.behind, row.flags, row.text, row.number));
    }
}

int CALLBACK CompareNumbers(LPARAM a, LPARAM b, LPARAM direction) {
    return static_cast<int>((a / 10 - b / 10) * direction);
}

TEST_F(CommonControls, Sorting) {
    const LPARAM numbers[] = {31, 10, 22, 11, 30, 20};
    for (const LPARAM number : numbers)
        Insert(11, 99, TEXT("r"), number);
    // Equal ones keep their order.
    EXPECT_EQ(TRUE, Send(11, LVM_SORTITEMS, 1, reinterpret_cast<LPARAM>(CompareNumbers)));
    EXPECT_EQ("r, 10 0|r, 11 0|r, 22 0|r, 20 0|r, 31 0|r, 30 0|", Rows(11));
    EXPECT_EQ(TRUE, Send(11, LVM_SORTITEMS, static_cast<WPARAM>(-1),
                         reinterpret_cast<LPARAM>(CompareNumbers)));
    EXPECT_EQ("r, 31 0|r, 30 0|r, 22 0|r, 20 0|r, 10 0|r, 11 0|", Rows(11));
}

TEST_F(CommonControls, ColumnsAndStyles) {
    EXPECT_EQ(60, Send(10, LVM_GETCOLUMNWIDTH, 1));
    EXPECT_EQ(TRUE, Send(10, LVM_SETCOLUMNWIDTH, 1, 123));
    EXPECT_EQ(123, Send(10, LVM_GETCOLUMNWIDTH, 1));
    EXPECT_EQ(FALSE, Send(10, LVM_SETCOLUMNWIDTH, 2, 5));
    // As wide as its widest text.
    Send(10, LVM_DELETEALLITEMS, 0, 0);
    LRESULT widths[2] = {};
    for (const LPCWSTR text : {TEXT("short"), TEXT("a text that is a good deal longer")}) {
        Insert(10, 0, text, 0);
        EXPECT_EQ(TRUE, Send(10, LVM_SETCOLUMNWIDTH, 0, LVSCW_AUTOSIZE));
        widths[text[0] == 's' ? 0 : 1] = Send(10, LVM_GETCOLUMNWIDTH, 0, 0);
    }
    EXPECT_LT(0, widths[0]);
    EXPECT_LT(widths[0], widths[1]);
    EXPECT_EQ(0, Send(10, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, LVS_EX_FULLROWSELECT));
    EXPECT_EQ(LVS_EX_FULLROWSELECT, static_cast<DWORD>(Send(10, LVM_GETEXTENDEDLISTVIEWSTYLE)));
}

TEST_F(CommonControls, StatusBar) {
    EXPECT_EQ(TRUE, SendText(12, SB_SETTEXTW, 0, TEXT("five5")));
    EXPECT_EQ(5, LOWORD(static_cast<ULONG_PTR>(Send(12, SB_GETTEXTLENGTHW))));
    GuardedBuffer buffer(6);
    EXPECT_EQ(5, LOWORD(static_cast<ULONG_PTR>(
                     Send(12, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(buffer.data())))));
    EXPECT_EQ(TEXT("five5"), buffer.Text());
    EXPECT_TRUE(buffer.IsGuardWhole());
    EXPECT_EQ(FALSE, SendText(12, SB_SETTEXTW, 1, TEXT("x")));
    EXPECT_EQ(TRUE, SendText(12, SB_SETTEXTW, 0, nullptr));
    EXPECT_EQ(0, LOWORD(static_cast<ULONG_PTR>(Send(12, SB_GETTEXTLENGTHW))));
}

TEST_F(CommonControls, DateFields) {
    const auto get = [this](int id) {
        SYSTEMTIME time{};
        const LRESULT kind = Send(id, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time));
        if (kind != GDT_VALID) return std::to_string(kind);
        return std::to_string(time.wYear) + "-" + std::to_string(time.wMonth) + "-" +
               std::to_string(time.wDay) + " " + std::to_string(time.wDayOfWeek);
    };
    const auto set = [this](int id, LRESULT kind, WORD year, WORD month, WORD day) {
        SYSTEMTIME time{};
        time.wYear = year;
        time.wMonth = month;
        time.wDay = day;
        return Send(id, DTM_SETSYSTEMTIME, static_cast<WPARAM>(kind),
                    reinterpret_cast<LPARAM>(&time));
    };
    EXPECT_EQ("1", get(14));
    for (const int id : {13, 14}) {
        EXPECT_EQ(TRUE, set(id, GDT_VALID, 2024, 2, 29));
        EXPECT_EQ("2024-2-29 4", get(id));
        EXPECT_EQ(FALSE, set(id, GDT_VALID, 2024, 13, 1));
        EXPECT_EQ("2024-2-29 4", get(id));
    }
    EXPECT_EQ(TRUE, set(14, GDT_NONE, 2024, 1, 1));
    EXPECT_EQ("1", get(14));
    EXPECT_EQ(FALSE, set(13, GDT_NONE, 2024, 1, 1));
    EXPECT_EQ("2024-2-29 4", get(13));
}

}  // namespace
