// Native build: what asks the desk within the layer.
#pragma once

#include "platform/desk.h"
#include "platform/win.h"

namespace platform {

// The desk of this thread; null for none.
Desk* CurrentDesk();

// While it lives, the window is disabled, as is the owner of a modal dialog.
class DisabledOwner {
public:
    explicit DisabledOwner(HWND owner)
        : owner_(owner != nullptr && IsWindowEnabled(owner) ? owner : nullptr) {
        if (owner_ != nullptr) EnableWindow(owner_, FALSE);
    }
    ~DisabledOwner() {
        if (owner_ != nullptr) EnableWindow(owner_, TRUE);
    }
    DisabledOwner(const DisabledOwner&) = delete;
    DisabledOwner& operator=(const DisabledOwner&) = delete;

private:
    HWND owner_;
};

}  // namespace platform
