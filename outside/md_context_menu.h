// Md.dll: the menu that the shell has for files.
#pragma once

#include "outside/library_api.h"
#include "outside/md_file_name_node.h"
#include "platform/win.h"

class MD_API MDxContextMenu {
public:
    MDxContextMenu();
    ~MDxContextMenu();
    MDxContextMenu(const MDxContextMenu&) = delete;
    MDxContextMenu& operator=(const MDxContextMenu&) = delete;

    bool Initialize();
    // The menu of several files, which may lie in several folders, and that of one. They take the
    // chain over, each node with its one reference. `at` is a place on the screen, null for that of
    // the pointer; `flags` is 0, `control` the list that was clicked. True when an entry was chosen
    // and carried out; natively there is no shell that could do it.
    bool DisplayContextMenu(MDxFileNameNode* chain, HWND owner, const POINT* at, unsigned flags,
                            int control);
    bool DisplayExplorerMenu(MDxFileNameNode* chain, HWND owner);

private:
    bool initialized_ = false;
};
