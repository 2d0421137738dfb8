// The life of a find dialog's object: it frees itself, and an end that is asked for in the middle
// of its work waits until the work has left the stack.
#pragma once

#include "platform/win.h"

class SRxFindDialog;

class SRxDialogLife {
public:
    explicit SRxDialogLife(SRxFindDialog& dialog) : dialog_(dialog) {}
    ~SRxDialogLife();
    SRxDialogLife(const SRxDialogLife&) = delete;
    SRxDialogLife& operator=(const SRxDialogLife&) = delete;

    // No more than the end is left.
    bool IsClosing() const { return end_ != eEnd::None; }
    // Ends the found dialogs, then the dialog's own window, and frees the object: at once, or when
    // the last work is done. `byUser`: the listener of a modeless dialog hears of it.
    void Close(bool byUser);
    // The window goes with its owner: the same end.
    void OnWindowDestroyed();

    // Handlers, notifications and searches that are on the stack. EndWork may free the dialog.
    void BeginWork() { ++works_; }
    void EndWork();

    // `*gone` becomes true when the object goes; null asks for nothing.
    void TellWhenGone(bool* gone) { gone_ = gone; }
    // Keeps the object that owns the caller's variables alive as long as this one; null lets it go.
    // `known`, which is the lender's, gets null when this object goes.
    void HoldLender(IUnknown* lender, SRxFindDialog** known);

    // The found dialogs end; nothing is asked for any more.
    void EndSearches();

private:
    enum class eEnd { None, Asked, AskedByUser, Running };

    void PutOff(bool byUser);
    void Run(bool byUser);

    SRxFindDialog& dialog_;
    eEnd end_ = eEnd::None;
    unsigned works_ = 0;
    bool* gone_ = nullptr;
    IUnknown* lender_ = nullptr;         // one reference
    SRxFindDialog** knownTo_ = nullptr;  // the lender's pointer to the object
};

// Work of a dialog, as a scope.
class SRxDialogWork {
public:
    explicit SRxDialogWork(SRxDialogLife& life) : life_(life) { life_.BeginWork(); }
    ~SRxDialogWork() { life_.EndWork(); }
    SRxDialogWork(const SRxDialogWork&) = delete;
    SRxDialogWork& operator=(const SRxDialogWork&) = delete;

private:
    SRxDialogLife& life_;
};
