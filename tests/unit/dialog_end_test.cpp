// Every way in which an opening of the find dialog ends: no object, window, hook or record is left,
// and nobody hears of it who must not.
#include "platform/native_layer.h"
#include "tests/unit/find_window_fixture.h"
#include "tests/unit/stored_searches.h"

namespace {

class DialogEnd : public FindWindow {
protected:
    // Two files that the default criterion finds, in the dialog's box.
    void OpenOverFiles(eAccessPoint access = eAccessShellWindow,
                       const std::function<void(SRxFindDialog&)>& prepare = nullptr) {
        Document("one.hpa", nullptr);
        Document("two.hpa", nullptr);
        Open(access, prepare);
        PutLookIn("");
    }
    static void InApp(SRxFindDialog& dialog) { dialog.SetInApp(true); }
};

TEST_F(DialogEnd, ByTheUserAndByTheCaller) {
    const struct {
        const char* name;
        bool byUser;
        const char* told;
    } kRows[] = {{"the button", true, "cancel "}, {"the caller", false, ""}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        told_.clear();
        Open(eAccessShellWindow);
        SRxFindDialog* const dialog = Dialog();
        onCancel_ = [this, dialog] {
            EXPECT_EQ(objectsBefore_ + 1, objectCount) << "the object isn't gone yet";
            dialog->CloseDialog(true);  // counts for nothing now
        };
        if (row.byUser) {
            Press(IDCANCEL);
        } else {
            dialog->CloseDialog(false);
        }
        EXPECT_EQ(row.told, told_);
        EXPECT_FALSE(IsWindow(window_));
        EXPECT_EQ(objectsBefore_, objectCount);
        EXPECT_EQ(nullptr, modelessDialog);
    }
}

TEST_F(DialogEnd, ModalTellsNobody) {
    SRxFindDialog* const dialog =
        Make(eAccessShellWindow, [](SRxFindDialog& made) { made.SetModal(true); });
    Script({[&] {
                window_ = dialog->dialogWindow;
                EXPECT_EQ(nullptr, modelessDialog);
            },
            [&] { Press(IDCANCEL); }});
    EXPECT_EQ(0, dialog->InvokeCommand(nullptr));
    EndScript();
    EXPECT_EQ("", told_);
}

TEST_F(DialogEnd, WithoutAWindowTheObjectStaysTheEntrys) {
    for (const bool modal : {false, true}) {
        auto* dialog = new SRxFindDialog(nullptr, nullptr, nullptr, nullptr, this);
        dialog->SetModal(modal);
        EXPECT_EQ(modal ? -1 : 1, dialog->InvokeCommand(nullptr));
        EXPECT_EQ(nullptr, modelessDialog);
        EXPECT_EQ(objectsBefore_ + 1, objectCount);
        delete dialog;
    }
    EXPECT_EQ("", told_);
}

TEST_F(DialogEnd, InsideANotification) {
    // Each closes the dialog while the notification is on the stack; nothing comes behind it.
    const struct {
        const char* name;
        std::function<void()>* where;
        bool onlyAssemblies;
        const char* told;
    } kRows[] = {{"before the search", &onOk_, false, "ok "},
                 {"with the found dialog open", &onDone_, false, "ok done "},
                 {"behind a search of files", &onDone_, true, "ok done "}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        told_.clear();
        OpenOverFiles(eAccessNone, [&](SRxFindDialog& dialog) {
            InApp(dialog);
            dialog.SetOnlyAssem(row.onlyAssemblies);
        });
        FreeSlot();
        if (row.onlyAssemblies) slot_ = new MDxFileNameNode(Wide("one.hpa").c_str(), -1, true);
        MDxFileNameNode* const input = slot_;
        *row.where = [this] {
            SRxFindDialog* const dialog = Dialog();
            dialog->CloseDialog(false);
            EXPECT_TRUE(IsWindow(window_)) << "it waits for the notification";
            EXPECT_FALSE(IsWindowVisible(window_));
            EXPECT_EQ(nullptr, dialog->notify);
            EXPECT_EQ(nullptr, dialog->lookForOut);
            EXPECT_EQ(nullptr, dialog->selectionSlot);
        };
        Press(IDOK);
        EXPECT_EQ(row.told, told_);
        EXPECT_FALSE(IsWindow(window_));
        EXPECT_EQ(objectsBefore_, objectCount);
        *row.where = nullptr;
        if (slot_ != input) FreeSlot();
        delete input;
        slot_ = nullptr;
    }
}

TEST_F(DialogEnd, InTheMiddleOfASearch) {
    for (const bool modal : {false, true}) {
        SCOPED_TRACE(modal);
        Tree({"one.hpa", "two.hpa"});
        tap_.files = 0;
        told_.clear();
        tap_.onFile = [this](SRxFoundList& list) {
            Dialog()->CloseDialog(false);
            EXPECT_TRUE(list.run.stopRequested);
            EXPECT_NE(&slot_, list.selectionSlot);
        };
        const auto start = [this] {
            PutLookIn("");
            Press(IDOK);
        };
        if (modal) {
            SRxFindDialog* const dialog =
                Make(eAccessShellWindow, [](SRxFindDialog& made) { made.SetModal(true); });
            Script({[&] {
                window_ = dialog->dialogWindow;
                start();
            }});
            EXPECT_EQ(0, dialog->InvokeCommand(nullptr));
            EndScript();
        } else {
            Open(eAccessShellWindow);
            start();
            PumpUntil([this] { return !IsWindow(window_); });
        }
        EXPECT_LT(0u, tap_.files);
        EXPECT_EQ("", told_);
        EXPECT_EQ(objectsBefore_, objectCount);
        EXPECT_EQ(nullptr, slot_);
        tap_.onFile = nullptr;
    }
}

// A search of files, which has no window of its own, has nobody left to tell.
TEST_F(DialogEnd, InTheMiddleOfASearchOfFiles) {
    Open(eAccessShellWindow);
    SRxFindDialog& dialog = *Dialog();
    const SRxDialogWork working(dialog.life);
    SRxFoundList list(dialog.links, &slot_);
    dialog.CloseDialog(false);
    list.chainSink.OnFileInUse(TEXT("file"));
    list.chainSink.OnFolderFailed(TEXT("folder"));
    list.rowsSink.OnFileInUse(TEXT("file"));
    list.rowsSink.OnFolderFailed(TEXT("folder"));
    EXPECT_TRUE(list.chainSink.End(list.run, true));
}

TEST_F(DialogEnd, UnderAnOpenModalFoundDialog) {
    Tree({"one.hpa"});
    SRxFindDialog* const dialog =
        Make(eAccessShellWindow, [](SRxFindDialog& made) { made.SetModal(true); });
    Script({[&] {
                window_ = dialog->dialogWindow;
                PutLookIn("");
                inStep_ = false;  // the found dialog's loop runs inside of this step
                Press(IDOK);
            },
            [&] {
                EXPECT_NE(nullptr, Found());
                dialog->CloseDialog(false);
            }});
    EXPECT_EQ(0, dialog->InvokeCommand(nullptr));
    EndScript();
    EXPECT_EQ(1u, tap_.files);
    EXPECT_EQ("", told_);
}

TEST_F(DialogEnd, WithTwoOpenFoundDialogs) {
    OpenOverFiles();
    for (int round = 0; round < 2; ++round) {
        Press(IDOK);
        PumpUntil([this] { return SearchesEnded(); });
    }
    ASSERT_EQ(2u, Dialog()->searches.size());
    const HWND found = Found();
    EXPECT_EQ(objectsBefore_ + 3, objectCount);
    Press(IDCANCEL);
    EXPECT_FALSE(IsWindow(found));
    EXPECT_EQ("cancel ", told_);
}

// A window of a host program, hidden.
HWND MakeHost() {
    const DLGPROC nothing = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; };
    const HWND host = CreateDialogParamW(SrResReturnHandle(), MAKEINTRESOURCEW(IDD_SR_SAVESEARCH),
                                         nullptr, nothing, 0);
    EXPECT_NE(nullptr, host);
    return host;
}

