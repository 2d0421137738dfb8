#include "found/row_order.h"
#include "criteria/text_equality.h"

#include "platform/native_path.h"

namespace {

constexpr int kFolderColumn = 1;

int CompareTexts(WTextView a, WTextView b) {
    const int order =
        CompareStringW(LOCALE_USER_DEFAULT, kFoldText, a.data(), static_cast<int>(a.size()),
                       b.data(), static_cast<int>(b.size()));
    // A sort needs some order, also where the system has no memory to tell it.
    return order != 0 ? order - CSTR_EQUAL : a.compare(b);
}

// The folder of a full name as PathRemoveFileSpecW leaves it, without a copy: a sort of many rows
// asks for it all the time.
WTextView FolderIn(WTextView fullName) {
    const WTextView folder = fullName.substr(0, fullName.size() - FileNameIn(fullName).size());
    const std::size_t end = folder.find_last_not_of('\\');
    if (end == WTextView::npos || folder[end] == ':') return folder;
    return folder.substr(0, end + 1);
}

}  // namespace

int CALLBACK CompareRows(LPARAM a, LPARAM b, LPARAM column) {
    if (a == 0 || b == 0) return 0;
    const WTextView left = reinterpret_cast<const WCHAR*>(a);
    const WTextView right = reinterpret_cast<const WCHAR*>(b);
    if (column != kFolderColumn) return CompareTexts(FileNameIn(left), FileNameIn(right));
    const int order = CompareTexts(FolderIn(left), FolderIn(right));
    return order != 0 ? order : CompareTexts(left, right);
}
