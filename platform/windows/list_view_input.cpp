// Native build: what the mouse and the keyboard do to a list view. Nothing scrolls: every row has
// its place below the header, be it below the window's edge.
#include <algorithm>
#include <utility>

#include "platform/windows/list_view.h"

namespace platform {

namespace {

constexpr LONG kHeaderHeight = 24;
constexpr LONG kRowHeight = 17;

POINT PointOf(LPARAM point) {
    const auto both = static_cast<ULONG_PTR>(point);
    return {static_cast<SHORT>(LOWORD(both)), static_cast<SHORT>(HIWORD(both))};
}

// The bar above the columns: a window of its own, since that is where a column is clicked.
class Header : public Window {
public:
    explicit Header(ListView& list) : list_(list) {}
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_LBUTTONDOWN) isDown_ = true;
        if (message == WM_LBUTTONUP && std::exchange(isDown_, false)) {
            list_.ClickColumn(PointOf(lParam).x);
        }
        return Window::Receive(message, wParam, lParam);
    }

private:
    ListView& list_;  // the parent, which outlives it
    bool isDown_ = false;
};

}  // namespace

void ListView::OnCreated() {
    const auto header = std::make_shared<Header>(*this);
    EnterTree(header, {TEXT(""), nullptr, WS_CHILD | WS_VISIBLE, 0, 0,
                       static_cast<int>(place.right - place.left), kHeaderHeight, handle, 0});
    header_ = header->handle;
}

void ListView::ClickColumn(int x) {
    int right = 0;
    for (std::size_t column = 0; column < widths_.size() && x >= 0; ++column) {
        right += widths_[column];
        if (x >= right) continue;
        NMLISTVIEW notice{};
        notice.hdr = {handle, static_cast<UINT_PTR>(id), LVN_COLUMNCLICK};
        notice.iItem = -1;
        notice.iSubItem = static_cast<int>(column);
        SendMessageW(parent, WM_NOTIFY, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&notice));
        return;
    }
}

BOOL ListView::RowRect(WPARAM at, RECT* rect) const {
    if (rect == nullptr || at >= rows_.size() || rect->left != LVIR_BOUNDS) return FALSE;
    LONG width = 0;
    for (const int column : widths_)
        width += column;
    const LONG top = kHeaderHeight + static_cast<LONG>(at) * kRowHeight;
    *rect = {0, top, width, top + kRowHeight};
    return TRUE;
}

LRESULT ListView::HitTest(LVHITTESTINFO* hit) const {
    if (hit == nullptr) return kNoRow;
    hit->flags = LVHT_NOWHERE;
    hit->iItem = static_cast<int>(kNoRow);
    hit->iSubItem = 0;
    const LONG down = hit->pt.y - kHeaderHeight;
    const auto at = static_cast<std::size_t>(down / kRowHeight);
    if (down < 0 || hit->pt.x < 0 || at >= rows_.size() || widths_.empty()) return kNoRow;
    LONG width = 0;
    if ((extendedStyle_ & LVS_EX_FULLROWSELECT) != 0) {
        for (const int column : widths_)
            width += column;
    } else {
        const std::size_t units = rows_[at].texts.empty() ? 0 : rows_[at].texts[0].size();
        width = std::min(widths_[0], WidthOfText(units));
    }
    if (hit->pt.x >= width) return kNoRow;
    hit->flags = LVHT_ONITEMLABEL;
    hit->iItem = static_cast<int>(at);
    return hit->iItem;
}

LRESULT ListView::RowUnder(LPARAM point) const {
    LVHITTESTINFO hit{};
    hit.pt = PointOf(point);
    return HitTest(&hit);
}

void ListView::ReportMouse(UINT code, LPARAM point, WPARAM keys) {
    NMITEMACTIVATE notice{};
    notice.hdr = {handle, static_cast<UINT_PTR>(id), code};
    notice.iItem = static_cast<int>(RowUnder(point));
    notice.ptAction = PointOf(point);
    if ((keys & MK_SHIFT) != 0) notice.uKeyFlags |= LVKF_SHIFT;
    if ((keys & MK_CONTROL) != 0) notice.uKeyFlags |= LVKF_CONTROL;
    SendMessageW(parent, WM_NOTIFY, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&notice));
}

void ListView::SetStateOf(LRESULT at, UINT state, UINT mask) {
    const Row* row = RowAt(at);
    if (row == nullptr) return;
    const UINT wanted = (row->state & ~mask) | (state & mask);
    if (wanted != row->state) ChangeState(static_cast<std::size_t>(at), wanted);
}