TEST_F(DialogEnd, WithItsOwner) {
    for (const bool searching : {false, true}) {
        SCOPED_TRACE(searching);
        told_.clear();
        tap_.files = 0;
        Tree({"one.hpa", "two.hpa"});
        const HWND owner = MakeHost();
        SRxFindDialog* const dialog = Make(eAccessShellWindow);
        ASSERT_EQ(0, dialog->InvokeCommand(owner));
        window_ = dialog->dialogWindow;
        windowMayBeGoing_ = true;
        PutLookIn("");
        if (searching) {
            tap_.onFile = [owner](SRxFoundList&) { DestroyWindow(owner); };
            Press(IDOK);
            PumpUntil([this] { return objectCount == objectsBefore_; });
        } else {
            DestroyWindow(owner);
        }
        EXPECT_EQ(searching ? 2u : 0u, tap_.files);
        EXPECT_FALSE(IsWindow(window_));
        EXPECT_EQ("cancel ", told_) << "nobody closed it, so its listener hears of it";
        EXPECT_EQ(objectsBefore_, objectCount);
        tap_.onFile = nullptr;
    }
}

TEST_F(DialogEnd, WhileADialogOfTheSavedSearchesIsOpen) {
    Open(eAccessShellWindow);
    SRxFindDialog* const dialog = Dialog();
    Script({[&] {
        EXPECT_NE(nullptr, dialog->nestedDialog);
        dialog->CloseDialog(false);
    }});
    Press(IDC_OPEN_SEARCH);
    EndScript();
    EXPECT_FALSE(IsWindow(window_));
    EXPECT_EQ(objectsBefore_, objectCount);
}

