// Native build: list views in report mode: rows with a text a column, a number and whether they are
// selected. What a person does to one (a click on a row, on the header) tests send as its notices.
#include <algorithm>
#include <utility>

#include "platform/windows/window_object.h"

namespace platform {

namespace {

constexpr LRESULT kNoRow = -1;

class ListView : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Row {
        std::vector<WText> texts;  // as many as were set
        LPARAM number = 0;
        bool selected = false;
    };

    Row* RowAt(LPARAM at);
    LRESULT InsertColumn(WPARAM at, const LVCOLUMNW* column);
    LRESULT InsertRow(const LVITEMW* item);
    BOOL GetRow(LVITEMW* item);
    BOOL SetText(WPARAM at, const LVITEMW* item);
    BOOL SetState(WPARAM at, const LVITEMW* item);
    LRESULT NextSelected(LPARAM behind) const;
    BOOL Sort(LPARAM parameter, PFNLVCOMPARE compare);

    std::vector<Row> rows_;
    std::size_t columns_ = 0;
    DWORD extendedStyle_ = 0;
};

ListView::Row* ListView::RowAt(LPARAM at) {
    return at >= 0 && static_cast<std::size_t>(at) < rows_.size()
               ? &rows_[static_cast<std::size_t>(at)]
               : nullptr;
}

// Columns are added before the rows are.
LRESULT ListView::InsertColumn(WPARAM at, const LVCOLUMNW* column) {
    if (column == nullptr || static_cast<LPARAM>(at) < 0) return kNoRow;
    if (!rows_.empty()) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return kNoRow;
    }
    return static_cast<LRESULT>(std::min<std::size_t>(at, columns_++));
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
    return static_cast<LRESULT>(at);
}

BOOL ListView::GetRow(LVITEMW* item) {
    const Row* row = item != nullptr ? RowAt(item->iItem) : nullptr;
    if (row == nullptr || item->iSubItem < 0) return FALSE;
    if ((item->mask & LVIF_PARAM) != 0) item->lParam = row->number;
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
    if (column != 0 && column >= columns_) return FALSE;
    if (row->texts.size() <= column) row->texts.resize(column + 1);
    row->texts[column] = item->pszText != nullptr ? item->pszText : TEXT("");
    return TRUE;
}

BOOL ListView::SetState(WPARAM at, const LVITEMW* item) {
    Row* row = RowAt(static_cast<LPARAM>(at));
    if (row == nullptr || item == nullptr || (item->stateMask & LVIS_SELECTED) == 0) return FALSE;
    const bool selects = (item->state & LVIS_SELECTED) != 0;
    // Where only one may be selected, one is.
    for (Row& other : rows_) {
        if (selects && Has(LVS_SINGLESEL)) other.selected = false;
    }
    row->selected = selects;
    return TRUE;
}

LRESULT ListView::NextSelected(LPARAM behind) const {
    for (auto at = static_cast<std::size_t>(behind + 1); at < rows_.size(); ++at) {
        if (rows_[at].selected) return static_cast<LRESULT>(at);
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
        case LVM_DELETEALLITEMS:
            rows_.clear();
            return TRUE;
        case LVM_GETNEXTITEM:
            return lParam == LVNI_SELECTED ? NextSelected(static_cast<LPARAM>(wParam)) : kNoRow;
        case LVM_SORTITEMS:
            return Sort(static_cast<LPARAM>(wParam), reinterpret_cast<PFNLVCOMPARE>(lParam));
        case LVM_INSERTCOLUMNW:
            return InsertColumn(wParam, reinterpret_cast<const LVCOLUMNW*>(lParam));
        case LVM_SETCOLUMNWIDTH:
            return wParam < columns_ && lParam >= LVSCW_AUTOSIZE;
        case LVM_SETEXTENDEDLISTVIEWSTYLE: {
            const auto mask = static_cast<DWORD>(wParam);
            const DWORD set = static_cast<DWORD>(lParam) & mask;
            return static_cast<LRESULT>(
                std::exchange(extendedStyle_, (extendedStyle_ & ~mask) | set));
        }
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeListView() {
    return std::make_shared<ListView>();
}

}  // namespace platform
