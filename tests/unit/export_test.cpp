// The list of hits as a text file, byte by byte.
#include <fstream>

#include "platform/native_layer.h"
#include "tests/unit/found_dialog_fixture.h"

namespace {

class Export : public FoundDialog {
protected:
    Export() {
        dialog_.SetModal(false);
        std::filesystem::remove_all(folder_ / "a");
        Tree({"b/one.hpa", "a/two.hpa"});
        std::ofstream(folder_ / std::filesystem::path(u8"a/\u00FCml\u00E4ut \u9244.hpa"));
        controls_.SetLookIn(Wide("a"));
        controls_.Check(IDC_LOOK_FOLDER, true);
    }
    ~Export() override {
        while (!dialog_.searches.empty())
            SendMessageW(dialog_.searches.back()->window, WM_COMMAND, IDCANCEL, 0);
    }
    // Searches and presses the button.
    void Search() {
        ASSERT_TRUE(dialog_.OnCommandSearchNow());
        SendMessageW(dialog_.searches.back()->window, WM_TIMER, kFoundTimer, 0);
    }
    void Press() {
        SendMessageW(GetDlgItem(dialog_.searches.back()->window, IDC_FOUND_SAVE), BM_CLICK, 0, 0);
    }
    void Sort(int column) {
        SendDlgItemMessageW(dialog_.searches.back()->window, IDC_FOUND_LIST, LVM_SORTITEMS,
                            static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(CompareRows));
    }
    std::string Bytes(const std::string& file) const {
        std::ifstream in(folder_ / file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    bool Exists(const std::string& file) const { return std::filesystem::exists(folder_ / file); }
    // The file that should be there, with the date and time as it has them.
    std::string Wanted(const std::string& got, const std::vector<WText>& files) const {
        WText text = TEXT("\uFEFFResults of the search\r\n");
        const auto units = reinterpret_cast<const WCHAR*>(got.data());
        const WTextView whole(units, got.size() / sizeof(WCHAR));
        const std::size_t end = whole.find(TEXT("\r\n"), text.size());
        if (end == WTextView::npos) return "no second line";
        const WTextView moment = whole.substr(text.size(), end - text.size());
        text += WText(moment) + TEXT("\r\n\r\n");
        for (const WText& file : files)
            text += Wide("") + TEXT("\\") + file + TEXT("\r\n");
        return std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR));
    }
};

TEST_F(Export, WritesTheRowsInTheirOrder) {
    const struct {
        const char* label;
        const char* criterion;
        int column;  // sorted by it, -1 as found
        const char* typed;
        const char* written;
        std::vector<WText> files;
    } kRows[] = {
        {"no hits", "File name contains nothing", -1, "none.txt", "none.txt", {}},
        {"by folder",
         "File name contains .hpa",
         1,
         "list",
         "list.txt",
         {TEXT("a\\two.hpa"), TEXT("a\\\u00FCml\u00E4ut \u9244.hpa"), TEXT("b\\one.hpa")}},
        {"by name over the same file",
         "File name contains .hpa",
         0,
         "list.txt",
         "list.txt",
         {TEXT("b\\one.hpa"), TEXT("a\\two.hpa"), TEXT("a\\\u00FCml\u00E4ut \u9244.hpa")}},
    };
    controls_.SetLookIn(Wide(""));
    controls_.Check(IDC_LOOK_FOLDER, false);
    controls_.Check(IDC_LOOK_SUBFOLDERS, true);
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        LookFor(row.criterion);
        Search();
        if (row.column >= 0) Sort(row.column);
        const bool replaces = Exists(row.written);
        desk_.ExpectFile("Save the list of results; (*.txt)|(*.*)|; ", Wide(row.typed));
        if (replaces) desk_.Expect("eplace", IDYES);
        desk_.Expect("has been saved");
        Press();
        // The place to look in without its last name.
        const WText parent = Wide("").substr(0, Wide("").rfind('\\'));
        EXPECT_NE(WText::npos, desk_.asked.find(TEXT("; ") + parent));
        const std::string got = Bytes(row.written);
        EXPECT_EQ(Wanted(got, row.files), got);
        // The moment is of today, the date before the time.
        const WTextView text(reinterpret_cast<const WCHAR*>(got.data()), got.size() / 2);
        WCHAR today[100] = {};
        GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, nullptr, nullptr, today, 100);
        EXPECT_NE(WTextView::npos, text.find(WText(TEXT("search\r\n")) + today + TEXT(" ")));
    }
}

TEST_F(Export, Failures) {
    Search();
    desk_.ExpectFile("Save the list", {});
    Press();
    Tree({"folder.txt/"});
    // What can't be opened is told, and nothing else.
    desk_.ExpectFile("Save the list", Wide("gone/list.txt"));
    desk_.Expect("could not be written to");
    Press();
    EXPECT_FALSE(Exists("gone"));
    if (!IsNativeLayer()) return;
    // A full disk is told, and the list counts as saved as far as it went. Nothing of it is lost.
    std::filesystem::create_symlink("/dev/full", folder_ / "full.txt");
    desk_.ExpectFile("Save the list", Wide("full.txt"));
    desk_.Expect("Replace this file", IDYES);
    desk_.Expect("could not be written to Z:");
    desk_.Expect("has been saved");
    Press();
    desk_.ExpectFile("Save the list", Wide("list.txt"));
    desk_.Expect("has been saved");
    Press();
    const std::string got = Bytes("list.txt");
    EXPECT_EQ(Wanted(got, {TEXT("a\\two.hpa"), TEXT("a\\\u00FCml\u00E4ut \u9244.hpa")}), got);
}

}  // namespace
