// List views, status bars and date fields: their state.
#include <gtest/gtest.h>

#include "tests/contract/dialog_support.h"

namespace {

constexpr int kSingle = 10;
constexpr int kMany = 11;
constexpr int kStatus = 12;
constexpr int kDate = 13;

class CommonControls : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(kCommonControls);
        for (const int id : {kSingle, kMany}) {
            for (const int at : {0, 1}) {
                LVCOLUMNW column{};
                column.mask = LVCF_TEXT | LVCF_WIDTH;
                column.cx = 60;
                column.pszText = const_cast<LPWSTR>(TEXT("title"));
                EXPECT_EQ(at, Send(id, LVM_INSERTCOLUMNW, at == 0 ? 0 : 99,
                                   reinterpret_cast<LPARAM>(&column)));
            }
        }
    }
    LRESULT Insert(int id, int at, LPCWSTR text, LPARAM number = 0) const {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = at;
        item.pszText = const_cast<LPWSTR>(text);
        item.lParam = number;
        return Send(id, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
    LRESULT SetText(int at, int column, LPCWSTR text) const {
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = const_cast<LPWSTR>(text);
        return Send(kMany, LVM_SETITEMTEXTW, static_cast<WPARAM>(at),
                    reinterpret_cast<LPARAM>(&item));
    }
    LRESULT Select(int id, int at, bool select) const {
        LVITEMW item{};
        item.stateMask = LVIS_SELECTED;
        item.state = select ? LVIS_SELECTED : 0;
        return Send(id, LVM_SETITEMSTATE, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&item));
    }
    std::string Selected(int id) const {
        std::string rows;
        for (LRESULT at = -1;
             (at = Send(id, LVM_GETNEXTITEM, static_cast<WPARAM>(at), LVNI_SELECTED)) >= 0;)
            rows += std::to_string(at);
        return rows;
    }
    // Text, second text and number of each row.
    std::string Rows() const {
        std::string rows;
        for (int i = 0; i < Send(kMany, LVM_GETITEMCOUNT); ++i) {
            for (int column = 0; column < 2; ++column) {
                WCHAR text[32] = {kGuard, 0};
                LVITEMW item{};
                item.mask = LVIF_TEXT | LVIF_PARAM;
                item.iItem = i;
                item.iSubItem = column;
                item.pszText = text;
                item.cchTextMax = 32;
                EXPECT_EQ(TRUE, Send(kMany, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)));
                rows += wtext::ToUtf8(item.pszText);
                rows += column == 0 ? "," : " " + std::to_string(item.lParam) + "|";
            }
        }
        return rows;
    }
};

int CALLBACK CompareNumbers(LPARAM a, LPARAM b, LPARAM direction) {
    return static_cast<int>((a / 10 - b / 10) * direction);
}

TEST_F(CommonControls, RowsTextsAndOrder) {
    EXPECT_EQ(0, Insert(kMany, 0, TEXT("nut"), 31));
    EXPECT_EQ(1, Insert(kMany, 99, TEXT("Bolt"), 10));
    EXPECT_EQ(0, Insert(kMany, 0, TEXT("pin"), 30));
    EXPECT_EQ(TRUE, SetText(1, 1, TEXT("C")));
    EXPECT_EQ(TRUE, SetText(0, 0, TEXT("Pin")));
    EXPECT_EQ("Pin, 30|nut,C 31|Bolt, 10|", Rows());
    // Equal ones keep their order.
    const auto sort = [this](int direction) {
        EXPECT_EQ(TRUE, Send(kMany, LVM_SORTITEMS, static_cast<WPARAM>(direction),
                             reinterpret_cast<LPARAM>(CompareNumbers)));
    };
    sort(1);
    EXPECT_EQ("Bolt, 10|Pin, 30|nut,C 31|", Rows());
    sort(-1);
    EXPECT_EQ("Pin, 30|nut,C 31|Bolt, 10|", Rows());
    EXPECT_EQ(TRUE, Send(kMany, LVM_SETCOLUMNWIDTH, 1, LVSCW_AUTOSIZE));
    EXPECT_EQ(
        0, Send(kMany, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT));
    EXPECT_EQ(TRUE, Send(kMany, LVM_DELETEALLITEMS));
    EXPECT_EQ("", Rows());
}

TEST_F(CommonControls, Selection) {
    for (const int id : {kSingle, kMany}) {
        for (const LPCWSTR text : {TEXT("a"), TEXT("b"), TEXT("c")})
            Insert(id, 99, text);
        EXPECT_EQ("", Selected(id));
        EXPECT_EQ(TRUE, Select(id, 0, true));
        EXPECT_EQ(TRUE, Select(id, 2, true));
        EXPECT_EQ(id == kSingle ? "2" : "02", Selected(id));
        EXPECT_EQ(TRUE, Select(id, 2, false));
        EXPECT_EQ(id == kSingle ? "" : "0", Selected(id));
        EXPECT_EQ(FALSE, Select(id, 3, true));
    }
}

TEST_F(CommonControls, StatusBar) {
    EXPECT_EQ(TRUE, SendText(kStatus, SB_SETTEXTW, 0, TEXT("five5")));
    EXPECT_EQ(5, LOWORD(static_cast<ULONG_PTR>(Send(kStatus, SB_GETTEXTLENGTHW))));
    GuardedBuffer buffer(6);
    EXPECT_EQ(5, LOWORD(static_cast<ULONG_PTR>(
                     Send(kStatus, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(buffer.data())))));
    EXPECT_EQ(TEXT("five5"), buffer.Text());
    EXPECT_TRUE(buffer.IsGuardWhole());
}

TEST_F(CommonControls, DateField) {
    const auto set = [this](WORD year, WORD month, WORD day) {
        SYSTEMTIME time{};
        time.wYear = year;
        time.wMonth = month;
        time.wDay = day;
        return Send(kDate, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
    };
    EXPECT_EQ(TRUE, set(2024, 2, 29));
    EXPECT_EQ(FALSE, set(2024, 13, 1));
    SYSTEMTIME time{};
    EXPECT_EQ(GDT_VALID, Send(kDate, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time)));
    EXPECT_EQ(29, time.wDay);
    EXPECT_EQ(4, time.wDayOfWeek);
}

}  // namespace
