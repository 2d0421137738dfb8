// Controls at their limits: numbers out of range, windows that are gone, and a great many rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "tests/contract/dialog_support.h"

namespace {

constexpr int kList = 10;
constexpr int kNames = 11;
constexpr int kBox = 12;
constexpr int kField = 13;
constexpr int kStatus = 14;
constexpr int kDate = 15;
constexpr int kButton = 16;

class Limits : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        Show(TemplateBuilder()
                 .Add(WC_LISTVIEWW, TEXT(""), kTab | LVS_REPORT, kList)
                 .Add(TEXT("ListBox"), TEXT(""), kTab | LBS_NOTIFY, kNames)
                 .Add(TEXT("ComboBox"), TEXT(""), kTab | CBS_DROPDOWN, kBox)
                 .Add(TEXT("Edit"), TEXT("text"), kTab, kField)
                 .Add(STATUSCLASSNAMEW, TEXT(""), kShown, kStatus)
                 .Add(DATETIMEPICK_CLASSW, TEXT(""), kTab, kDate)
                 .Add(TEXT("Button"), TEXT("Push"), kTab, kButton));
        for (int i = 0; i < 2; ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_WIDTH;
            column.cx = 100;
            Send(kList, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                 reinterpret_cast<LPARAM>(&column));
            Insert(i, i);
            SendText(kNames, LB_ADDSTRING, 0, TEXT("a"));
            SendText(kBox, CB_ADDSTRING, 0, TEXT("a"));
        }
    }
    LRESULT Insert(int at, LPARAM number) const {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = at;
        item.pszText = const_cast<LPWSTR>(TEXT("a row of the list"));
        item.lParam = number;
        return Send(kList, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
};

struct Message {
    const char* label;
    int id;
    UINT message;
    LRESULT failed;  // for an index out of range
};

// Each with a buffer of zeros behind the second number.
constexpr Message kIndexed[] = {
    {"CB_GETLBTEXT", kBox, CB_GETLBTEXT, CB_ERR},
    {"CB_GETLBTEXTLEN", kBox, CB_GETLBTEXTLEN, CB_ERR},
    {"CB_GETITEMDATA", kBox, CB_GETITEMDATA, CB_ERR},
    {"CB_SETITEMDATA", kBox, CB_SETITEMDATA, CB_ERR},
    {"CB_DELETESTRING", kBox, CB_DELETESTRING, CB_ERR},
    {"CB_INSERTSTRING", kBox, CB_INSERTSTRING, CB_ERR},
    {"LB_GETTEXT", kNames, LB_GETTEXT, LB_ERR},
    {"LB_GETTEXTLEN", kNames, LB_GETTEXTLEN, LB_ERR},
    {"LB_GETITEMDATA", kNames, LB_GETITEMDATA, LB_ERR},
    {"LB_SETITEMDATA", kNames, LB_SETITEMDATA, LB_ERR},
    {"LB_DELETESTRING", kNames, LB_DELETESTRING, LB_ERR},
    {"LB_INSERTSTRING", kNames, LB_INSERTSTRING, LB_ERR},
    {"LVM_DELETEITEM", kList, LVM_DELETEITEM, FALSE},
    {"LVM_SETITEMTEXTW", kList, LVM_SETITEMTEXTW, FALSE},
    {"LVM_SETITEMSTATE", kList, LVM_SETITEMSTATE, FALSE},
    {"LVM_GETITEMSTATE", kList, LVM_GETITEMSTATE, 0},
    {"LVM_GETITEMRECT", kList, LVM_GETITEMRECT, FALSE},
    {"LVM_GETCOLUMNWIDTH", kList, LVM_GETCOLUMNWIDTH, 0},
    {"LVM_SETCOLUMNWIDTH", kList, LVM_SETCOLUMNWIDTH, FALSE},
};

TEST_F(Limits, IndexOutOfRange) {
    for (const Message& row : kIndexed) {
        for (const int index : {3, 99, 0x7FFFFFFF, -2}) {
            std::vector<BYTE> zeros(sizeof(LVITEMW) + 512);
            const LRESULT result = Send(row.id, row.message, static_cast<WPARAM>(index),
                                        reinterpret_cast<LPARAM>(zeros.data()));
            EXPECT_EQ(row.failed, result) << row.label << " of " << index;
        }
    }
    EXPECT_EQ(2, Send(kBox, CB_GETCOUNT));
    EXPECT_EQ(2, Send(kNames, LB_GETCOUNT));
    EXPECT_EQ(2, Send(kList, LVM_GETITEMCOUNT));
}

TEST_F(Limits, WindowsThatAreGone) {
    constexpr Message kOthers[] = {
        {"WM_GETTEXTLENGTH", kField, WM_GETTEXTLENGTH, 0},
        {"EM_GETSEL", kField, EM_GETSEL, 0},
        {"SB_SETTEXTW", kStatus, SB_SETTEXTW, 0},
        {"DTM_GETSYSTEMTIME", kDate, DTM_GETSYSTEMTIME, 0},
        {"DTM_SETSYSTEMTIME", kDate, DTM_SETSYSTEMTIME, 0},
        {"BM_SETCHECK", kButton, BM_SETCHECK, 0},
        {"WM_SETICON", kButton, WM_SETICON, 0},
        {"LVM_GETHEADER", kList, LVM_GETHEADER, 0},
    };
    std::vector<std::pair<Message, HWND>> messages;
    for (const Message& row : kIndexed)
        messages.emplace_back(row, Item(row.id));
    for (const Message& row : kOthers)
        messages.emplace_back(row, Item(row.id));
    DestroyWindow(dialog_);
    for (const auto& [row, window] : messages) {
        SetLastError(kPoisonError);
        EXPECT_EQ(0, SendMessageW(window, row.message, 0, 0)) << row.label;
        EXPECT_EQ(DWORD{ERROR_INVALID_WINDOW_HANDLE}, GetLastError()) << row.label;
        EXPECT_FALSE(PostMessageW(window, row.message, 0, 0)) << row.label;
    }
}

int CALLBACK CompareDown(LPARAM a, LPARAM b, LPARAM) {
    return a < b ? 1 : a > b ? -1 : 0;
}

// Ten times the rows take some ten times as long; a hundred times would tell of a walk over all
// rows for each. Natively up to as many as a long search finds.
TEST_F(Limits, ManyRows) {
    struct Times {
        double insert, sort, find;
    };
    const auto measure = [this](int count) {
        using Clock = std::chrono::steady_clock;
        const auto since = [](Clock::time_point start) {
            return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        };
        Send(kList, LVM_DELETEALLITEMS);
        auto start = Clock::now();
        for (int i = 0; i < count; ++i)
            Insert(i, i);
        Times times{};
        times.insert = since(start);
        start = Clock::now();
        EXPECT_EQ(TRUE, Send(kList, LVM_SORTITEMS, 0, reinterpret_cast<LPARAM>(CompareDown)));
        times.sort = since(start);
        LVFINDINFOW wanted{};
        wanted.flags = LVFI_PARAM;
        start = Clock::now();
        for (int i = 0; i < 10; ++i) {
            wanted.lParam = i;
            EXPECT_EQ(count - 1 - i, Send(kList, LVM_FINDITEMW, static_cast<WPARAM>(-1),
                                          reinterpret_cast<LPARAM>(&wanted)));
        }
        times.find = since(start);
        EXPECT_EQ(count, Send(kList, LVM_GETITEMCOUNT));
        return times;
    };
    Record().onMessage = nullptr;
    Send(kList, WM_SETREDRAW, FALSE);
    const int few = IsNativeLayer() ? 20000 : 2000;
    // The best of three: the machine has other work.
    const auto best = [&measure](int count) {
        Times times = measure(count);
        for (int i = 0; i < 2; ++i) {
            const Times again = measure(count);
            times = {std::min(times.insert, again.insert), std::min(times.sort, again.sort),
                     std::min(times.find, again.find)};
        }
        return times;
    };
    const Times small = best(few);
    const Times large = best(10 * few);
    constexpr double kSlackMs = 100;
    EXPECT_GT(40 * small.insert + kSlackMs, large.insert);
    EXPECT_GT(40 * small.sort + kSlackMs, large.sort);
    EXPECT_GT(40 * small.find + kSlackMs, large.find);
}

}  // namespace
