// Native build: list views in report mode: columns, rows with a text a column, a number and a
// state.
#include "platform/windows/list_view.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

bool IsEqualFolded(WTextView a, WTextView b) {
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH, a.data(),
                          static_cast<int>(a.size()), b.data(),
                          static_cast<int>(b.size())) == CSTR_EQUAL;
}

}  // namespace

LRESULT ListView::Notify(UINT code, int item, UINT newState, UINT oldState, UINT changed) {
    NMLISTVIEW notice{};
    notice.hdr = {handle, static_cast<UINT_PTR>(id), code};
    notice.iItem = item;
    notice.uNewState = newState;
    notice.uOldState = oldState;
    notice.uChanged = changed;
    if (const Row* row = RowAt(item)) notice.lParam = row->number;
    return SendMessageW(parent, WM_NOTIFY, static_cast<WPARAM>(id),
                        reinterpret_cast<LPARAM>(&notice));
}

ListView::Row* ListView::RowAt(LPARAM at) {
    return at >= 0 && static_cast<std::size_t>(at) < rows_.size()
               ? &rows_[static_cast<std::size_t>(at)]
               : nullptr;
}

int ListView::WidestText(std::size_t column) const {
    std::size_t most = 0;
    for (const Row& row : rows_) {
        if (column < row.texts.size()) most = std::max(most, row.texts[column].size());
    }
    return WidthOfText(most);
}

LRESULT ListView::InsertColumn(WPARAM at, const LVCOLUMNW* column) {
    if (column == nullptr || static_cast<LPARAM>(at) < 0) return kNoRow;
    const std::size_t slot = std::min<std::size_t>(at, widths_.size());
    const int width = (column->mask & LVCF_WIDTH) != 0 ? column->cx : 10;
    widths_.insert(widths_.begin() + static_cast<std::ptrdiff_t>(slot), width);
    for (Row& row : rows_) {
        if (row.texts.size() > slot) {
            row.texts.emplace(row.texts.begin() + static_cast<std::ptrdiff_t>(slot));
        }
    }
    return static_cast<LRESULT>(slot);
}

LRESULT ListView::InsertRow(const LVITEMW* item) {
    if (item == nullptr || item->iSubItem != 0 || item->iItem < 0) return kNoRow;
    const std::size_t at = std::min(static_cast<std::size_t>(item->iItem), rows_.size());
    Row row;
    if ((item->mask & LVIF_TEXT) != 0 && item->pszText != nullptr) {
        row.texts.emplace_back(item->pszText);
    }
    if ((item->mask & LVIF_PARAM) != 0) row.number = item->lParam;
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(at), std::move(row));
    if ((item->mask & LVIF_STATE) != 0) ChangeState(at, item->state & item->stateMask);
    Notify(LVN_INSERTITEM, static_cast<int>(at));
    return static_cast<LRESULT>(at);
}

BOOL ListView::GetRow(LVITEMW* item) {
    const Row* row = item != nullptr ? RowAt(item->iItem) : nullptr;
    if (row == nullptr || item->iSubItem < 0) return FALSE;
    if ((item->mask & LVIF_PARAM) != 0) item->lParam = row->number;
    if ((item->mask & LVIF_STATE) != 0) {
        item->state = item->iSubItem == 0 ? row->state & item->stateMask : 0;
    }
    if ((item->mask & LVIF_TEXT) != 0 && item->pszText != nullptr && item->cchTextMax > 0) {
        const auto column = static_cast<std::size_t>(item->iSubItem);
        CopyWindowText(column < row->texts.size() ? row->texts[column] : WText(),
                       static_cast<WPARAM>(item->cchTextMax),
                       reinterpret_cast<LPARAM>(item->pszText));
    }
    return TRUE;
}

BOOL ListView::SetText(WPARAM at, const LVITEMW* item) {
    Row* row = RowAt(static_cast<LPARAM>(at));
    if (row == nullptr || item == nullptr || item->iSubItem < 0) return FALSE;
    const auto column = static_cast<std::size_t>(item->iSubItem);
    // A column that isn't there has no texts.
    if (column != 0 && column >= widths_.size()) return FALSE;
    if (row->texts.size() <= column) row->texts.resize(column + 1);
    row->texts[column] = item->pszText != nullptr ? item->pszText : TEXT("");
    Notify(LVN_ITEMCHANGED, static_cast<int>(at), 0, 0, LVIF_TEXT);
    return TRUE;
}

