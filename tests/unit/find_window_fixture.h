// The find dialog as a window, worked like a person works it: messages to its real controls, and a
// scripted desk for what it asks.
#pragma once

#include "dialog/find_dialog.h"
#include "module/controls.h"
#include "platform/live_windows.h"
#include "platform/resource_text.h"
#include "store/saved_search.h"
#include "tests/unit/scripted_steps.h"
#include "tests/unit/search_fixture.h"
#include "tests/unit/search_tap.h"

using Names = std::vector<std::string>;

class FindWindow : public SearchTest, public ScriptedSteps, public SRxFindDlgNotify {
protected:
    FindWindow() {
        objectsBefore_ = objectCount;
        windowsBefore_ = CountLiveWindows();
    }
    ~FindWindow() override {
        if (window_ != nullptr && IsWindow(window_)) {
            Dialog()->CloseDialog(false);
        }
        EXPECT_EQ(objectsBefore_, objectCount) << "an object is left";
        EXPECT_EQ(windowsBefore_, CountLiveWindows());
        EXPECT_EQ(nullptr, modelessDialog);
        EXPECT_EQ(nullptr, keyboardHook);
        FreeSlot();
    }
    void FreeSlot() {
        while (slot_ != nullptr && slot_->GetReferenceCount() > 0)
            slot_->Release();
        delete slot_;
        slot_ = nullptr;
    }

    void Reserved() override { ADD_FAILURE(); }
    void OnOK(bool needsDocumentProperties) override {
        told_ += needsDocumentProperties ? "ok+ " : "ok ";
        if (onOk_) onOk_();
    }
    void OnFindDone() override {
        told_ += "done ";
        if (onDone_) onDone_();
    }
    void OnCancel() override {
        EXPECT_TRUE(windowMayBeGoing_ || !IsWindow(window_)) << "the window is gone";
        told_ += "cancel ";
        if (onCancel_) onCancel_();
    }

    // A dialog with this test as its listener; `prepare` sets what an entry sets.
    SRxFindDialog* Make(eAccessPoint access,
                        const std::function<void(SRxFindDialog&)>& prepare = nullptr) {
        auto* dialog = new SRxFindDialog(SrResReturnHandle(), &slot_, nullptr, &lookFor_, this);
        dialog->SetAccessPoint(access);
        if (prepare) prepare(*dialog);
        EXPECT_TRUE(dialog->Initialize());
        return dialog;
    }
    void Open(eAccessPoint access, const std::function<void(SRxFindDialog&)>& prepare = nullptr) {
        SRxFindDialog* const dialog = Make(access, prepare);
        ASSERT_EQ(0, dialog->InvokeCommand(nullptr));
        window_ = dialog->dialogWindow;
        EXPECT_EQ(window_, modelessDialog);
    }
    // The dialog looks into this test's tree.
    void PutLookIn(const std::string& file) {
        SetDlgItemTextW(window_, IDC_PATH_LIST, Wide(file).c_str());
    }

    // The host's own loop, until `done`.
    void PumpUntil(const std::function<bool()>& done) {
        MSG message;
        const UINT_PTR ticks = SetTimer(nullptr, 0, 10, nullptr);
        for (int left = 2000; !done(); --left) {
            if (left == 0 || GetMessageW(&message, nullptr, 0, 0) <= 0) {
                ADD_FAILURE() << "it doesn't come";
                break;
            }
            seen_.push_back(message.message);
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        KillTimer(nullptr, ticks);
    }

    SRxFindDialog* Dialog() const {
        return reinterpret_cast<SRxFindDialog*>(GetWindowLongPtrW(window_, DWLP_USER));
    }
    HWND Found() const {
        return Dialog()->searches.empty() ? nullptr : Dialog()->searches.back()->window;
    }
    HWND Control(int id) const { return GetDlgItem(window_, id); }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, const void* lParam = nullptr) const {
        return SendDlgItemMessageW(window_, id, message, wParam, reinterpret_cast<LPARAM>(lParam));
    }
    void Press(int id) const { SendMessageW(Control(id), BM_CLICK, 0, 0); }
    // As the control tells its dialog.
    void Notify(int id, int code) const {
        SendMessageW(window_, WM_COMMAND,
                     MAKEWPARAM(static_cast<WORD>(id), static_cast<WORD>(code)),
                     reinterpret_cast<LPARAM>(Control(id)));
    }
    // The entry of a combo box that begins with this text.
    void Choose(int id, const std::string& text) const {
        const LRESULT item =
            Send(id, CB_SELECTSTRING, static_cast<WPARAM>(-1), wtext::FromUtf8(text).c_str());
        EXPECT_LE(0, item) << text << " is not offered";
        Notify(id, CBN_SELCHANGE);
    }
    void Type(int id, const std::string& text) const {
        SetDlgItemTextW(window_, id, wtext::FromUtf8(text).c_str());
    }
    std::string Text(int id) const { return wtext::ToUtf8(ReadControlText(window_, id)); }
    bool IsOn(int id) const { return IsWindowEnabled(Control(id)) != FALSE; }
    bool IsShown(int id) const { return IsWindowVisible(Control(id)) != FALSE; }
    bool IsChecked(int id) const { return Send(id, BM_GETCHECK) == BST_CHECKED; }
    static Names Entries(HWND control, UINT count, UINT length, UINT text) {
        Names entries;
        for (WPARAM item = 0; static_cast<LRESULT>(item) < SendMessageW(control, count, 0, 0);
             ++item) {
            WText entry(static_cast<std::size_t>(SendMessageW(control, length, item, 0)) + 1, 0);
            SendMessageW(control, text, item, reinterpret_cast<LPARAM>(entry.data()));
            entries.push_back(wtext::ToUtf8(entry.c_str()));
        }
        return entries;
    }
    Names Items(int id) const {
        return Entries(Control(id), CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
    }
    Names Rows() const {
        return Entries(Control(IDC_CRITERIA_LIST), LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
    }
    std::string Title() const {
        WCHAR title[kLabelLength] = {};
        SendMessageW(window_, WM_GETTEXT, kLabelLength, reinterpret_cast<LPARAM>(title));
        return wtext::ToUtf8(title);
    }
    void Add(const std::string& property, const std::string& condition, const std::string& value) {
        Choose(IDC_PROPERTY_LIST, property);
        Choose(IDC_CONDITION_LIST, condition);
        Type(IDC_VALUE_EDIT, value);
        Press(IDC_ADD);
    }
    bool SearchesEnded() const { return !Dialog()->searching; }

    bool IsBusy() const override { return IsWindow(window_) && !SearchesEnded(); }

    SearchTap tap_;
    HWND window_ = nullptr;
    bool windowMayBeGoing_ = false;  // with its owner
    eLookFor lookFor_ = eLookForNone;
    std::string told_;
    std::function<void()> onOk_;
    std::function<void()> onDone_;
    std::function<void()> onCancel_;
    std::vector<UINT> seen_;  // by the host's loop
    LONG objectsBefore_ = 0;
    int windowsBefore_ = 0;
};
