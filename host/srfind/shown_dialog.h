// srfind --dialog: the find dialog for a person at the desktop.
#pragma once

#include <functional>

#include "dialog/find_dialog.h"

// Opens the dialog, fills it by `prepare`, and waits until it is closed. What was picked last
// stands in `*picks`, each node with one reference. False when the window can't be made.
bool ShowFindDialog(bool modeless, const std::function<void(SRxFindDialog&)>& prepare,
                    MDxFileNameNode** picks);
