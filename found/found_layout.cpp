// The controls of the found dialog: how they are set up and where they lie.
#include <algorithm>
#include <iterator>

#include "found/found_dialog.h"
#include "found/found_rows.h"
#include "outside/md_window_aids.h"
#include "platform/resource_text.h"
#include "resource/control_ids.h"
#include "resource/string_ids.h"

LONG foundWidth = -1;
LONG foundHeight = -1;

namespace {

constexpr LONG kOffsetFromFindDialog = 50;
constexpr int kButtons[] = {IDOK, IDC_FOUND_STOP, IDC_FOUND_SAVE};  // from the left
constexpr UINT kMoveOnly = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;

RECT RectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

int WidthOf(const RECT& rect) {
    return rect.right - rect.left;
}

int HeightOf(const RECT& rect) {
    return rect.bottom - rect.top;
}

void AddColumns(const SRxFoundList& list) {
    const struct {
        UINT heading;
        int width;
    } kColumns[] = {{STR_COLUMN_NAME, 200}, {STR_COLUMN_FOLDER, 300}};
    WPARAM at = 0;
    for (const auto& row : kColumns) {
        WText heading = ResourceText(list.dialog->Resources(), row.heading);
        LVCOLUMNW column{};
        column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
        column.fmt = LVCFMT_LEFT;
        column.cx = row.width;
        column.pszText = heading.data();
        SendToFoundList(list, LVM_INSERTCOLUMNW, at++, &column);
    }
}

void TakeMeasures(SRxFoundList& list) {
    const RECT dialog = RectOf(list.window);
    const RECT save = RectOf(GetDlgItem(list.window, IDC_FOUND_SAVE));
    const RECT stop = RectOf(GetDlgItem(list.window, IDC_FOUND_STOP));
    const RECT status = RectOf(list.statusBar);
    const RECT rows = RectOf(GetDlgItem(list.window, IDC_FOUND_LIST));
    list.bottomMargin = dialog.bottom - save.bottom;
    list.rightMargin = dialog.right - save.right;
    list.buttonGap = save.left - stop.right;
    list.statusBottomMargin = dialog.bottom - status.bottom;
    list.statusLeft = status.left - dialog.left;
    list.listBottomMargin = dialog.bottom - rows.bottom;
}

// For a client area of this size.
void PlaceControls(const SRxFoundList& list, int width, int height) {
    const HWND rows = GetDlgItem(list.window, IDC_FOUND_LIST);
    HWND buttons[std::size(kButtons)];
    std::transform(std::begin(kButtons), std::end(kButtons), buttons,
                   [&list](int id) { return GetDlgItem(list.window, id); });
    int x = width - list.rightMargin - 2 * list.buttonGap;
    for (const HWND button : buttons)
        x -= WidthOf(RectOf(button));
    const int y =
        height - list.bottomMargin - HeightOf(RectOf(GetDlgItem(list.window, IDC_FOUND_SAVE)));
    for (const HWND button : buttons) {
        SetWindowPos(button, nullptr, x, y, 0, 0, kMoveOnly);
        x += list.buttonGap + WidthOf(RectOf(button));
    }
    const int statusHeight = HeightOf(RectOf(list.statusBar));
    SetWindowPos(list.statusBar, nullptr, list.statusLeft,
                 height - list.statusBottomMargin - statusHeight, width, statusHeight,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(rows, nullptr, 0, 0, std::max<int>(width - 2 * list.rightMargin, 0),
                 std::max<int>(height - list.listBottomMargin, 0),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

bool SetUpFoundList(SRxFoundList& list) {
    const HWND window = list.window;
    MDxCalcSizeDialog(window, true);
    list.statusBar = GetDlgItem(window, IDC_FOUND_STATUS);
    const HWND rows = GetDlgItem(window, IDC_FOUND_LIST);
    SendMessageW(rows, LVM_DELETEALLITEMS, 0, 0);
    const LONG_PTR style = GetWindowLongPtrW(rows, GWL_STYLE);
    constexpr LONG_PTR kSingle = LVS_SINGLESEL;
    SetWindowLongPtrW(rows, GWL_STYLE, list.multiSelect ? style & ~kSingle : style | kSingle);
    SendMessageW(rows, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    AddColumns(list);
    ShowSearchedPath(list, TEXT(""));
    const HWND stop = GetDlgItem(window, IDC_FOUND_STOP);
    EnableWindow(stop, TRUE);
    SendMessageW(window, DM_SETDEFID, IDC_FOUND_STOP, 0);
    EnableWindow(GetDlgItem(window, IDOK), FALSE);
    EnableWindow(GetDlgItem(window, IDC_FOUND_SAVE), FALSE);
    TakeMeasures(list);
    SetFocus(stop);
    const RECT find = RectOf(list.dialog->Window());
    const UINT noSize = foundWidth == -1 ? SWP_NOSIZE : 0;
    SetWindowPos(window, nullptr, find.left + kOffsetFromFindDialog,
                 find.top + kOffsetFromFindDialog, foundWidth, foundHeight,
                 SWP_NOZORDER | SWP_NOOWNERZORDER | noSize);
    // Not every system tells a dialog its size when it is first shown.
    RECT client{};
    GetClientRect(window, &client);
    PlaceControls(list, client.right, client.bottom);
    return true;
}

void LayOutFoundDialog(SRxFoundList& list, int width, int height) {
    PlaceControls(list, width, height);
    InvalidateRect(list.window, nullptr, TRUE);
    for (const int button : kButtons)
        InvalidateRect(GetDlgItem(list.window, button), nullptr, TRUE);
    InvalidateRect(GetDlgItem(list.window, IDC_FOUND_LIST), nullptr, TRUE);
    UpdateWindow(list.window);
    foundWidth = width;
    foundHeight = height;
}
