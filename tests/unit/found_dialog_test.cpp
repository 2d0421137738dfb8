// The found dialog: picks, menus, and every way in which a search and its dialog end.
#include <fstream>

#include "module/file_chain.h"
#include "platform/host/hold.h"
#include "tests/unit/failing_allocation.h"
#include "tests/unit/found_dialog_fixture.h"

namespace {

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
    EXPECT_EQ((std::vector<bool>{false, true, true}), tap_.unseen) << "the first is shown at once";
    EXPECT_TRUE(Search({[&] { rows = Rows(); }, [this] { Select({2}); },
                        // A double click beside the rows picks nothing, and the dialog stays.
                        [this] { DoubleClick(-1); }, [this] { EXPECT_EQ(nullptr, slot_); },
                        [this] { Select({2}); }, [this] { Press(IDOK); }}));
    EXPECT_EQ((Names{rows[2]}), Picked());
    // Without a pick the reference is given up, and the slot with it: a caller's own one stays.
    MDxFileNameNode* kept = slot_;
    kept->AddRef();
    EXPECT_TRUE(Search({[this] { Press(IDOK); }}));
    EXPECT_EQ(nullptr, slot_);
    EXPECT_EQ(1u, kept->GetReferenceCount());
    ReleaseChain(kept);
}

TEST_F(FoundDialog, SaysWhatCouldNotBeRead) {
    Document("held.hpa", nullptr);
    const HeldFile held(NativePathFromWide(Wide("held.hpa")));
    LookFor("Title differs from x");
    tap_.onFile = [this](SRxFoundList&) { std::filesystem::remove_all(folder_ / "b"); };
    desk_.Expect("held.hpa");
    desk_.Expect("b\\ could not be read");
    Search({[this] { Close(); }});
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
        tap_.hits.clear();
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

TEST_F(FoundDialog, MessagesAreTakenWithEveryEleventhText) {
    InMidSearch([](SRxFoundList& list) {
        list.pumpCounter = 0;
        PostMessageW(list.window, WM_KEYDOWN, VK_ESCAPE, 0);
        for (int call = 0; call < 10; ++call)
            EXPECT_TRUE(ShowProgress(list.run, TEXT("x"))) << call;
        EXPECT_FALSE(ShowProgress(list.run, TEXT("x")));
    });
    Search({[this] { Close(); }});
    EXPECT_TRUE(acted_);
}

TEST_F(FoundDialog, NothingIsFound) {
    LookFor("File name contains nothing");
    Search({[this] {
        EXPECT_EQ("No files were found.", Status());
        Press(IDOK);
    }});
    EXPECT_EQ(nullptr, slot_);
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
    EXPECT_EQ(0u, tap_.files);
    EXPECT_TRUE(IsWindowEnabled(dialog_.dialogWindow));
    dialog_.SetModal(false);
    ASSERT_TRUE(dialog_.OnCommandSearchNow());
    SendMessageW(Found(), WM_TIMER, 5, 0);
    SendMessageW(Found(), WM_CLOSE, 0, 0);
    SendMessageW(Found(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(nullptr, Found());
    EXPECT_EQ(0u, tap_.files);
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
    EXPECT_EQ(2u, dialog_.searches.size());
    EXPECT_TRUE(Search({[this] { Select({0}); }, [this] { Press(IDOK); }}));
    EXPECT_EQ((Names{rows[0]}), Picked());
    EXPECT_EQ(2u, dialog_.searches.size());
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
    const HWND window = owner->searches.back()->window;
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
