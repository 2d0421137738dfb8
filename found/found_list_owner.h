// What the found dialog needs of the find dialog that started it.
#pragma once

#include "platform/win.h"
#include "search/search_run.h"

struct SRxFoundList;

class SRxFoundListOwner : public SRxSearchSource {
public:
    virtual HINSTANCE Resources() const = 0;
    // The find dialog; null when it has none any more.
    virtual HWND Window() const = 0;
    virtual bool InApp() const = 0;
    virtual bool IsModal() const = 0;
    virtual bool SearchOnlyAssem() const = 0;
    // No more than the end is left of the find dialog's life.
    virtual bool IsClosing() const = 0;
    // The end of a search: the find dialog can be used again. Gives `result` back.
    virtual bool SearchComplete(bool result) = 0;
    // `owner`: the window that the message belongs to.
    virtual void TellOutOfMemory(HWND owner) const noexcept = 0;
    // The search ended before its end, for want of memory.
    virtual void TellIncomplete(HWND owner) const noexcept = 0;

    // The records that lead to this owner; they end with it. Leave forgets one that may be gone.
    virtual void Enter(SRxFoundList* list) = 0;
    virtual void Leave(SRxFoundList* list) noexcept = 0;
    // While work is counted an end of the find dialog waits. EndWork may free the owner.
    virtual void BeginWork() noexcept = 0;
    virtual void EndWork() noexcept = 0;

protected:
    ~SRxFoundListOwner() = default;
};

// Counted work, as a scope.
class SRxOwnerWork {
public:
    explicit SRxOwnerWork(SRxFoundListOwner& owner) : owner_(owner) { owner_.BeginWork(); }
    ~SRxOwnerWork() { owner_.EndWork(); }
    SRxOwnerWork(const SRxOwnerWork&) = delete;
    SRxOwnerWork& operator=(const SRxOwnerWork&) = delete;

private:
    SRxFoundListOwner& owner_;
};