// Chosen are the rows from one to the other, and no other; the second has the focus.
void ListView::SelectSpan(LRESULT from, LRESULT to) {
    for (LRESULT at = 0; at < static_cast<LRESULT>(rows_.size()); ++at) {
        if (at < std::min(from, to) || at > std::max(from, to)) SetStateOf(at, 0, LVIS_SELECTED);
    }
    for (LRESULT at = std::min(from, to); at <= std::max(from, to); ++at)
        SetStateOf(at, LVIS_SELECTED, LVIS_SELECTED);
    SetStateOf(to, LVIS_FOCUSED, LVIS_FOCUSED);
}

void ListView::SelectAlone(LRESULT at) {
    anchor_ = at;
    SelectSpan(at, at);
}

void ListView::PressButton(LPARAM point, WPARAM keys, bool left) {
    if (GetFocus() != handle) SetFocus(handle);
    (left ? leftIsDown_ : rightIsDown_) = true;
    const LRESULT at = RowUnder(point);
    const Row* row = RowAt(at);
    const bool withKey = (keys & (MK_CONTROL | MK_SHIFT)) != 0;
    if (row == nullptr) {
        if (!left || !withKey) {
            for (LRESULT i = 0; i < static_cast<LRESULT>(rows_.size()); ++i)
                SetStateOf(i, 0, LVIS_SELECTED);
        }
        return;
    }
    const bool isSelected = (row->state & LVIS_SELECTED) != 0;
    if (!left) {
        // What is chosen already stays so, since the menu is for all of it.
        SetStateOf(at, LVIS_FOCUSED, LVIS_FOCUSED);
        if (!isSelected && !withKey) SelectAlone(at);
    } else if (Has(LVS_SINGLESEL)) {
        if (!isSelected) SelectAlone(at);
    } else if ((keys & MK_SHIFT) != 0) {
        SelectSpan(std::max<LRESULT>(anchor_, 0), at);
    } else if ((keys & MK_CONTROL) != 0) {
        SetStateOf(at, (isSelected ? 0 : LVIS_SELECTED) | LVIS_FOCUSED, kStates);
        anchor_ = at;
    } else if (!isSelected) {
        SelectAlone(at);
    }
}

void ListView::PressKey(WPARAM key) {
    const auto last = static_cast<LRESULT>(rows_.size()) - 1;
    const LRESULT focused = Next(kNoRow, LVNI_FOCUSED);
    LRESULT to = focused;
    switch (key) {
        case VK_DOWN:
            to = std::min(focused + 1, last);
            break;
        case VK_UP:
            to = focused > 0 ? focused - 1 : focused;
            break;
        case VK_HOME:
            to = 0;
            break;
        case VK_END:
            to = last;
            break;
        case VK_SPACE:
            break;
        default:
            return;
    }
    if (RowAt(to) != nullptr && (to != focused || key == VK_SPACE)) SelectAlone(to);
}

LRESULT ListView::ReceiveInput(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case LVM_GETHEADER:
            return reinterpret_cast<LRESULT>(header_);
        case LVM_GETITEMRECT:
            return RowRect(wParam, reinterpret_cast<RECT*>(lParam));
        case LVM_HITTEST:
            return HitTest(reinterpret_cast<LVHITTESTINFO*>(lParam));
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
            PressButton(lParam, wParam, message == WM_LBUTTONDOWN);
            return 0;
        case WM_LBUTTONUP: {
            if (!std::exchange(leftIsDown_, false)) return 0;
            const LRESULT at = RowUnder(lParam);
            ReportMouse(NM_CLICK, lParam, wParam);
            // One of several that were chosen is left alone only now: it might have been dragged.
            if (RowAt(at) != nullptr && (wParam & (MK_CONTROL | MK_SHIFT)) == 0) SelectAlone(at);
            return 0;
        }
        case WM_LBUTTONDBLCLK:
            ReportMouse(NM_DBLCLK, lParam, wParam);
            return 0;
        case WM_RBUTTONUP:
            if (!std::exchange(rightIsDown_, false)) return 0;
            ReportMouse(NM_RCLICK, lParam, wParam);
            return Window::Receive(message, wParam, lParam);
        case WM_KEYDOWN:
            PressKey(wParam);
            return 0;
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | DLGC_WANTCHARS;
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace platform
