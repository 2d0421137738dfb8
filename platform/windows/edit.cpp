// Native build: edit fields of one line. A combo box has one inside.
#include <algorithm>

#include "platform/windows/window_object.h"

namespace platform {

namespace {

constexpr std::size_t kInitialLimit = 30000;

class Edit : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCreated() override { start_ = end_ = 0; }

private:
    void NotifyChanged() {
        NotifyParent(EN_UPDATE);
        NotifyParent(EN_CHANGE);
    }
    void ReplaceSelection(WTextView by);
    void TypeCharacter(WCHAR character);
    void Select(WPARAM start, LPARAM end);
    LRESULT Selection(WPARAM start, LPARAM end) const;

    std::size_t limit_ = kInitialLimit;
    std::size_t start_ = 0;  // of the selection
    std::size_t end_ = 0;    // and the caret, in front of the start as it may be
};

void Edit::ReplaceSelection(WTextView by) {
    const std::size_t from = std::min(start_, end_);
    const std::size_t length = std::max(start_, end_) - from;
    const std::size_t kept = text.size() - length;
    const std::size_t room = limit_ > kept ? limit_ - kept : 0;
    // What doesn't fit is told first, and the change, be it none, after it.
    if (by.size() > room) {
        by = by.substr(0, room);
        NotifyParent(EN_MAXTEXT);
    }
    text.replace(from, length, by);
    start_ = end_ = from + by.size();
    NotifyChanged();
}

void Edit::TypeCharacter(WCHAR character) {
    if (Has(ES_READONLY)) return;
    if (character == VK_BACK) {
        if (start_ == end_) {
            if (start_ == 0) return;
            start_ = end_ - 1;
        }
        ReplaceSelection({});
    } else if (character >= ' ') {
        ReplaceSelection(WTextView(&character, 1));
    }
}

void Edit::Select(WPARAM start, LPARAM end) {
    if (start == static_cast<WPARAM>(-1)) {
        start_ = end_;
        return;
    }
    const std::size_t length = text.size();
    start_ = std::min<std::size_t>(start, length);
    end_ = end < 0 ? length : std::min(static_cast<std::size_t>(end), length);
}

LRESULT Edit::Selection(WPARAM start, LPARAM end) const {
    const std::size_t from = std::min(start_, end_);
    const std::size_t to = std::max(start_, end_);
    if (start != 0) *reinterpret_cast<DWORD*>(start) = static_cast<DWORD>(from);
    if (end != 0) *reinterpret_cast<DWORD*>(end) = static_cast<DWORD>(to);
    if (to > 0xFFFF) return -1;
    return MAKELPARAM(static_cast<WORD>(from), static_cast<WORD>(to));
}

LRESULT Edit::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETTEXT:
            // The limit binds typing alone.
            Window::Receive(message, wParam, lParam);
            start_ = end_ = 0;
            NotifyChanged();
            return TRUE;
        case WM_CHAR:
            TypeCharacter(static_cast<WCHAR>(wParam));
            return 1;
        case WM_GETDLGCODE:
            return DLGC_HASSETSEL | DLGC_WANTCHARS | DLGC_WANTARROWS;
        case WM_SETFOCUS:
            NotifyParent(EN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            NotifyParent(EN_KILLFOCUS);
            return 0;
        case EM_LIMITTEXT:
            limit_ = wParam != 0 ? static_cast<std::size_t>(wParam) : 0x7FFFFFFE;
            return 1;
        case EM_SETSEL:
            Select(wParam, lParam);
            return 1;
        case EM_GETSEL:
            return Selection(wParam, lParam);
        default:
            return Window::Receive(message, wParam, lParam);
    }
}

}  // namespace

std::shared_ptr<Window> MakeEdit() {
    return std::make_shared<Edit>();
}

}  // namespace platform
