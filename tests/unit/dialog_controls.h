// The controls of the find dialog without the dialog: made from its template, with nobody behind
// them.
#pragma once

#include "dialog/find_dialog.h"
#include "platform/wtext.h"

class DialogControls {
public:
    explicit DialogControls(HINSTANCE resources);
    ~DialogControls();
    DialogControls(const DialogControls&) = delete;
    DialogControls& operator=(const DialogControls&) = delete;

    // Null when the window couldn't be made.
    HWND Window() const { return window_; }
    void SetLookIn(const WText& path);
    void Check(int control, bool checked);

private:
    HWND window_;
};
