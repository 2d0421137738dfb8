// Native build: a dialog: its procedure, its result, the default button and the focus.
#pragma once

#include "platform/windows/dialog_template.h"
#include "platform/windows/window_object.h"

namespace platform {

class Dialog : public Window {
public:
    Dialog(DLGPROC dialogProcedure, bool namesFont)
        : procedure(dialogProcedure), hasFont(namesFont) {}
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool IsDialog() const override { return true; }

    int PixelsAcross(int units) const;
    int PixelsDown(int units) const;
    // A push button that gets the focus is the default one meanwhile.
    void MoveFocus(HWND control);
    // The control that Tab leads to, shown and enabled; the first from null. Null for none.
    HWND NextTabStop(HWND control) const;

    DLGPROC procedure;
    bool hasFont;
    LONG_PTR user = 0;
    WORD defaultId = 0;
    bool ended = false;
    INT_PTR result = 0;

private:
    LRESULT ReceiveByDefault(UINT message, WPARAM wParam, LPARAM lParam);
    void SetDefault(WORD newId);
    void ShowDefault(const Window* focused);
};

}  // namespace platform
