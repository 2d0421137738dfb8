// The find dialog as its found dialogs and the dialogs of the saved searches know it.
#pragma once

#include "found/found_list_owner.h"
#include "store/search_list_owner.h"

class SRxFindDialog;

class SRxFindDialogLinks final : public SRxFoundListOwner, public SRxSearchListOwner {
public:
    explicit SRxFindDialogLinks(SRxFindDialog& dialog) : dialog_(dialog) {}

    SRxSearchQuery ReadQuery() override;
    BLxWString LookIn() override;
    std::vector<WText> ListedFiles() override;
    IQxLecternServer* Server() override;
    MDxFileNameNode* TakeSelection() override;

    HINSTANCE Resources() const override;
    HWND Window() const override;
    bool InApp() const override;
    bool IsModal() const override;
    bool SearchOnlyAssem() const override;
    bool IsClosing() const override;
    bool SearchComplete(bool result) override;
    void TellOutOfMemory(HWND owner) const noexcept override;
    void TellIncomplete(HWND owner) const noexcept override;
    void Enter(SRxFoundList* list) override;
    void Leave(SRxFoundList* list) noexcept override;
    void BeginWork() noexcept override;
    void EndWork() noexcept override;

    void SetNestedDialog(HWND dialog) override;
    void TellOfFinishedSaves(const std::vector<WText>& names) const override;
    void SayAboutSearch(UINT id, const WCHAR* name, const WText& lock) const override;

private:
    SRxFindDialog& dialog_;
};