void ListView::ChangeState(std::size_t at, UINT state) {
    const UINT old = rows_[at].state;
    const int number = static_cast<int>(at);
    if (Notify(LVN_ITEMCHANGING, number, state, old, LVIF_STATE) != 0 || at >= rows_.size()) return;
    // Asked about in any case, told only when there is something to tell.
    if (old == state) return;
    // One row has the focus, and where only one may be selected, one is.
    const UINT taken = state & ~old & (LVIS_FOCUSED | (Has(LVS_SINGLESEL) ? LVIS_SELECTED : 0));
    for (std::size_t i = 0; taken != 0 && i < rows_.size(); ++i) {
        if (i != at && (rows_[i].state & taken) != 0) ChangeState(i, rows_[i].state & ~taken);
    }
    if (at >= rows_.size()) return;
    rows_[at].state = state;
    Notify(LVN_ITEMCHANGED, number, state, old, LVIF_STATE);
}

BOOL ListView::SetState(WPARAM at, const LVITEMW* item) {
    if (item == nullptr) return FALSE;
    const UINT mask = item->stateMask & kStates;
    const bool all = at == static_cast<WPARAM>(-1);
    if (!all && RowAt(static_cast<LPARAM>(at)) == nullptr) return FALSE;
    for (std::size_t i = all ? 0 : at; i < rows_.size() && (all || i == at); ++i)
        ChangeState(i, (rows_[i].state & ~mask) | (item->state & mask));
    return TRUE;
}

BOOL ListView::DeleteRow(WPARAM at) {
    if (RowAt(static_cast<LPARAM>(at)) == nullptr) return FALSE;
    if (rows_[at].state != 0) ChangeState(at, 0);
    Notify(LVN_DELETEITEM, static_cast<int>(at));
    if (at < rows_.size()) rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(at));
    return TRUE;
}

BOOL ListView::DeleteAll() {
    if (rows_.empty()) return TRUE;
    // A true answer spares the parent a notice for each row.
    const bool quiet = Notify(LVN_DELETEALLITEMS, -1) != 0;
    while (!rows_.empty()) {
        if (!quiet) Notify(LVN_DELETEITEM, static_cast<int>(rows_.size()) - 1);
        if (!rows_.empty()) rows_.pop_back();
    }
    return TRUE;
}

LRESULT ListView::Find(LPARAM behind, const LVFINDINFOW* wanted) const {
    if (wanted == nullptr || rows_.empty()) return kNoRow;
    const bool byText = (wanted->flags & (LVFI_STRING | LVFI_PARTIAL)) != 0;
    if (byText && wanted->psz == nullptr) return kNoRow;
    const WTextView looked = byText ? wanted->psz : TEXT("");
    const auto matches = [&](const Row& row) {
        if ((wanted->flags & LVFI_PARAM) != 0) return row.number == wanted->lParam;
        if (!byText) return false;
        WTextView found = row.texts.empty() ? WTextView() : WTextView(row.texts[0]);
        if ((wanted->flags & LVFI_PARTIAL) != 0) found = found.substr(0, looked.size());
        return found.size() == looked.size() && IsEqualFolded(found, looked);
    };
    const auto count = static_cast<LPARAM>(rows_.size());
    const LPARAM first = std::max<LPARAM>(behind, -1) + 1;
    const LPARAM end = (wanted->flags & LVFI_WRAP) != 0 ? first + count : count;
    for (LPARAM at = first; at < end; ++at) {
        if (matches(rows_[static_cast<std::size_t>(at % count)])) return at % count;
    }
    return kNoRow;
}

LRESULT ListView::Next(LPARAM behind, UINT flags) const {
    const UINT state = flags & (LVNI_FOCUSED | LVNI_SELECTED);
    if (flags != state || behind < -1) return kNoRow;
    for (auto at = static_cast<std::size_t>(behind + 1); at < rows_.size(); ++at) {
        if ((rows_[at].state & state) == state) return static_cast<LRESULT>(at);
    }
    return kNoRow;
}

