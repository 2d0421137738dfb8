// The boxes of the find dialog.
#pragma once

#include <vector>

#include "dialog/find_dialog.h"

// A message of the resource library.
void Say(const SRxFindDialog& dialog, UINT id);
// A message with the name of a saved search, over the dialog of the saved searches if it is open.
// `lock`: what another program holds, if that is why.
void SayAboutSearch(const SRxFindDialog& dialog, UINT id, const WCHAR* name,
                    const WText& lock = WText());
// Saves that had been cut short and were finished now.
void SayFinishedSaves(const SRxFindDialog& dialog, const std::vector<WText>& names);
// `owner`: the window that the message belongs to.
void SayOutOfMemory(const SRxFindDialog& dialog, HWND owner, UINT id = MSG_OUT_OF_MEMORY) noexcept;
