// The desk answers for the person: it gets the message boxes of the calling thread. Natively it is
// the only one who can answer; in the Windows build it presses the button of the real box.
#pragma once

#include "platform/wtext.h"

struct MessageBoxQuestion {
    WText text;
    WText caption;
    UINT type;  // the MB_ flags
};

class Desk {
public:
    virtual ~Desk() = default;
    // The button pressed: IDOK, IDCANCEL, IDYES or IDNO.
    virtual int AnswerMessageBox(const MessageBoxQuestion& question) = 0;
};

// While it lives, `desk` answers on this thread in the place of an earlier desk.
class DeskScope {
public:
    explicit DeskScope(Desk& desk);
    ~DeskScope();
    DeskScope(const DeskScope&) = delete;
    DeskScope& operator=(const DeskScope&) = delete;

private:
    Desk* earlier_;
};
