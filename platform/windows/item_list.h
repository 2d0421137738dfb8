// Native build: the items of a list box, alone or within a combo box: texts, a number with each,
// and the selected one.
#pragma once

#include <vector>

#include "platform/win.h"
#include "platform/wtext.h"

namespace platform {

// For an index out of range, and for none.
inline constexpr LRESULT kNoItem = -1;

class ItemList {
public:
    LRESULT Count() const { return static_cast<LRESULT>(items_.size()); }
    LRESULT Selected() const { return selected_; }
    // Null when there is no such item.
    const WText* TextAt(WPARAM at) const;

    LRESULT Insert(WPARAM at, LPARAM text);  // at the end for -1
    LRESULT Append(LPARAM text) { return Insert(static_cast<WPARAM>(-1), text); }
    LRESULT Delete(WPARAM at);
    LRESULT Select(WPARAM at);  // none for an index out of range
    void Clear();
    LRESULT Data(WPARAM at) const;
    LRESULT SetData(WPARAM at, LPARAM data);  // TRUE or kNoItem
    LRESULT Length(WPARAM at) const;
    LRESULT Copy(WPARAM at, LPARAM buffer) const;
    // The first item behind `behind` that begins with the text, or is the text (`whole`), without
    // regard to case; goes on from the start.
    LRESULT Find(WPARAM behind, LPARAM text, bool whole) const;

private:
    struct Item {
        WText text;
        LPARAM data;
    };
    std::vector<Item> items_;
    LRESULT selected_ = kNoItem;
};

}  // namespace platform
