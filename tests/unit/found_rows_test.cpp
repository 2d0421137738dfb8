// What a search writes into the controls of a found dialog, by messages to real controls.
#include <cstdlib>

#include "resource/control_ids.h"
#include "search/found_rows.h"
#include "tests/unit/search_fixture.h"

namespace {

using Names = std::vector<std::string>;

class FoundRows : public SearchTest {
protected:
    FoundRows() : list_(dialog_, &slot_) {
        dialog_.Initialize();
        window_ = CreateWindowExW(0, TEXT("Static"), TEXT(""), WS_POPUP, 0, 0, 400, 300, nullptr,
                                  nullptr, nullptr, nullptr);
        const struct {
            int id;
            const WCHAR* className;
            DWORD style;
        } kControls[] = {{IDC_FOUND_LIST, WC_LISTVIEWW, LVS_REPORT},
                         {IDC_FOUND_STATUS, STATUSCLASSNAMEW, 0},
                         {IDC_FOUND_STOP, TEXT("Button"), 0},
                         {IDC_FOUND_SAVE, TEXT("Button"), WS_DISABLED},
                         {IDOK, TEXT("Button"), WS_DISABLED}};
        for (const auto& row : kControls) {
            EXPECT_NE(nullptr,
                      CreateWindowExW(0, row.className, TEXT(""), WS_CHILD | row.style, 0, 0, 100,
                                      50, window_, reinterpret_cast<HMENU>(INT_PTR{row.id}),
                                      nullptr, nullptr));
        }
        for (int i = 0; i < 2; ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_WIDTH;
            column.cx = 10;
            Send(LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), &column);
        }
        list_.window = window_;
        list_.statusBar = GetDlgItem(window_, IDC_FOUND_STATUS);
    }
    ~FoundRows() override {
        for (int row = 0; row < Count(); ++row) {
            std::free(reinterpret_cast<WCHAR*>(Item(row, 0).lParam));
        }
        DestroyWindow(window_);
    }

    LRESULT Send(UINT message, WPARAM wParam, const void* lParam) const {
        return SendDlgItemMessageW(window_, IDC_FOUND_LIST, message, wParam,
                                   reinterpret_cast<LPARAM>(lParam));
    }
    int Count() const { return static_cast<int>(Send(LVM_GETITEMCOUNT, 0, nullptr)); }
    LVITEMW Item(int row, int column) const {
        LVITEMW item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = row;
        item.iSubItem = column;
        item.pszText = text_;
        item.cchTextMax = 500;
        EXPECT_TRUE(Send(LVM_GETITEMW, 0, &item));
        return item;
    }
    std::string Text(int row, int column) const { return wtext::ToUtf8(Item(row, column).pszText); }
    std::string Status() const {
        SendMessageW(list_.statusBar, SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text_));
        return wtext::ToUtf8(text_);
    }
    void Look(const WText& place) {
        controls_.SetLookIn(place);
        controls_.Check(IDC_LOOK_SUBFOLDERS, true);
        RunSearch(list_);
    }

    SRxFoundList list_;
    HWND window_;
    mutable WCHAR text_[500] = {};
};

TEST_F(FoundRows, HitsBecomeRowsAndTheDialogIsReadied) {
    Tree({"a/one.hpa", "a/two.hpa", "b/one.hpa", "b/other.txt"});
    Criterion("File name contains .hpa");
    Look(Wide(""));
    ASSERT_EQ(3, Count());
    Names shown;
    for (int row = 0; row < 3; ++row) {
        const std::string name = Text(row, 0);
        const std::string folder = Text(row, 1);
        EXPECT_EQ('\\', folder.back());
        const WText fullName = reinterpret_cast<const WCHAR*>(Item(row, 0).lParam);
        EXPECT_EQ(folder + name, wtext::ToUtf8(fullName));
        shown.push_back(folder.substr(folder.size() - 2, 1) + "/" + name);
    }
    EXPECT_EQ((Names{"a/one.hpa", "a/two.hpa", "b/one.hpa"}), Sorted(shown));
    EXPECT_EQ(nullptr, slot_) << "rows, and nothing on the slot";
    EXPECT_EQ("3 file(s) found.", Status());
    EXPECT_LT(10, Send(LVM_GETCOLUMNWIDTH, 0, nullptr)) << "as wide as the names";
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(window_, IDC_FOUND_STOP)));
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(window_, IDC_FOUND_SAVE)));
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(window_, IDOK)));
}

TEST_F(FoundRows, ClosingTexts) {
    Tree({"one.hpa"});
    Criterion("File name contains x");
    Look(Wide(""));
    EXPECT_EQ("No files were found.", Status());
    delete std::exchange(dialog_.criteriaHead, nullptr);
    delete std::exchange(list_.rootNode, nullptr);
    Criterion("File name contains one");
    onFile_ = [](SRxFoundList& list) { list.stopRequested = true; };
    Look(Wide(""));
    EXPECT_EQ("The search was stopped. 1 file(s) found.", Status());
    delete std::exchange(list_.rootNode, nullptr);
    Look(WText());
    EXPECT_EQ("1 file(s) found.", Status()) << "nowhere to look: the rows stay";
}

TEST_F(FoundRows, OneRowForWhatCountsAsOneFile) {
    const struct {
        const WCHAR* folder;
        const WCHAR* name;
        int rows;
        const char* label;
    } kRows[] = {
        {TEXT("Z:\\a\\"), TEXT("A.hpa"), 1, "first"},
        {TEXT("Z:\\a\\"), TEXT("A.hpa"), 1, "the same"},
        {TEXT("Z:\\A\\"), TEXT("a.HPA"), 1, "but for case"},
        {TEXT("Z:\\\uFF41\\"), TEXT("A.hpa"), 1, "a folder but for width"},
        {TEXT("Z:\\b\\"), TEXT("A.hpa"), 2, "another folder"},
        {TEXT("Z:\\b\\"), TEXT("a.hpa"), 2, "found behind the row of the first folder"},
    };
    int insertIndex = 0;
    for (const auto& row : kRows) {
        const MDxFileNameNode node((WText(row.folder) + row.name).c_str(), -1, false);
        AddFoundRow(list_, row.folder, row.name, node, insertIndex);
        EXPECT_EQ(row.rows, Count()) << row.label;
        EXPECT_EQ(row.rows, insertIndex) << row.label;
    }
    EXPECT_EQ(3u, leftOut_.size()) << "other files, whose rows stand for them";
}

TEST_F(FoundRows, ProgressPumpsAtOnceAndThenEveryEleventhTime) {
    EXPECT_TRUE(ShowProgress(list_, TEXT("Z:\\here")));
    EXPECT_EQ("Searching Z:\\here", Status());
    PostMessageW(window_, WM_KEYDOWN, VK_ESCAPE, 0);
    for (int call = 0; call < 10; ++call) {
        EXPECT_TRUE(ShowProgress(list_, TEXT("x"))) << call;
    }
    EXPECT_FALSE(ShowProgress(list_, TEXT("x"))) << "Escape is seen by the second pump";
    // The end of the thread's loop stops the search and isn't lost.
    list_.stopRequested = false;
    list_.pumpCounter = 10;
    PostQuitMessage(7);
    EXPECT_FALSE(ShowProgress(list_, TEXT("x")));
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(static_cast<UINT>(WM_QUIT), message.message);
    EXPECT_EQ(7u, message.wParam);
}

}  // namespace