// A No is a No, though the dialog goes while the question stands.
TEST_F(DialogEnd, WhileTheSaveDialogAsks) {
    const WText name = TEXT("kept");
    StoredSearch kept;
    kept.environment = eAccessShellWindow;
    ASSERT_EQ(eStoredWrite::Whole, Save(name.c_str(), kept));
    Open(eAccessShellWindow);
    SRxFindDialog* const dialog = Dialog();
    Add("Title", "contains", "x");
    class Closing : public Desk {
    public:
        explicit Closing(SRxFindDialog& dialog) : dialog_(dialog) {}
        int AnswerMessageBox(const MessageBoxQuestion&) override {
            ++asked;
            dialog_.CloseDialog(false);
            return IDNO;
        }
        int asked = 0;

    private:
        SRxFindDialog& dialog_;
    } desk(*dialog);
    const DeskScope scope(desk);
    Script({[&] {
        SetDlgItemTextW(dialog->nestedDialog, IDC_SEARCH_NAME, name.c_str());
        SendMessageW(dialog->nestedDialog, WM_COMMAND, IDOK, 0);
    }});
    Press(IDC_SAVE_SEARCH);
    EndScript();
    EXPECT_EQ(1, desk.asked);
    EXPECT_EQ(objectsBefore_, objectCount);
    StoredSearch read;
    EXPECT_EQ(eStoredRead::Whole, ReadSavedSearch(name.c_str(), read));
    EXPECT_EQ(kept, read);
    EXPECT_TRUE(Remove(name.c_str()));
}

TEST_F(DialogEnd, TwoDialogsAtOnce) {
    Open(eAccessShellWindow);
    const HWND first = window_;
    Open(eAccessPart);
    const HWND second = window_;
    // A key goes to the dialog that its control lies in, in whatever order they were opened.
    for (const HWND window : {first, second}) {
        const HWND from = GetDlgItem(window, IDC_CRITERIA_LIST);
        SetFocus(from);
        PostMessageW(from, WM_KEYDOWN, VK_TAB, 0);
        PumpUntil([&] { return GetFocus() != from; });
        EXPECT_EQ(GetDlgItem(window, IDC_DELETE), GetFocus());
    }
    reinterpret_cast<SRxFindDialog*>(GetWindowLongPtrW(second, DWLP_USER))->CloseDialog(false);
    EXPECT_EQ(first, modelessDialog);
    EXPECT_NE(nullptr, keyboardHook);
    window_ = first;
}

TEST_F(DialogEnd, TheHostKeepsItsKeys) {
    constexpr UINT kSwallowed = 874;
    const HWND host = MakeHost();
    OpenOverFiles();
    const auto seenFor = [this](HWND window, WPARAM key) {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);  // a character of the key before
        seen_.clear();
        PostMessageW(window, WM_KEYDOWN, key, 0);
        PumpUntil([&] { return !seen_.empty() && seen_.back() != WM_TIMER; });
        return seen_.back();
    };
    EXPECT_EQ(static_cast<UINT>(WM_KEYDOWN), seenFor(host, VK_TAB));
    EXPECT_EQ(kSwallowed, seenFor(Control(IDC_CRITERIA_LIST), VK_TAB));
    Press(IDOK);
    PumpUntil([this] { return SearchesEnded(); });
    const HWND found = Found();
    EXPECT_EQ(kSwallowed, seenFor(GetDlgItem(found, IDC_FOUND_LIST), VK_ESCAPE));
    EXPECT_FALSE(IsWindow(found)) << "the found dialog has its keys as well";
    DestroyWindow(host);
}

TEST_F(DialogEnd, ManyTimes) {
    const int times = IsNativeLayer() ? 500 : 40;
    constexpr int kWarm = 4;
    int drawings = 0;
    int handles = 0;
    Tree({"one.hpa"});
    for (int round = 0; round < times; ++round) {
        Open(round % 3 == 0 ? eAccessAssembly : eAccessShellWindow);
        if (round > kWarm) {
            ASSERT_LT(drawings, CountDrawingObjects()) << "an open dialog holds its icons";
        }
        if (round % 50 == 0) {
            PutLookIn("");
            Press(IDOK);
            if (round % 100 == 0) PumpUntil([this] { return SearchesEnded(); });
        }
        if (round % 2 == 0) {
            Press(IDCANCEL);
        }
        if (IsWindow(window_)) Dialog()->CloseDialog(false);
        ASSERT_EQ(objectsBefore_, objectCount);
        ASSERT_EQ(windowsBefore_, CountLiveWindows());
        if (round == kWarm) {
            drawings = CountDrawingObjects();
            handles = CountOpenHandles();
        }
    }
    EXPECT_EQ(drawings, CountDrawingObjects());
    EXPECT_GE(handles + 3, CountOpenHandles()) << "the system may open some for itself";
}

}  // namespace
