// Native build: status bars of one part.
#include "platform/windows/window_object.h"

namespace platform {

namespace {

class StatusBar : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override {
        // The low byte names the part, of which there is one.
        const bool isFirst = (wParam & 0xFF) == 0;
        switch (message) {
            case SB_SETTEXTW:
                if (!isFirst) return FALSE;
                return Window::Receive(WM_SETTEXT, 0, lParam);
            case SB_GETTEXTLENGTHW:
                return isFirst ? static_cast<LRESULT>(text.size()) : 0;
            case SB_GETTEXTW:
                return isFirst ? CopyWindowText(text, text.size() + 1, lParam) : 0;
            default:
                return Window::Receive(message, wParam, lParam);
        }
    }
};

}  // namespace

std::shared_ptr<Window> MakeStatusBar() {
    return std::make_shared<StatusBar>();
}

}  // namespace platform