BOOL ListView::Sort(LPARAM parameter, PFNLVCOMPARE compare) {
    if (compare == nullptr) return FALSE;
    struct Key {
        LPARAM number;
        std::size_t row;
    };
    std::vector<Row> rows = std::exchange(rows_, {});
    std::vector<Key> keys;
    keys.reserve(rows.size());
    for (const Row& row : rows)
        keys.push_back({row.number, keys.size()});
    // A comparison that contradicts itself mustn't lead out of the rows, as it would std::sort.
    std::vector<Key> sorted;
    sorted.reserve(keys.size());
    for (std::size_t width = 1; width < keys.size(); width *= 2) {
        sorted.clear();
        for (std::size_t start = 0; start < keys.size(); start += 2 * width) {
            const std::size_t middle = std::min(start + width, keys.size());
            const std::size_t end = std::min(middle + width, keys.size());
            std::size_t left = start;
            std::size_t right = middle;
            while (left < middle || right < end) {
                const bool takeRight =
                    left == middle ||
                    (right < end && compare(keys[left].number, keys[right].number, parameter) > 0);
                sorted.push_back(keys[takeRight ? right++ : left++]);
            }
        }
        keys.swap(sorted);
    }
    rows_.reserve(rows.size());
    for (const Key& key : keys)
        rows_.push_back(std::move(rows[key.row]));
    return TRUE;
}

LRESULT ListView::ReceiveColumnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case LVM_INSERTCOLUMNW:
            return InsertColumn(wParam, reinterpret_cast<const LVCOLUMNW*>(lParam));
        case LVM_GETCOLUMNWIDTH:
            return wParam < widths_.size() ? widths_[wParam] : 0;
        case LVM_SETCOLUMNWIDTH:
            if (wParam >= widths_.size() || lParam < LVSCW_AUTOSIZE) return FALSE;
            widths_[wParam] =
                lParam == LVSCW_AUTOSIZE ? WidestText(wParam) : static_cast<int>(lParam);
            return TRUE;
        case LVM_GETEXTENDEDLISTVIEWSTYLE:
            return static_cast<LRESULT>(extendedStyle_);
        case LVM_SETEXTENDEDLISTVIEWSTYLE: {
            const DWORD old = extendedStyle_;
            const auto mask = wParam != 0 ? static_cast<DWORD>(wParam) : 0xFFFFFFFFu;
            extendedStyle_ = (old & ~mask) | (static_cast<DWORD>(lParam) & mask);
            return static_cast<LRESULT>(old);
        }
        default:
            return ReceiveInput(message, wParam, lParam);
    }
}

LRESULT ListView::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    auto* item = reinterpret_cast<LVITEMW*>(lParam);
    switch (message) {
        case LVM_GETITEMCOUNT:
            return static_cast<LRESULT>(rows_.size());
        case LVM_INSERTITEMW:
            return InsertRow(item);
        case LVM_GETITEMW:
            return GetRow(item);
        case LVM_SETITEMTEXTW:
            return SetText(wParam, item);
        case LVM_SETITEMSTATE:
            return SetState(wParam, item);
        case LVM_GETITEMSTATE: {
            const Row* row = RowAt(static_cast<LPARAM>(wParam));
            return row != nullptr ? static_cast<LRESULT>(row->state & static_cast<UINT>(lParam))
                                  : 0;
        }
        case LVM_GETSELECTEDCOUNT:
            return std::count_if(rows_.begin(), rows_.end(),
                                 [](const Row& row) { return (row.state & LVIS_SELECTED) != 0; });
        case LVM_DELETEITEM:
            return DeleteRow(wParam);
        case LVM_DELETEALLITEMS:
            return DeleteAll();
        case LVM_FINDITEMW:
            return Find(static_cast<LPARAM>(wParam), reinterpret_cast<const LVFINDINFOW*>(lParam));
        case LVM_GETNEXTITEM:
            return Next(static_cast<LPARAM>(wParam), LOWORD(static_cast<ULONG_PTR>(lParam)));
        case LVM_SORTITEMS:
            return Sort(static_cast<LPARAM>(wParam), reinterpret_cast<PFNLVCOMPARE>(lParam));
        default:
            return ReceiveColumnMessage(message, wParam, lParam);
    }
}

std::shared_ptr<Window> MakeListView() {
    return std::make_shared<ListView>();
}

}  // namespace platform
