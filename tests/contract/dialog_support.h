// What the contract tests of dialogs share: dialogs of the tests' own resource library, and a
// dialog procedure that writes down what it is told.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "tests/contract/contract.h"

inline constexpr WORD kDialog = 100;
inline constexpr WORD kButtons = 102;
inline constexpr WORD kLists = 103;
inline constexpr WORD kCommonControls = 104;

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
    constexpr WORD kDropDownCancelled = 10;  // comes before the focus goes; nobody reads it
    DialogRecord& record = Record();
    if (message == WM_INITDIALOG) {
        record.Write("init(" + std::to_string(GetDlgCtrlID(reinterpret_cast<HWND>(wParam))) + "," +
                     std::to_string(lParam) + ")");
        if (record.onInit) record.onInit(dialog);
        return record.initAnswer;
    }
    if (message == WM_COMMAND && HIWORD(wParam) != kDropDownCancelled) {
        record.Write(std::to_string(LOWORD(wParam)) + ":" + std::to_string(HIWORD(wParam)));
    }
    if (message == WM_DESTROY) record.Write("destroy");
    if (message == WM_APP) record.Write("app" + std::to_string(wParam));
    return record.onMessage && record.onMessage(dialog, message, wParam, lParam);
}

class DialogTest : public testing::Test {
protected:
    void SetUp() override {
        Record() = {};
        const INITCOMMONCONTROLSEX classes = {
            sizeof classes, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_DATE_CLASSES};
        ASSERT_TRUE(InitCommonControlsEx(&classes));
        WCHAR path[1024];
        GetModuleFileNameW(nullptr, path, 1024);
        *PathFindFileNameW(path) = 0;
        library_ = LoadLibraryExW((WText(path) + TEXT("TestRes.dll")).c_str(), nullptr,
                                  DONT_RESOLVE_DLL_REFERENCES);
        ASSERT_NE(nullptr, library_);
    }
    void TearDown() override {
        if (dialog_ != nullptr && IsWindow(dialog_)) DestroyWindow(dialog_);
        Record() = {};
        FreeLibrary(library_);
    }
    HWND Create(WORD id, LPARAM parameter = 0, HWND parent = nullptr) {
        dialog_ = CreateDialogParamW(library_, MAKEINTRESOURCEW(id), parent, RecordingProcedure,
                                     parameter);
        return dialog_;
    }
    INT_PTR Run(WORD id, HWND owner = nullptr) const {
        return DialogBoxParamW(library_, MAKEINTRESOURCEW(id), owner, RecordingProcedure, 7);
    }
    // A shown, modeless dialog; what its making told is taken off the record.
    void Show(WORD id) {
        ASSERT_NE(nullptr, Create(id));
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
    int FocusId() const { return GetFocus() != nullptr ? GetDlgCtrlID(GetFocus()) : -1; }

    HMODULE library_ = nullptr;
    HWND dialog_ = nullptr;
};
