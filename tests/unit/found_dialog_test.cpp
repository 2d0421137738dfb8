// The found dialog by real messages to its real controls: what a person does before, during and
// behind a search.
#include "found/found_dialog.h"

#include <fstream>

#include "platform/live_windows.h"
#include "platform/native_layer.h"
#include "search/found_rows.h"
#include "tests/unit/failing_allocation.h"
#include "tests/unit/search_fixture.h"

namespace {

using Names = std::vector<std::string>;

class FoundDialog : public SearchTest {
protected:
    FoundDialog() {
        current_ = this;
        dialog_.SetModal(true);
        dialog_.SetAccessPoint(eAccessShellNoWindow);
        Tree({"a/one.hpa", "a/three.hpa", "b/one.hpa"});
        Criterion("File name contains .hpa");
        controls_.SetLookIn(Wide(""));
        controls_.Check(IDC_LOOK_SUBFOLDERS, true);
        objectsBefore_ = objectCount;
    }
    ~FoundDialog() override {
        EXPECT_EQ(objectsBefore_, objectCount) << "a record is left";
        EXPECT_TRUE(IsWindowEnabled(dialog_.dialogWindow));
        EXPECT_FALSE(dialog_.searching);
        current_ = nullptr;
    }

    // A search with what a person does behind it, step by step; in a modal dialog the last step
    // ends it. The result is that of the command.
    bool Search(std::vector<std::function<void()>> steps) {
        steps_.assign(steps.begin(), steps.end());
        ticks_ = 0;
        const UINT_PTR timer = SetTimer(nullptr, 0, 10, Tick);
        const bool result = dialog_.OnCommandSearchNow();
        MSG message;
        while (!dialog_.IsModal() && !steps_.empty() && GetMessageW(&message, nullptr, 0, 0) > 0) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        KillTimer(nullptr, timer);
        EXPECT_TRUE(steps_.empty()) << "the dialog ended early";
        return result;
    }
    HWND Found() const {
        return dialog_.foundWindows.empty() ? nullptr : dialog_.foundWindows.back();
    }
    HWND Control(int id) const { return GetDlgItem(Found(), id); }
    LRESULT Send(UINT message, WPARAM wParam = 0, const void* lParam = nullptr) const {
        return SendMessageW(Control(IDC_FOUND_LIST), message, wParam,
                            reinterpret_cast<LPARAM>(lParam));
    }
    void Press(int id) const { SendMessageW(Control(id), BM_CLICK, 0, 0); }
    void Close() const { PostMessageW(Found(), WM_CLOSE, 0, 0); }
    void Select(const std::vector<int>& rows) const {
        for (const int row : rows) {
            LVITEMW item{};
            item.stateMask = item.state = LVIS_SELECTED;
            EXPECT_TRUE(Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), &item));
        }
    }
    // On a row, or below all for a negative one.
    void Mouse(int row, std::initializer_list<UINT> messages) const {
        RECT rect{};
        const LRESULT last = Send(LVM_GETITEMCOUNT) - 1;
        Send(LVM_GETITEMRECT, static_cast<WPARAM>(row < 0 ? last : row), &rect);
        const LONG y = row < 0 ? rect.bottom + 5 : (rect.top + rect.bottom) / 2;
        const LPARAM point = MAKELPARAM(static_cast<WORD>(20), static_cast<WORD>(y));
        const HWND list = Control(IDC_FOUND_LIST);
        // Posted, since a list waits for the button's release in a loop of its own.
        for (const UINT message : messages)
            PostMessageW(list, message, 0, point);
    }
    void DoubleClick(int row) const {
        Mouse(row, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP});
    }
    void RightClick(int row) const { Mouse(row, {WM_RBUTTONDOWN, WM_RBUTTONUP}); }
    void ClickHeader(int column) const {
        const auto header = reinterpret_cast<HWND>(Send(LVM_GETHEADER));
        const LRESULT first = Send(LVM_GETCOLUMNWIDTH, 0);
        const LPARAM point = MAKELPARAM(static_cast<WORD>(column == 0 ? 5 : first + 15), 5);
        PostMessageW(header, WM_LBUTTONDOWN, 0, point);
        PostMessageW(header, WM_LBUTTONUP, 0, point);
    }
    Names Rows() const {
        Names rows;
        for (int row = 0; row < Send(LVM_GETITEMCOUNT); ++row) {
            std::string text[2];
            for (int column = 0; column < 2; ++column) {
                WCHAR buffer[500] = {};
                LVITEMW item{};
                item.mask = LVIF_TEXT;
                item.iItem = row;
                item.iSubItem = column;
                item.pszText = buffer;
                item.cchTextMax = 500;
                EXPECT_TRUE(Send(LVM_GETITEMW, 0, &item));
                text[column] = wtext::ToUtf8(item.pszText);
            }
            rows.push_back(text[1].substr(text[1].size() - 2, 1) + "/" + text[0]);
        }
        return rows;
    }
    std::string Status() const {
        WCHAR text[500] = {};
        SendMessageW(Control(IDC_FOUND_STATUS), SB_GETTEXTW, 0, reinterpret_cast<LPARAM>(text));
        return wtext::ToUtf8(text);
    }
    Names Picked() const {
        Names names;
        for (MDxFileNameNode* node = slot_; node != nullptr; node = node->GetNextNode()) {
            EXPECT_EQ(1u, node->GetReferenceCount());
            const std::string name = wtext::ToUtf8(node->GetFileName());
            names.push_back(name.substr(name.find_last_of('\\') - 1));
            std::replace(names.back().begin(), names.back().end(), '\\', '/');
        }
        return names;
    }
    void PutEarlier() {
        slot_ = new MDxFileNameNode(TEXT("Z:\\x\\earlier"), -1, false);
        slot_->AddRef();
    }
    // In the middle of a search, as after many files.
    static void Pump(SRxFoundList& list) {
        list.pumpCounter = 10;
        ShowProgress(list, TEXT("on the way"));
    }
    // Does something in the dialog's pump once the second file is at hand.
    void InMidSearch(std::function<void(SRxFoundList&)> act) {
        onFile_ = [this, act](SRxFoundList& list) {
            if (shownRows_.empty() || std::exchange(acted_, true)) return;
            act(list);
            Pump(list);
        };
    }

    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        FoundDialog& test = *current_;
        constexpr int kMostTicks = 500;
        if (++test.ticks_ > kMostTicks) {
            ADD_FAILURE() << "the dialog doesn't end";
            test.steps_.clear();
            PostQuitMessage(1);
            return;
        }
        // A menu is asked about in its own time.
        const bool waits = test.dialog_.searching || test.inStep_ || !test.desk_.IsDone();
        if (waits || test.steps_.empty()) return;
        const auto step = test.steps_.front();
        test.steps_.pop_front();
        test.inStep_ = true;
        step();
        test.inStep_ = false;
    }

    static inline FoundDialog* current_ = nullptr;
    std::deque<std::function<void()>> steps_;
    int ticks_ = 0;
    bool inStep_ = false;
    bool acted_ = false;
    LONG objectsBefore_ = 0;
};

