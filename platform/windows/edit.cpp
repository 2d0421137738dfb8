// Native build: edit fields of one line. A combo box has one inside. Nobody types here: a text
// comes by message alone, which a limit doesn't bind.
#include "platform/windows/window_object.h"

namespace platform {

namespace {

class Edit : public Window {
public:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_SETTEXT:
                Window::Receive(message, wParam, lParam);
                NotifyParent(EN_UPDATE);
                NotifyParent(EN_CHANGE);
                return TRUE;
            case WM_SETFOCUS:
                NotifyParent(EN_SETFOCUS);
                return 0;
            case WM_KILLFOCUS:
                NotifyParent(EN_KILLFOCUS);
                return 0;
            case EM_LIMITTEXT:
                return 1;
            default:
                return Window::Receive(message, wParam, lParam);
        }
    }
};

}  // namespace

std::shared_ptr<Window> MakeEdit() {
    return std::make_shared<Edit>();
}

}  // namespace platform
