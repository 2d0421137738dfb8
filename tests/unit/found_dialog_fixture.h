// A found dialog over a small tree, by real messages to its real controls: what a person does
// before, during and behind a search.
#pragma once

#include "dialog/find_dialog.h"
#include "platform/native_layer.h"
#include "tests/unit/dialog_controls.h"
#include "tests/unit/scripted_steps.h"
#include "tests/unit/search_fixture.h"
#include "tests/unit/search_tap.h"

using Names = std::vector<std::string>;

class FoundDialog : public SearchTest, public ScriptedSteps {
protected:
    FoundDialog() {
        EXPECT_NE(nullptr, controls_.Window());
        dialog_.dialogWindow = controls_.Window();
        dialog_.SetModal(true);
        dialog_.SetAccessPoint(eAccessShellNoWindow);
        Tree({"a/one.hpa", "a/three.hpa", "b/one.hpa"});
        LookFor("File name contains .hpa");
        controls_.SetLookIn(Wide(""));
        controls_.Check(IDC_LOOK_SUBFOLDERS, true);
        objectsBefore_ = objectCount;
    }
    ~FoundDialog() override {
        EXPECT_EQ(objectsBefore_, objectCount) << "a record is left";
        EXPECT_TRUE(IsWindowEnabled(dialog_.dialogWindow));
        EXPECT_FALSE(dialog_.searching);
    }

    // The dialog's list is this one criterion.
    void LookFor(const std::string& criterion) {
        delete std::exchange(dialog_.criteriaHead, nullptr);
        Criterion(criterion);
        dialog_.criteriaHead = std::exchange(criteria_.head, nullptr);
        dialog_.propSearchType = criteria_.propSearchType;
    }
    // A search with what a person does behind it, step by step; in a modal dialog the last step
    // ends it. The result is that of the command.
    bool Search(std::vector<std::function<void()>> steps) {
        Script(std::move(steps));
        const bool result = dialog_.OnCommandSearchNow();
        MSG message;
        while (!dialog_.IsModal() && !steps_.empty() && GetMessageW(&message, nullptr, 0, 0) > 0) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        EndScript();
        return result;
    }
    HWND Found() const {
        return dialog_.searches.empty() ? nullptr : dialog_.searches.back()->window;
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
    // As the first click on a row leaves the rows; below all for a negative one.
    void SelectAlone(int row) const {
        for (int at = 0; at < Send(LVM_GETITEMCOUNT); ++at) {
            LVITEMW item{};
            item.stateMask = LVIS_SELECTED;
            item.state = at == row ? LVIS_SELECTED : 0;
            EXPECT_TRUE(Send(LVM_SETITEMSTATE, static_cast<WPARAM>(at), &item));
        }
    }
    // What the list says of a click; the desktop story makes real ones.
    void Notice(UINT code, int row, int column) const {
        NMLISTVIEW notice{};
        notice.hdr = {Control(IDC_FOUND_LIST), IDC_FOUND_LIST, code};
        notice.iItem = row;
        notice.iSubItem = column;
        SendMessageW(Found(), WM_NOTIFY, IDC_FOUND_LIST, reinterpret_cast<LPARAM>(&notice));
    }
    void DoubleClick(int row) const {
        SelectAlone(row);
        Notice(NM_DBLCLK, row, 0);
    }
    void RightClick(int row) const {
        // What is chosen already stays so, since the menu is for all of it.
        const auto behind = static_cast<WPARAM>(row - 1);
        if (row < 0 || Send(LVM_GETNEXTITEM, behind, reinterpret_cast<void*>(LVNI_SELECTED)) != row)
            SelectAlone(row);
        Notice(NM_RCLICK, row, 0);
    }
    void ClickHeader(int column) const { Notice(LVN_COLUMNCLICK, -1, column); }
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
        ShowProgress(list.run, TEXT("on the way"));
    }
    // Does something in the dialog's pump once the second file is at hand.
    void InMidSearch(std::function<void(SRxFoundList&)> act) {
        tap_.onFile = [this, act](SRxFoundList& list) {
            if (tap_.hits.empty() || std::exchange(acted_, true)) return;
            act(list);
            Pump(list);
        };
    }

    // A menu is asked about in its own time.
    bool IsBusy() const override { return dialog_.searching || !desk_.IsDone(); }

    SRxFindDialog dialog_{SrResReturnHandle(), &slot_, nullptr, nullptr, nullptr};
    DialogControls controls_{SrResReturnHandle()};
    SearchTap tap_;
    bool acted_ = false;
    LONG objectsBefore_ = 0;
};
