// The desk answers for the person: it gets the message boxes and the dialogs for files and folders
// of the calling thread. Natively it is the only one who can answer; in the Windows build it works
// the controls of the real ones.
#pragma once

#include <vector>

#include "platform/win.h"
#include "platform/wtext.h"

struct MessageBoxQuestion {
    WText text;
    WText caption;
    UINT type;  // the MB_ flags
};

struct FileQuestion {
    WText title;
    WText filters;  // the names of the filters, with a bar behind each
    WText folder;   // where the dialog stands
    bool again;     // the answer before didn't close the dialog
};

struct FolderQuestion {
    WText title;
    WText selected;  // by the program, or by the answer before; empty for none
    bool again;      // the answer before was no folder, or not one that OK could be pressed on
};

struct MenuQuestion {
    std::vector<WText> files;    // native build: what the menu is for
    std::vector<WText> entries;  // in the Windows build: the shell's, empty for a line between
};

class Desk {
public:
    virtual ~Desk() = default;
    // The button pressed: IDOK, IDCANCEL, IDYES or IDNO.
    virtual int AnswerMessageBox(const MessageBoxQuestion& question) = 0;
    // The whole path of the file or folder; empty cancels, as a desk does that knows no files.
    virtual WText AnswerFileQuestion(const FileQuestion&) { return {}; }
    virtual WText AnswerFolderQuestion(const FolderQuestion&) { return {}; }
    // The entry to choose, counted from 0; negative closes the menu. Natively there are none.
    virtual int AnswerMenu(const MenuQuestion&) { return -1; }
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
