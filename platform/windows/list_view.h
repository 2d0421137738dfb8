// Native build: the list view: its rows and columns, and where they would lie if they were drawn.
#pragma once

#include "platform/windows/window_object.h"

namespace platform {

inline constexpr LRESULT kNoRow = -1;
inline constexpr UINT kStates = LVIS_FOCUSED | LVIS_SELECTED;

inline int WidthOfText(std::size_t units) {
    return static_cast<int>(units * 6 + 12);
}

class ListView : public Window {
public:
    void OnCreated() override;
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;
    // The header's click at a place across.
    void ClickColumn(int x);

private:
    struct Row {
        std::vector<WText> texts;  // as many as were set
        LPARAM number = 0;
        UINT state = 0;
    };

    LRESULT Notify(UINT code, int item, UINT newState = 0, UINT oldState = 0, UINT changed = 0);
    Row* RowAt(LPARAM at);
    LRESULT InsertColumn(WPARAM at, const LVCOLUMNW* column);
    int WidestText(std::size_t column) const;
    LRESULT InsertRow(const LVITEMW* item);
    BOOL GetRow(LVITEMW* item);
    BOOL SetText(WPARAM at, const LVITEMW* item);
    BOOL SetState(WPARAM at, const LVITEMW* item);
    void ChangeState(std::size_t at, UINT state);
    BOOL DeleteRow(WPARAM at);
    BOOL DeleteAll();
    LRESULT Find(LPARAM behind, const LVFINDINFOW* wanted) const;
    LRESULT Next(LPARAM behind, UINT flags) const;
    BOOL Sort(LPARAM parameter, PFNLVCOMPARE compare);
    LRESULT ReceiveColumnMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // Input: list_view_input.cpp.
    LRESULT ReceiveInput(UINT message, WPARAM wParam, LPARAM lParam);
    BOOL RowRect(WPARAM at, RECT* rect) const;
    LRESULT HitTest(LVHITTESTINFO* hit) const;
    LRESULT RowUnder(LPARAM point) const;
    void ReportMouse(UINT code, LPARAM point, WPARAM keys);
    void PressButton(LPARAM point, WPARAM keys, bool left);
    void SelectAlone(LRESULT at);
    void SelectSpan(LRESULT from, LRESULT to);
    void SetStateOf(LRESULT at, UINT state, UINT mask);
    void PressKey(WPARAM key);

    std::vector<Row> rows_;
    std::vector<int> widths_;
    DWORD extendedStyle_ = 0;
    HWND header_ = nullptr;
    LRESULT anchor_ = kNoRow;  // where a choice with Shift begins
    bool leftIsDown_ = false;
    bool rightIsDown_ = false;
};

}  // namespace platform
