// The controls of the find dialog as the search reads them, on a window without a procedure: a
// scaffold until the dialog itself stands.
#pragma once

#include "dialog/find_dialog.h"
#include "platform/wtext.h"

class DialogControls {
public:
    DialogControls();
    ~DialogControls();
    DialogControls(const DialogControls&) = delete;
    DialogControls& operator=(const DialogControls&) = delete;

    // Null when the windows couldn't be made.
    HWND Window() const { return window_; }
    void SetLookIn(const WText& path);
    void Check(int control, bool checked);

private:
    HWND window_;
};