TEST_F(FoundDialog, PicksInAModalDialog) {
    const struct {
        const char* label;
        bool several;
        std::vector<int> rows;
        std::function<void()> end;
        bool result;
        Names picked;
    } kRows[] = {
        {"OK on nothing", true, {}, [this] { Press(IDOK); }, true, {}},
        {"OK on one", true, {1}, [this] { Press(IDOK); }, true, {"1"}},
        {"OK on many", true, {2, 0}, [this] { Press(IDOK); }, true, {"0", "2"}},
        {"one of many", false, {0, 2}, [this] { Press(IDOK); }, true, {"2"}},
        {"double click", true, {}, [this] { DoubleClick(1); }, true, {"1"}},
        {"closed", true, {1}, [this] { Close(); }, false, {"earlier"}},
        {"Escape",
         true,
         {1},
         [this] { PostMessageW(Control(IDOK), WM_KEYDOWN, VK_ESCAPE, 0); },
         false,
         {"earlier"}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        PutEarlier();
        dialog_.AllowMultiSelect(row.several);
        Names rows;
        const auto look = [&] {
            rows = Rows();
            EXPECT_EQ("3 file(s) found.", Status());
            EXPECT_TRUE(IsWindowEnabled(dialog_.dialogWindow));
            EXPECT_TRUE(IsWindowEnabled(Control(IDC_FOUND_SAVE)));
            EXPECT_FALSE(IsWindowEnabled(Control(IDC_FOUND_STOP)));
            // Under Wine another program's window may have taken the keyboard.
            const HWND focus = GetFocus();
            EXPECT_TRUE(focus == Control(IDOK) || (focus == nullptr && !IsNativeLayer()));
            Select(row.rows);
        };
        EXPECT_EQ(row.result, Search({look, row.end}));
        EXPECT_EQ((Names{"a/one.hpa", "a/three.hpa", "b/one.hpa"}), Sorted(rows));
        Names wanted = row.picked;
        for (std::string& name : wanted) {
            if (name != "earlier") name = rows.at(std::stoul(name));
        }
        if (wanted == Names{"earlier"}) wanted = {"x/earlier"};
        EXPECT_EQ(wanted, Picked());
        if (slot_ != nullptr) slot_->Release();
        delete std::exchange(slot_, nullptr);
    }
}

TEST_F(FoundDialog, ALaterPickTakesTheEarlierPlace) {
    Names rows;
    EXPECT_TRUE(Search({[&] { Select({0, 1}); }, [this] { Press(IDOK); }}));
    EXPECT_EQ(2u, Picked().size());
    EXPECT_TRUE(Search({[&] { rows = Rows(); }, [this] { Select({2}); },
                        // A double click beside the rows picks nothing, and the dialog stays.
                        [this] { DoubleClick(-1); }, [this] { EXPECT_EQ(nullptr, slot_); },
                        [this] { Select({2}); }, [this] { Press(IDOK); }}));
    EXPECT_EQ((Names{rows[2]}), Picked());
    slot_->Release();
}

TEST_F(FoundDialog, InMidSearch) {
    Tree({"c/two.hpa"});  // whatever the order of the folders, one is left when the search stops
    const auto command = [](HWND window, int id) {
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
    };
    const struct {
        const char* label;
        std::function<void(SRxFoundList&)> act;
        bool stops;
        bool ends;  // by itself, behind the search
        bool result;
        std::size_t picked;
    } kRows[] = {
        {"nothing", [](SRxFoundList&) {}, false, false, false, 0},
        {"Stop", [&](SRxFoundList&) { PostMessageW(Control(IDC_FOUND_STOP), BM_CLICK, 0, 0); },
         true, false, false, 0},
        {"Escape",
         [&](SRxFoundList&) { PostMessageW(Control(IDC_FOUND_STOP), WM_KEYDOWN, VK_ESCAPE, 0); },
         true, false, false, 0},
        {"closed", [&](SRxFoundList&) { Close(); }, true, false, false, 0},
        {"Cancel", [&](SRxFoundList& list) { command(list.window, IDCANCEL); }, true, false, false,
         0},
        {"picked",
         [&](SRxFoundList& list) {
             Select({0});
             command(list.window, IDOK);
         },
         true, true, true, 1},
        {"double click", [&](SRxFoundList&) { DoubleClick(0); }, true, true, true, 1},
        {"another timer", [](SRxFoundList& list) { PostMessageW(list.window, WM_TIMER, 5, 0); },
         false, false, false, 0},
        {"the timer again",
         [](SRxFoundList& list) { PostMessageW(list.window, WM_TIMER, kFoundTimer, 0); }, false,
         false, false, 0},
        {"the window goes", [](SRxFoundList& list) { DestroyWindow(list.window); }, true, true,
         false, 0},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        acted_ = false;
        shownRows_.clear();
        InMidSearch([&](SRxFoundList& list) {
            EXPECT_EQ(1, Send(LVM_GETITEMCOUNT)) << "the first hit stands while the search runs";
            EXPECT_FALSE(IsWindowEnabled(dialog_.dialogWindow));
            EXPECT_TRUE(IsWindowEnabled(Control(IDC_FOUND_STOP)));
            EXPECT_FALSE(IsWindowEnabled(Control(IDOK)));
            row.act(list);
        });
        std::vector<std::function<void()>> steps;
        if (!row.ends) {
            steps = {[&] {
                         EXPECT_EQ(row.stops, Status().rfind("The search was stopped. ", 0) == 0)
                             << Status();
                         EXPECT_EQ(row.stops, Rows().size() < 4);
                     },
                     [this] { Close(); }};
        }
        EXPECT_EQ(row.result, Search(steps));
        EXPECT_TRUE(acted_);
        EXPECT_EQ(row.picked, Picked().size());
        if (slot_ != nullptr) slot_->Release();
        delete std::exchange(slot_, nullptr);
    }
}

TEST_F(FoundDialog, SortedInMidSearchTheRestIsAddedBehind) {
    InMidSearch([this](SRxFoundList&) { ClickHeader(0); });
    Search({[this] { ClickHeader(0); },
            [this] {
                const Names rows = Rows();
                EXPECT_EQ("a/three.hpa", rows[2]) << "by name";
                ClickHeader(1);
            },
            [this] {
                EXPECT_EQ((Names{"a/one.hpa", "a/three.hpa", "b/one.hpa"}), Rows()) << "by folder";
                Close();
            }});
    EXPECT_TRUE(acted_);
}

TEST_F(FoundDialog, QuitInMidSearchIsAskedForAgain) {
    InMidSearch([](SRxFoundList&) { PostQuitMessage(9); });
    Search({});
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(static_cast<UINT>(WM_QUIT), message.message);
    EXPECT_EQ(9u, message.wParam);
}

// Turns the dialog's timer message into nothing, once, so that what is typed comes before it.
LRESULT CALLBACK TypeEscape(int code, WPARAM wParam, LPARAM lParam) {
    auto& message = *reinterpret_cast<MSG*>(lParam);
    if (wParam == PM_REMOVE && message.message == WM_TIMER && message.wParam == kFoundTimer) {
        PostMessageW(GetDlgItem(message.hwnd, IDC_FOUND_STOP), WM_KEYDOWN, VK_ESCAPE, 0);
        message.message = WM_APP;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(FoundDialog, ClosedBeforeTheSearchBegins) {
    const HHOOK hook = SetWindowsHookExW(WH_GETMESSAGE, TypeEscape, nullptr, GetCurrentThreadId());
    EXPECT_FALSE(Search({}));
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(0u, files_);
    EXPECT_TRUE(IsWindowEnabled(dialog_.dialogWindow));
    dialog_.SetModal(false);
    ASSERT_TRUE(dialog_.OnCommandSearchNow());
    SendMessageW(Found(), WM_TIMER, 5, 0);
    SendMessageW(Found(), WM_CLOSE, 0, 0);
    SendMessageW(Found(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(nullptr, Found());
    EXPECT_EQ(0u, files_);
}

TEST_F(FoundDialog, NoWindowCanBeMade) {
    const HINSTANCE resources = dialog_.resourceInstance;
    for (const bool modal : {true, false}) {
        dialog_.SetModal(modal);
        dialog_.resourceInstance = nullptr;
        // Without its library the message has no text of its own.
        if (modal) desk_.Expect("19407");
        EXPECT_EQ(!modal, dialog_.OnCommandSearchNow());
        EXPECT_TRUE(IsWindowEnabled(dialog_.dialogWindow)) << modal;
        EXPECT_EQ(objectsBefore_, objectCount);
        dialog_.resourceInstance = resources;
    }
}

TEST_F(FoundDialog, AModelessDialogStays) {
    dialog_.SetModal(false);
    Names rows;
    EXPECT_TRUE(Search({[&] { rows = Rows(); }, [this] { DoubleClick(2); },
                        [this] { EXPECT_NE(nullptr, Found()); }}));
    ASSERT_EQ(3u, rows.size());
    EXPECT_EQ((Names{rows[2]}), Picked());
    // A second search with a dialog of its own; both go with the find dialog.
    const HWND first = Found();
    EXPECT_TRUE(Search({[] {}}));
    EXPECT_NE(first, Found());
    EXPECT_EQ(2u, dialog_.foundWindows.size());
    EXPECT_TRUE(Search({[this] { Select({0}); }, [this] { Press(IDOK); }}));
    EXPECT_EQ((Names{rows[0]}), Picked());
    EXPECT_EQ(2u, dialog_.foundWindows.size());
    const HWND last = Found();
    while (Found() != nullptr)
        SendMessageW(Found(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(IsWindow(first) || IsWindow(last));
    slot_->Release();
}

TEST_F(FoundDialog, ClosesWithItsFindDialog) {
    auto owner = std::make_unique<SRxFindDialog>(dialog_.resourceInstance, nullptr, nullptr,
                                                 nullptr, nullptr);
    owner->dialogWindow = dialog_.dialogWindow;
    owner->criteriaHead = std::exchange(dialog_.criteriaHead, nullptr);
    ASSERT_TRUE(owner->OnCommandSearchNow());
    const HWND window = owner->foundWindows.back();
    SendMessageW(window, WM_TIMER, kFoundTimer, 0);
    owner.reset();
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(FoundDialog, TheMenuOfTheSelectedFiles) {
    // Natively the files themselves can be looked at; on Windows the shell's entries.
    const std::string part = IsNativeLayer() ? ".hpa;" : ";";
    const struct {
        const char* label;
        bool inApp;
        bool menu;
        std::vector<int> rows;
        int row;
    } kRows[] = {
        {"on one", false, true, {}, 1},
        {"on one of two folders", false, true, {0, 1, 2}, 1},
        {"on nothing", false, false, {0}, -1},
        {"in the application", true, false, {}, 1},
    };
    PutEarlier();
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.label);
        dialog_.SetInApp(row.inApp);
        Search({[&] { Select(row.rows); },
                [&] {
                    if (row.menu) desk_.ExpectMenu(part, -1);
                    RightClick(row.row);
                },
                [this] { Close(); }});
        EXPECT_EQ((Names{"x/earlier"}), Picked()) << "the slot stays as it was";
    }
    // Also where no selection goes back; a double click does nothing there.
    dialog_.SetInApp(false);
    dialog_.selectionSlot = nullptr;
    EXPECT_FALSE(Search({[&] {
                             desk_.ExpectMenu(part, -1);
                             RightClick(0);
                         },
                         [this] { DoubleClick(0); }, [this] { EXPECT_NE(nullptr, Found()); },
                         [this] { Close(); }}));
    slot_->Release();
}

RECT PlaceOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

TEST_F(FoundDialog, LayoutAndRememberedSize) {
    foundWidth = foundHeight = -1;
    const auto client = [this] {
        RECT rect{};
        GetClientRect(Found(), &rect);
        return rect;
    };
    const auto size = [this](int width, int height) {
        SendMessageW(Found(), WM_SIZE, 0,
                     MAKELPARAM(static_cast<WORD>(width), static_cast<WORD>(height)));
    };
    const int buttons[] = {IDOK, IDC_FOUND_STOP, IDC_FOUND_SAVE};
    Search({[&] {
                const RECT find = PlaceOf(dialog_.dialogWindow);
                EXPECT_EQ(find.left + 50, PlaceOf(Found()).left);
                EXPECT_EQ(find.top + 50, PlaceOf(Found()).top);
                const RECT start = client();
                size(start.right, start.bottom);
                std::vector<RECT> before;
                for (const int id : buttons)
                    before.push_back(PlaceOf(Control(id)));
                const RECT list = PlaceOf(Control(IDC_FOUND_LIST));
                const RECT status = PlaceOf(Control(IDC_FOUND_STATUS));
                const RECT whole = PlaceOf(Found());
                SetWindowPos(Found(), nullptr, 0, 0, whole.right - whole.left + 100,
                             whole.bottom - whole.top + 30, SWP_NOMOVE | SWP_NOZORDER);
                for (std::size_t i = 0; i < before.size(); ++i) {
                    const RECT now = PlaceOf(Control(buttons[i]));
                    EXPECT_EQ(before[i].left + 100, now.left) << i;
                    EXPECT_EQ(before[i].top + 30, now.top) << i;
                    EXPECT_EQ(before[i].right + 100, now.right) << i;
                }
                const RECT wider = PlaceOf(Control(IDC_FOUND_LIST));
                EXPECT_EQ(list.left, wider.left);
                EXPECT_EQ(list.right + 100, wider.right);
                EXPECT_EQ(list.bottom + 30, wider.bottom);
                // The measures count the frame; and a status bar sets itself to the edge when it
                // changes its size.
                constexpr int kFrame = 8;
                EXPECT_NEAR(PlaceOf(Control(IDC_FOUND_SAVE)).right, wider.right, kFrame);
                EXPECT_NEAR(status.top + 30, PlaceOf(Control(IDC_FOUND_STATUS)).top, kFrame);
                EXPECT_EQ(start.right + 100, foundWidth);
                EXPECT_EQ(start.bottom + 30, foundHeight);
            },
            [&] {
                size(0, 0);
                const RECT none = PlaceOf(Control(IDC_FOUND_LIST));
                EXPECT_EQ(none.left, none.right);
                EXPECT_EQ(none.top, none.bottom);
                EXPECT_EQ(0, foundWidth);
                SendMessageW(Found(), WM_SIZE, SIZE_MINIMIZED, MAKELPARAM(7, 7));
                EXPECT_EQ(0, foundWidth) << "a minimized dialog has no size";
                size(500, 400);
                Close();
            }});
    // The next one takes the client size for its whole size.
    Search({[&] {
        const RECT whole = PlaceOf(Found());
        EXPECT_EQ(500, whole.right - whole.left);
        EXPECT_EQ(400, whole.bottom - whole.top);
        Close();
    }});
    foundWidth = foundHeight = -1;
}

TEST_F(FoundDialog, RowsCompare) {
    const struct {
        const WCHAR* a;
        const WCHAR* b;
        int byName;
        int byFolder;
    } kRows[] = {
        {TEXT("Z:\\a\\x.hpa"), TEXT("Z:\\b\\X.HPA"), 0, -1},
        {TEXT("Z:\\a\\y.hpa"), TEXT("Z:\\A\\x.hpa"), 1, 1},
        {TEXT("Z:\\a\\x"), TEXT("Z:\\a b\\x"), 0, -1},
        {TEXT("Z:\\b"), TEXT("Z:\\a\\a"), 1, -1},
        {TEXT("zz"), TEXT("Z:\\a"), 1, -1},
        {TEXT("Z:\\a\\x-1"), TEXT("Z:\\a\\x1"), -1, -1},
        {TEXT("Z:\\a\\x"), nullptr, 0, 0},
    };
    for (const auto& row : kRows) {
        const auto a = reinterpret_cast<LPARAM>(row.a);
        const auto b = reinterpret_cast<LPARAM>(row.b);
        const std::string label = wtext::ToUtf8(row.a);
        EXPECT_EQ(row.byName, CompareRows(a, b, 0)) << label;
        EXPECT_EQ(-row.byName, CompareRows(b, a, 0)) << label;
        EXPECT_EQ(row.byFolder, CompareRows(a, b, 1)) << label;
        EXPECT_EQ(-row.byFolder, CompareRows(b, a, 1)) << label;
    }
}

TEST_F(FoundDialog, LongPathsAreWhole) {
    const WText folder = TEXT("Z:\\") + WText(300, 'f') + TEXT("\\");
    const WText name = WText(200, 'n') + TEXT(".hpa");
    dialog_.SetModal(false);
    onFile_ = [&](SRxFoundList& list) {
        if (std::exchange(acted_, true)) return;
        int at = 0;
        const MDxFileNameNode node((folder + name).c_str(), -1, false);
        AddFoundRow(list, folder.c_str(), name.c_str(), node, at);
    };
    EXPECT_TRUE(Search({[this] { Select({static_cast<int>(Send(LVM_GETITEMCOUNT)) - 1}); },
                        [this] { Press(IDOK); }}));
    ASSERT_NE(nullptr, slot_);
    EXPECT_EQ(wtext::ToUtf8(folder + name), wtext::ToUtf8(slot_->GetFileName()));
    slot_->Release();
}

TEST_F(FoundDialog, WithoutMemoryNothingIsPicked) {
    PutEarlier();
    EXPECT_TRUE(Search({[this] {
                            Select({0, 1});
                        },
                        [this] {
                            desk_.Expect("not enough memory");
                            failingSize = sizeof(MDxFileNameNode);
                            Press(IDOK);
                        }}));
    EXPECT_EQ(0u, failingSize) << "the allocation came";
    EXPECT_EQ(nullptr, slot_);
}

// Whatever way they end; the sanitized build looks for rows and records as well.
TEST_F(FoundDialog, NothingIsLeftOfManySearches) {
    const std::function<void()> ends[] = {
        [this] {
            Select({0});
            Press(IDOK);
        },
        [this] {
            DoubleClick(0);
            if (!dialog_.IsModal()) Close();
        },
        [this] { Close(); },
        [this] { PostMessageW(Found(), WM_COMMAND, IDCANCEL, 0); },
    };
    constexpr int kWarm = 20;
    constexpr int kSearches = IsNativeLayer() ? 200 : 60;  // slow under Wine
    int windows = 0;
    for (int i = 0; i < kSearches; ++i) {
        dialog_.SetModal(i % 2 == 0);
        acted_ = false;
        shownRows_.clear();
        onFile_ = nullptr;
        if (i % 5 == 4) {
            InMidSearch([](SRxFoundList& list) { PostMessageW(list.window, WM_CLOSE, 0, 0); });
        }
        Search({ends[i / 2 % 4]});
        MSG message;
        while (Found() != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0)
            DispatchMessageW(&message);
        ASSERT_EQ(objectsBefore_, objectCount) << "search " << i;
        if (i == kWarm) windows = CountLiveWindows();
    }
    EXPECT_LT(0, windows);
    EXPECT_EQ(windows, CountLiveWindows());
}

TEST_F(FoundDialog, BeforeASearch) {
    dialog_.pendingCriterion = true;
    EnableWindow(GetDlgItem(dialog_.dialogWindow, IDC_ADD), TRUE);
    desk_.Expect("has not been added", IDCANCEL);
    EXPECT_TRUE(dialog_.OnCommandSearchNow()) << "nothing changes";
    EXPECT_TRUE(dialog_.pendingCriterion);
    desk_.Expect("has not been added", IDYES);
    desk_.Expect("Choose a property");
    EXPECT_FALSE(dialog_.OnCommandSearchNow()) << "can't be added";
    EXPECT_TRUE(dialog_.pendingCriterion);
    controls_.SetLookIn(TEXT("Z:\\not there"));
    desk_.Expect("has not been added", IDNO);
    desk_.Expect("Z:\\not there could not be read");
    EXPECT_FALSE(dialog_.OnCommandSearchNow());
    EXPECT_FALSE(dialog_.pendingCriterion);
    // A button that can't be pressed has nothing waiting.
    dialog_.pendingCriterion = true;
    EnableWindow(GetDlgItem(dialog_.dialogWindow, IDC_ADD), FALSE);
    desk_.Expect("Z:\\not there could not be read");
    EXPECT_FALSE(dialog_.OnCommandSearchNow());
    EXPECT_FALSE(dialog_.pendingCriterion);
}

}  // namespace
