// Native build: there is no shell. The desk is shown which files the menu is for.
#include "outside/md_context_menu.h"
#include "platform/windows/desk_native.h"

MDxContextMenu::MDxContextMenu() = default;
MDxContextMenu::~MDxContextMenu() = default;

bool MDxContextMenu::Initialize() {
    initialized_ = true;
    return initialized_;
}

bool MDxContextMenu::DisplayContextMenu(MDxFileNameNode* chain, HWND, const POINT*, unsigned, int) {
    if (chain == nullptr) return false;
    const std::unique_ptr<MDxFileNameNode> owned(chain);
    MenuQuestion question;
    for (const MDxFileNameNode* node = chain; node != nullptr; node = node->GetNextNode())
        question.files.emplace_back(node->GetFileName());
    if (initialized_ && platform::CurrentDesk() != nullptr) {
        (void)platform::CurrentDesk()->AnswerMenu(question);
    }
    SetLastError(ERROR_NOT_SUPPORTED);
    return false;
}

bool MDxContextMenu::DisplayExplorerMenu(MDxFileNameNode* chain, HWND owner) {
    return DisplayContextMenu(chain, owner, nullptr, 0, 0);
}
