#include "platform/windows/item_list.h"

#include <algorithm>

#include "platform/windows/window_object.h"

namespace platform {

namespace {

bool IsEqualFolded(WTextView a, WTextView b) {
    return CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE | NORM_IGNOREWIDTH, a.data(),
                          static_cast<int>(a.size()), b.data(),
                          static_cast<int>(b.size())) == CSTR_EQUAL;
}

}  // namespace

const WText* ItemList::TextAt(WPARAM at) const {
    return at < items_.size() ? &items_[at].text : nullptr;
}

LRESULT ItemList::Insert(WPARAM at, LPARAM text) {
    if (at == static_cast<WPARAM>(-1)) at = items_.size();
    if (at > items_.size()) return kNoItem;
    const auto* given = reinterpret_cast<LPCWSTR>(text);
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(at),
                  Item{given != nullptr ? given : TEXT(""), 0});
    if (selected_ >= static_cast<LRESULT>(at)) ++selected_;
    return static_cast<LRESULT>(at);
}

LRESULT ItemList::Delete(WPARAM at) {
    if (at >= items_.size()) return kNoItem;
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(at));
    if (selected_ == static_cast<LRESULT>(at)) {
        selected_ = kNoItem;
    } else if (selected_ > static_cast<LRESULT>(at)) {
        --selected_;
    }
    return Count();
}

LRESULT ItemList::Select(WPARAM at) {
    selected_ = at < items_.size() ? static_cast<LRESULT>(at) : kNoItem;
    return selected_;
}

void ItemList::Clear() {
    items_.clear();
    selected_ = kNoItem;
}

LRESULT ItemList::Data(WPARAM at) const {
    return at < items_.size() ? items_[at].data : kNoItem;
}

LRESULT ItemList::SetData(WPARAM at, LPARAM data) {
    if (at >= items_.size()) return kNoItem;
    items_[at].data = data;
    return TRUE;
}

LRESULT ItemList::Length(WPARAM at) const {
    const WText* text = TextAt(at);
    return text != nullptr ? static_cast<LRESULT>(text->size()) : kNoItem;
}

LRESULT ItemList::Copy(WPARAM at, LPARAM buffer) const {
    const WText* text = TextAt(at);
    return text != nullptr ? CopyWindowText(*text, text->size() + 1, buffer) : kNoItem;
}

LRESULT ItemList::Find(WPARAM behind, LPARAM text, bool whole) const {
    const auto* given = reinterpret_cast<LPCWSTR>(text);
    if (given == nullptr) return kNoItem;
    const WTextView wanted(given);
    const std::size_t first = behind < items_.size() ? behind + 1 : 0;
    for (std::size_t step = 0; step < items_.size(); ++step) {
        const std::size_t at = (first + step) % items_.size();
        const WTextView item = items_[at].text;
        if (item.size() < wanted.size() || (whole && item.size() != wanted.size())) continue;
        if (IsEqualFolded(item.substr(0, wanted.size()), wanted)) return static_cast<LRESULT>(at);
    }
    return kNoItem;
}

}  // namespace platform
