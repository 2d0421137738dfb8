// What the dialogs of the saved searches need of the find dialog that opens them.
#pragma once

#include <vector>

#include "platform/win.h"
#include "platform/wtext.h"

class SRxSearchListOwner {
public:
    virtual HINSTANCE Resources() const = 0;
    // The dialog that is open above the find dialog; null when it goes.
    virtual void SetNestedDialog(HWND dialog) = 0;
    // Saves that had been cut short and were finished now.
    virtual void TellOfFinishedSaves(const std::vector<WText>& names) const = 0;
    // A message with the name of a saved search. `lock`: what another program holds, if that is
    // why; else empty.
    virtual void SayAboutSearch(UINT id, const WCHAR* name, const WText& lock) const = 0;
    virtual void TellOutOfMemory(HWND owner) const noexcept = 0;

protected:
    ~SRxSearchListOwner() = default;
};
