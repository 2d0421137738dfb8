// What the contract tests of dialogs share: templates built in memory, and a dialog procedure that
// writes down what it is told.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/contract/contract.h"

// An extended template, as the resource compiler would write it.
class TemplateBuilder {
public:
    explicit TemplateBuilder(DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU) {
        Word(1);
        Word(0xFFFF);
        Long(0);
        Long(0);
        Long(style);
        count_ = words_.size();
        for (const int number : {0, 0, 0, 200, 100})
            Word(number);
        for (int i = 0; i < 3; ++i)
            Word(0);  // no menu, the usual class, no title
        if ((style & DS_SETFONT) == 0) return;
        for (const int number : {8, 400, 0x100})
            Word(number);
        Text(TEXT("MS Shell Dlg"));
    }
    TemplateBuilder& Add(LPCWSTR className, LPCWSTR text, DWORD style, int id) {
        if (words_.size() % 2 != 0) Word(0);
        Long(0);
        Long(0);
        Long(style);
        for (const int number : {10, 10, 50, 40})
            Word(number);
        Long(static_cast<DWORD>(id));
        Text(className);
        Text(text);
        Word(0);
        ++words_[count_];
        return *this;
    }
    LPCDLGTEMPLATEW Get() {
        // The one who reads a template may look a little further than it goes.
        aligned_.assign(words_.size() / 2 + 8, 0);
        std::memcpy(aligned_.data(), words_.data(), words_.size() * sizeof(WORD));
        return reinterpret_cast<LPCDLGTEMPLATEW>(aligned_.data());
    }

private:
    void Word(int number) { words_.push_back(static_cast<WORD>(number)); }
    void Long(DWORD number) {
        words_.push_back(LOWORD(number));
        words_.push_back(HIWORD(number));
    }
    void Text(LPCWSTR text) {
        do {
            words_.push_back(static_cast<WORD>(*text));
        } while (*text++ != 0);
    }

    std::vector<WORD> words_;
    std::vector<DWORD> aligned_;
    std::size_t count_ = 0;
};

// What the dialog procedure of the running test was told: "10:0" is WM_COMMAND of control 10 with
// code 0.
struct DialogRecord {
    std::string told;
    INT_PTR initAnswer = TRUE;
    std::function<void(HWND)> onInit;
    // A true result: handled, with the message result that it set.
    std::function<bool(HWND, UINT, WPARAM, LPARAM)> onMessage;

    void Write(const std::string& word) { told += (told.empty() ? "" : " ") + word; }
    std::string Take() { return std::exchange(told, {}); }
};

inline DialogRecord& Record() {
    static DialogRecord record;
    return record;
}

inline INT_PTR CALLBACK RecordingProcedure(HWND dialog, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    DialogRecord& record = Record();
    if (message == WM_INITDIALOG) {
        record.Write("init(" + std::to_string(GetDlgCtrlID(reinterpret_cast<HWND>(wParam))) + "," +
                     std::to_string(lParam) + ")");
        if (record.onInit) record.onInit(dialog);
        return record.initAnswer;
    }
    if (message == WM_COMMAND) {
        record.Write(std::to_string(LOWORD(wParam)) + ":" + std::to_string(HIWORD(wParam)));
    }
    if (message == WM_TIMER) record.Write("timer" + std::to_string(wParam));
    if (message == WM_DESTROY) record.Write("destroy");
    if (message == WM_APP) record.Write("app" + std::to_string(wParam));
    return record.onMessage && record.onMessage(dialog, message, wParam, lParam);
}

// A shown, modeless dialog; what its making told is taken off the record.
class DialogTest : public testing::Test {
protected:
    void SetUp() override { Record() = {}; }
    void TearDown() override {
        if (dialog_ != nullptr && IsWindow(dialog_)) DestroyWindow(dialog_);
        Record() = {};
    }
    void Show(TemplateBuilder& builder) {
        dialog_ =
            CreateDialogIndirectParamW(nullptr, builder.Get(), nullptr, RecordingProcedure, 0);
        ASSERT_NE(nullptr, dialog_);
        ShowWindow(dialog_, SW_SHOW);
        Drain();
        Record().Take();
    }
    HWND Item(int id) const { return GetDlgItem(dialog_, id); }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendDlgItemMessageW(dialog_, id, message, wParam, lParam);
    }
    LRESULT SendText(int id, UINT message, WPARAM wParam, LPCWSTR text) const {
        return Send(id, message, wParam, reinterpret_cast<LPARAM>(text));
    }
    WText TextOf(int id) const {
        WCHAR text[1024] = {};
        GetDlgItemTextW(dialog_, id, text, 1024);
        return text;
    }
    // Everything that is posted, through the dialog manager.
    void Drain() const {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (IsDialogMessageW(dialog_, &message)) continue;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    // A key as from the keyboard, to the window that has the focus.
    void Press(WPARAM key) const {
        PostMessageW(GetFocus(), WM_KEYDOWN, key, 0);
        Drain();
        if (GetFocus() != nullptr)
            PostMessageW(GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000000));
        Drain();
    }
    int FocusId() const { return GetFocus() != nullptr ? GetDlgCtrlID(GetFocus()) : -1; }

    HWND dialog_ = nullptr;
};

inline constexpr DWORD kShown = WS_CHILD | WS_VISIBLE;
inline constexpr DWORD kTab = kShown | WS_TABSTOP;
