// The system's dialogs for files and folders, and the desk that answers them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "platform/native_path.h"
#include "tests/contract/dialog_support.h"
#include "tests/scripted_desk.h"

namespace {

constexpr DWORD kBrowse = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_ENABLEHOOK |
                          OFN_NOCHANGEDIR | OFN_HIDEREADONLY;

// What the hook and the callback were told.
std::string told;

UINT_PTR CALLBACK Hook(HWND, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        told += reinterpret_cast<const OPENFILENAMEW*>(lParam)->lCustData == 7 ? "init " : "other ";
    }
    if (message != WM_NOTIFY) return 0;
    const auto& notice = *reinterpret_cast<const OFNOTIFYW*>(lParam);
    if (notice.hdr.code == CDN_INITDONE) told += "done ";
    return 0;
}

class CommonDialogs : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        start_ = CurrentWideFolder();
        top_ = start_ + TEXT("\\common_dialogs");
        std::filesystem::remove_all("common_dialogs");
        std::filesystem::create_directories("common_dialogs/within");
        for (const char* name : {"a.txt", "b.hpa", "within/c.txt"})
            std::ofstream(std::string("common_dialogs/") + name) << "x";
        told.clear();
        owner_ = Create(kDialog);
        request_.lStructSize = sizeof request_;
        request_.hwndOwner = owner_;
        request_.lpstrFilter = TEXT("Parts\0*.hpa\0All\0*.*\0");
        request_.lpstrFile = buffer_;
        request_.nMaxFile = 1024;
        request_.lpstrInitialDir = top_.c_str();
        request_.lpstrTitle = TEXT("Look in a file");
        request_.Flags = kBrowse;
        request_.lCustData = 7;
        request_.lpfnHook = Hook;
    }
    void TearDown() override {
        DialogTest::TearDown();
        SetCurrentDirectoryW(start_.c_str());
        std::filesystem::remove_all("common_dialogs");
    }
    WText In(LPCWSTR name) const { return top_ + TEXT("\\") + name; }

    WText start_;
    WText top_;
    HWND owner_ = nullptr;
    WCHAR buffer_[1024] = {};
    OPENFILENAMEW request_{};
};

TEST_F(CommonDialogs, FileToOpen) {
    struct Row {
        const char* label;
        std::vector<WText> answers;  // the last one stands, or cancels
        bool box;
    };
    const Row rows[] = {
        {"a file", {In(TEXT("b.hpa"))}, false},
        {"cancelled", {TEXT("")}, false},
        {"a missing file", {In(TEXT("none.hpa")), TEXT("")}, true},
        {"a folder", {In(TEXT("within")), In(TEXT("within\\c.txt"))}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        ScriptedDesk desk;
        const DeskScope scope(desk);
        for (std::size_t i = 0; i < row.answers.size(); ++i) {
            desk.ExpectFile(i == 0 ? "Look in a file; Parts|All|; " + wtext::ToUtf8(top_) : "again",
                            row.answers[i]);
            if (i == 0 && row.box) desk.Expect("", IDOK);
        }
        told.clear();
        buffer_[0] = 0;
        EXPECT_EQ(!row.answers.back().empty(), GetOpenFileNameW(&request_) != FALSE);
        EXPECT_EQ(0u, CommDlgExtendedError());
        EXPECT_EQ("init done ", told);
        EXPECT_EQ(row.answers.back(), buffer_);
        EXPECT_EQ(start_, CurrentWideFolder());
        EXPECT_TRUE(IsWindowEnabled(owner_));
    }
}

TEST_F(CommonDialogs, BufferThatIsTooSmall) {
    const WText path = In(TEXT("b.hpa"));
    ScriptedDesk desk;
    const DeskScope scope(desk);
    desk.ExpectFile("", path);
    request_.nMaxFile = static_cast<DWORD>(path.size());
    EXPECT_FALSE(GetOpenFileNameW(&request_));
    EXPECT_EQ(DWORD{FNERR_BUFFERTOOSMALL}, CommDlgExtendedError());
}

// As a desk is that knows no files.
class RefusingDesk : public Desk {
public:
    int AnswerMessageBox(const MessageBoxQuestion&) override { return IDCANCEL; }
};

TEST_F(CommonDialogs, ADeskThatKnowsNoFiles) {
    RefusingDesk desk;
    const DeskScope scope(desk);
    EXPECT_FALSE(GetOpenFileNameW(&request_));
    EXPECT_EQ(0u, CommDlgExtendedError());
}

// Chooses the folder given with it, and lets no folder be taken whose name is "within".
int CALLBACK ChooseFolder(HWND dialog, UINT message, LPARAM lParam, LPARAM data) {
    if (message == BFFM_INITIALIZED && data != 0) {
        told += "init ";
        SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, data);
    }
    WCHAR path[MAX_PATH + 1] = {};
    if (message == BFFM_SELCHANGED &&
        SHGetPathFromIDListW(reinterpret_cast<LPCITEMIDLIST>(lParam), path)) {
        told += wtext::ToUtf8(PathFindFileNameW(path)) + " ";
        const bool isGood = WTextView(PathFindFileNameW(path)) != TEXT("within");
        // Older systems read the first number, newer ones the second.
        SendMessageW(dialog, BFFM_ENABLEOK, isGood ? 1 : 0, isGood ? 1 : 0);
        EXPECT_EQ(isGood, IsWindowEnabled(GetDlgItem(dialog, IDOK)) != FALSE);
    }
    return 0;
}

TEST_F(CommonDialogs, Folder) {
    struct Row {
        const char* label;
        std::vector<WText> answers;
        std::string last;  // the last folder that was chosen
    };
    const Row rows[] = {
        {"a folder", {start_}, wtext::ToUtf8(PathFindFileNameW(start_.c_str()))},
        {"cancelled", {TEXT("")}, "common_dialogs"},
        {"one that can't be taken", {In(TEXT("within")), top_}, "common_dialogs"},
    };
    IMalloc* allocator = nullptr;
    ASSERT_EQ(S_OK, SHGetMalloc(&allocator));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        ScriptedDesk desk;
        const DeskScope scope(desk);
        for (std::size_t i = 0; i < row.answers.size(); ++i) {
            desk.ExpectFolder(i == 0 ? "Look in a folder; " + wtext::ToUtf8(top_) : "; again",
                              row.answers[i]);
        }
        told.clear();
        WCHAR name[MAX_PATH] = {};
        BROWSEINFOW request{};
        request.hwndOwner = owner_;
        request.pszDisplayName = name;
        request.lpszTitle = TEXT("Look in a folder");
        request.ulFlags = BIF_EDITBOX | BIF_NEWDIALOGSTYLE;
        request.lpfn = ChooseFolder;
        request.lParam = reinterpret_cast<LPARAM>(top_.c_str());
        const auto list = SHBrowseForFolderW(&request);
        EXPECT_EQ(row.answers.back().empty(), list == nullptr);
        EXPECT_NE(std::string::npos, told.find("init ")) << told;
        const std::string last = row.last + " ";
        EXPECT_TRUE(told.size() >= last.size() && told.substr(told.size() - last.size()) == last)
            << told;
        EXPECT_TRUE(IsWindowEnabled(owner_));
        if (list == nullptr) continue;
        WCHAR path[MAX_PATH] = {};
        EXPECT_TRUE(SHGetPathFromIDListW(list, path));
        EXPECT_EQ(row.answers.back(), path);
        allocator->Free(list);
    }
    allocator->Release();
}

}  // namespace
