// Windows by their handles, what a resource library holds for them, and the desk that answers
// message boxes.
#include <gtest/gtest.h>

#include <deque>
#include <vector>

#include "platform/desk.h"
#include "tests/contract/dialog_support.h"

namespace {

constexpr int kIcon = 1;
constexpr int kNoIcon = 99;

class Windows : public DialogTest {
protected:
    HICON Icon(int id, UINT flags = LR_DEFAULTSIZE) const {
        return static_cast<HICON>(
            LoadImageW(library_, MAKEINTRESOURCEW(static_cast<WORD>(id)), IMAGE_ICON, 0, 0, flags));
    }
};

TEST_F(Windows, DestroyTakesTheChildren) {
    Show(kDialog);
    const HWND window = dialog_;
    const HWND label = Item(9);
    const HWND field = Item(11);
    EXPECT_TRUE(DestroyWindow(label));
    EXPECT_FALSE(IsWindow(label));
    EXPECT_EQ(nullptr, Item(9));
    EXPECT_TRUE(DestroyWindow(window));
    for (const HWND gone : {window, field, label}) {
        EXPECT_FALSE(IsWindow(gone));
        EXPECT_FALSE(DestroyWindow(gone));
        EXPECT_EQ(nullptr, GetDlgItem(gone, 9));
        EXPECT_EQ(0, SendMessageW(gone, WM_GETTEXTLENGTH, 0, 0));
    }
}

TEST_F(Windows, DialogsThatCannotBeMade) {
    constexpr WORD kUnknownClass = 101;
    for (const WORD id : {WORD{999}, WORD{2}, kUnknownClass}) {
        SetLastError(kPoisonError);
        EXPECT_EQ(nullptr, Create(id));
        const bool isClass = id == kUnknownClass;
        const DWORD error = GetLastError();
        KNOWN_GAP(isClass ? eGap::windows : eGap::none,
                  error == (isClass ? ERROR_CANNOT_FIND_WND_CLASS : ERROR_RESOURCE_NAME_NOT_FOUND))
            << id << ": " << error;
        EXPECT_EQ(-1, Run(id));
        EXPECT_EQ(std::string::npos, Record().Take().find("init"));
    }
}

TEST_F(Windows, Icons) {
    Show(kButtons);
    const HICON one = Icon(kIcon);
    const HICON two = Icon(kIcon, 0);
    EXPECT_NE(nullptr, one);
    EXPECT_NE(nullptr, two);
    EXPECT_NE(one, two);
    EXPECT_EQ(nullptr, Icon(kNoIcon));
    const auto set = [&](HICON icon) {
        return Send(12, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
    };
    EXPECT_EQ(0, set(one));
    EXPECT_EQ(reinterpret_cast<LRESULT>(one), set(two));
    EXPECT_EQ(reinterpret_cast<LRESULT>(two), set(nullptr));
    for (const HICON icon : {one, two}) {
        EXPECT_TRUE(DestroyIcon(icon));
        EXPECT_FALSE(DestroyIcon(icon));
    }
}

TEST(Cursors, LoadAndSet) {
    const HCURSOR arrow = LoadCursorW(nullptr, IDC_ARROW);
    const HCURSOR wait = LoadCursorW(nullptr, IDC_WAIT);
    EXPECT_NE(arrow, wait);
    SetCursor(arrow);
    EXPECT_EQ(arrow, SetCursor(wait));
    EXPECT_EQ(wait, SetCursor(arrow));
}

constexpr UINT kBoxButtons = 0x0F;  // the part of a box's type that names its buttons

// Gives the answers in turn and keeps what was asked; asks in its turn about "outer".
class AnsweringDesk : public Desk {
public:
    explicit AnsweringDesk(std::deque<int> answers) : answers_(std::move(answers)) {}
    int AnswerMessageBox(const MessageBoxQuestion& question) override {
        asked.push_back(wtext::ToUtf8(question.caption) + "|" + wtext::ToUtf8(question.text) + "|" +
                        std::to_string(question.type & kBoxButtons));
        if (answers_.empty()) return IDCANCEL;
        const int answer = answers_.front();
        answers_.pop_front();
        if (question.text == TEXT("outer")) {
            within = MessageBoxW(nullptr, TEXT("inner"), TEXT("c"), MB_YESNO);
        }
        return answer;
    }
    std::vector<std::string> asked;
    int within = 0;

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
        {MB_YESNOCANCEL | MB_ICONWARNING, IDNO, "Find|Done.|3"},
        {MB_YESNOCANCEL | MB_ICONERROR, IDCANCEL, "Find|Done.|3"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.asked);
        AnsweringDesk desk({row.answer});
        const DeskScope scope(desk);
        EXPECT_EQ(row.answer, MessageBoxW(nullptr, TEXT("Done."), TEXT("Find"), row.type));
        EXPECT_EQ(std::vector<std::string>{row.asked}, desk.asked);
    }
}

TEST(Desks, ScopesAndBoxesWithin) {
    AnsweringDesk outer({IDYES, IDNO});
    const DeskScope outerScope(outer);
    {
        AnsweringDesk inner({IDNO});
        const DeskScope innerScope(inner);
        EXPECT_EQ(IDNO, MessageBoxW(nullptr, TEXT("2"), TEXT("i"), MB_YESNO));
    }
    EXPECT_EQ(IDYES, MessageBoxW(nullptr, TEXT("outer"), TEXT("o"), MB_YESNO));
    EXPECT_EQ(IDNO, outer.within);
    EXPECT_EQ(2u, outer.asked.size());
}

}  // namespace
